#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "map/camera.h"

namespace fleetor {

/// A marker on the screen, in points from any origin.
struct MarkerSpot {
  ScreenPoint place;    ///< what it marks
  ScreenPoint picture;  ///< the middle of its picture
  double height = 0;    ///< a higher one covers a lower one, a later one an earlier one of the same height
};

/// Which marker a tap opens. Markers whose places lie within 12 points of that of the topmost one form a
/// stack: no finger can choose between them, so taps cycle through the stack, from the one touched downwards.
class MarkerStacks {
 public:
  /// A few hundred spots, in the order in which they are drawn.
  explicit MarkerStacks(std::span<const MarkerSpot> spots = {});

  /// The size of the stack whose topmost marker this is; 0 for one that another one lies on.
  std::size_t sizeBelow(std::size_t marker) const;

  /// The marker whose picture is nearest to a fingertip there; none within its reach.
  std::optional<std::size_t> touched(ScreenPoint finger) const;

  /// Which callout a tap on that marker opens when that of `open` is open: its own, or that of the next
  /// marker below `open` in the same stack. None: the marker is alone, and its callout closes.
  std::optional<std::size_t> toOpen(std::size_t touched, std::optional<std::size_t> open) const;

 private:
  std::vector<MarkerSpot> spots_;
  std::vector<std::vector<std::size_t>> stacks_;  // each from the topmost marker down
  std::vector<std::size_t> stackOf_;
};

}  // namespace fleetor
