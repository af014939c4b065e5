#pragma once

#include <QPointF>
#include <deque>
#include <optional>
#include <vector>

#include "map/camera.h"

namespace fleetor {

/// Turns fingers on a map into movements of its camera and into taps. Rotation is not among them. A mouse is
/// one finger. Positions in points, times in seconds from any origin.
class MapGestures {
 public:
  struct Finger {
    int id = 0;
    QPointF position;
  };

  enum class TapKind { single, twice, twoFingers };
  struct Tap {
    TapKind kind = TapKind::single;
    QPointF position;
  };

  /// Call whenever a finger comes, moves or goes, with all that are down. `slop`: so far a finger may stray
  /// before it moves the map. A first tap is told at once, and not again when a second one follows.
  std::optional<Tap> update(const std::vector<Finger>& fingers, double slop, double now, MapCamera& camera);

  /// Somebody else has taken the fingers over.
  void cancel();

  /// The next tap, however soon, is not the second one of a double tap.
  void forgetTap() { lastTap_.reset(); }

  bool active() const { return !fingers_.empty(); }
  bool moved() const { return moved_; }
  /// From where the gesture started.
  QPointF travelled() const;

 private:
  struct Sample {
    double time = 0;
    QPointF center;
    double spread = 0;
  };

  static Sample measure(const std::vector<Finger>& fingers, double now);
  void begin(double now, MapCamera& camera);
  std::optional<Tap> end(double now);
  void letGo(double now, MapCamera& camera);

  std::vector<Finger> fingers_;
  std::size_t most_ = 0;  ///< fingers at one time in this gesture
  bool moved_ = false;
  bool dragging_ = false;  ///< the fingers that are down have left the slop
  bool held_ = false;      ///< the gesture stopped a map that moved
  Sample start_;           ///< of the gesture
  Sample anchor_;          ///< since the number of fingers changed
  std::deque<Sample> recent_;
  std::optional<Sample> lastTap_;
  double lastZoom_ = -1;  ///< when a tap last zoomed
};

}  // namespace fleetor
