#pragma once

#include <cstdint>
#include <vector>

#include "demo/map/map_draft.h"

namespace fleetor::demo {

// The waters and the coast of the island around the town.
struct Countryside {
  Shape coast;
  Shape shore;  // where the sand ends
  Shape river;  // its whole centre line, from the lake to the sea
  Shape riverBanks;
  Shape lake;
};

// Draws fields and woods, villages with their lanes, the roads between them, and farms along these. `gates`
// are where main roads leave the town.
Countryside drawCountryside(MapDraft& draft, const Shape& townRiver, const Shape& townOutline,
                            const std::vector<Point>& gates, std::uint64_t seed);

}  // namespace fleetor::demo
