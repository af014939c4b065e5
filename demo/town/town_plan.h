#pragma once

#include <cstdint>
#include <vector>

#include "demo/town/town.h"

namespace fleetor::demo {

// What is drawn of a town before anybody moves in.
struct TownPlan {
  StreetNetwork streets;
  std::vector<Park> parks;
  Shape river;
};

// A ring road around a bent grid: main roads through the middle, collectors between them, small blocks in the
// centre and larger ones outside, parks that swallow streets, and a river that only bridges cross. Connected
// throughout.
TownPlan drawTownPlan(std::uint64_t seed);

}  // namespace fleetor::demo
