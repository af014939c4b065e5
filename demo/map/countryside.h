#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "demo/map/atlas.h"

namespace fleetor::demo {

struct Village {
  std::string name;
  Point at;
};

// The island around the town.
struct Countryside {
  Shape coast;
  Shape shore;  // where the sand ends
  Shape river;  // its whole centre line, from the lake to the sea
  Shape riverBanks;
  Shape lake;
  std::vector<Area> parcels;
  std::vector<Village> villages;
  std::vector<Road> roads;
  // The names of the roads above, one each.
  std::vector<std::string> roadNames;
};

// `townOutline` and `gates`, where main roads leave the town,.
Countryside drawCountryside(const Shape& townRiver, const Shape& townOutline, const std::vector<Point>& gates,
                            std::uint64_t seed);

}  // namespace fleetor::demo
