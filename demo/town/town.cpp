#include "demo/town/town.h"

#include "demo/town/random.h"
#include "demo/town/town_plan.h"

namespace fleetor::demo {

Town::Town(std::uint64_t seed) {
  TownPlan plan = drawTownPlan(hashOf(seed, 1));
  streets_ = std::move(plan.streets);
  parks_ = std::move(plan.parks);
  river_ = std::move(plan.river);
  choosePlaces(hashOf(seed, 2));
}

void Town::choosePlaces(std::uint64_t seed) {
  constexpr std::size_t kPlaces = 140;
  Random random(seed);
  const auto blocks = static_cast<std::uint32_t>(streets_.edges().size());
  std::vector<bool> taken(blocks, false);
  std::vector<std::uint32_t> junctions;
  for (int tries = 0; junctions.size() < kPlaces && tries < 20000; ++tries) {
    const std::uint32_t index = random.below(blocks);
    const StreetEdge& edge = streets_.edges()[index];
    const StreetClass kind = streets_.kindOf(edge);
    const bool quiet = kind == StreetClass::residential || kind == StreetClass::collector;
    if (taken[index] || edge.bridge || !quiet || edge.line.length() < 60) continue;
    taken[index] = true;
    junctions.push_back(streets_.splitEdge(index, random.between(0.3, 0.7)));
  }
  for (const std::uint32_t junction : junctions)
    places_.push_back({junction, streets_.quickestFrom(junction)});
}

double Town::drivingMetres(std::uint32_t from, std::uint32_t to) const {
  return places_[from].ways.reach[places_[to].junction].metres;
}

double Town::drivingSeconds(std::uint32_t from, std::uint32_t to) const {
  return places_[from].ways.reach[places_[to].junction].seconds;
}

std::vector<RouteStep> Town::route(std::uint32_t from, std::uint32_t to) const {
  return streets_.route(places_[from].ways, places_[to].junction);
}

std::string Town::placeAddress(std::uint32_t place) const {
  return streets_.addressAt(places_[place].junction) + ", " + name_;
}

std::string Town::address(const StreetEdge& edge, double metres) const {
  return streets_.address(edge, metres) + ", " + name_;
}

}  // namespace fleetor::demo
