#pragma once

#include "demo/map/atlas.h"

namespace fleetor::demo {

// The lands far from the town's island, seen when a map is zoomed out, with their ports, and the seas
// between.
struct World {
  std::vector<Shape> lands;
  std::vector<Name> names;
};

World drawWorld(std::uint64_t seed);

}  // namespace fleetor::demo
