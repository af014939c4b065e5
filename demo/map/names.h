#pragma once

#include <array>
#include <mutex>
#include <vector>

#include "demo/map/atlas.h"
#include "demo/map/canvas.h"
#include "demo/map/lettering.h"

namespace fleetor::demo {

struct PlacedLetter {
  const Lettering::Letter* letter = nullptr;
  Point at;          // the beginning of its base line
  double angle = 0;  // counter-clockwise from east
};

struct PlacedName {
  const Name* name = nullptr;
  double size = 0;  // of the type, pixels
  Box box;
  std::vector<PlacedLetter> letters;
};

// Places the names of a whole zoom level at once, none over another, and draws on each tile those that it
// shows, so that neighbouring tiles agree. A zoom is laid out when it is first needed. From any thread.
class NameBoard {
 public:
  explicit NameBoard(const Atlas& atlas) : atlas_(atlas) {}

  void paint(Canvas& canvas, MapStyle style) const;

 private:
  struct Level {
    std::once_flag once;
    std::vector<PlacedName> names;
    PlaceIndex index{1};
  };

  const Atlas& atlas_;
  Lettering lettering_;
  mutable std::array<Level, 20> levels_;
};

}  // namespace fleetor::demo
