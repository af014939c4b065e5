#pragma once

#include <string>
#include <vector>

#include "demo/map/builder.h"
#include "demo/map/countryside.h"

namespace fleetor::demo {

// The map while it is being drawn up.
struct MapDraft {
  MapDraft(const Box& extent, std::uint64_t seed) : random(seed), builder(extent, hashOf(seed, 1)) {}

  void name(NameKind kind, std::string text, Point at, int rank);
  void nameLine(NameKind kind, RoadClass road, std::string text, Shape line, int rank);
  // Trees in a row beside a line. `share` of the places are planted.
  void plantAlong(const Walk& walk, double aside, bool left, double spacing, double share);

  Random random;
  Builder builder;
  std::vector<Area> areas;
  std::vector<Road> roads;
  std::vector<Name> names;
};

// Builds the villages with their lanes, the roads between them, and farms along these.
void settleCountryside(MapDraft& draft, const Countryside& land);

}  // namespace fleetor::demo
