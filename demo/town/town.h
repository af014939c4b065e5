#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "demo/town/street_network.h"

namespace fleetor::demo {

struct Park {
  std::string name;
  Shape outline;
};

// An address where vehicles stop and park: a junction in the middle of a block, with the quickest ways from
// it.
struct Place {
  std::uint32_t junction = 0;
  RouteTree ways;
};

// The town of the demo: streets by class and name, a river with its bridges, parks, and the places of its
// fleet. One seed makes one town. Read-only after construction, from any thread.
class Town {
 public:
  explicit Town(std::uint64_t seed);

  const std::string& name() const { return name_; }
  const StreetNetwork& streets() const { return streets_; }
  const std::vector<Park>& parks() const { return parks_; }
  // The river's centre line from west to east, and its width in metres.
  const Shape& river() const { return river_; }
  static constexpr double riverWidth = 64;
  const std::vector<Place>& places() const { return places_; }

  double drivingMetres(std::uint32_t fromPlace, std::uint32_t toPlace) const;
  // What the quickest way takes without traffic.
  double drivingSeconds(std::uint32_t fromPlace, std::uint32_t toPlace) const;
  std::vector<RouteStep> route(std::uint32_t fromPlace, std::uint32_t toPlace) const;
  std::string placeAddress(std::uint32_t place) const;
  // "Alderfen Road 14, Larkhåven"
  std::string address(const StreetEdge& edge, double metres) const;

 private:
  void choosePlaces(std::uint64_t seed);

  std::string name_ = "Larkhåven";
  StreetNetwork streets_;
  std::vector<Park> parks_;
  Shape river_;
  std::vector<Place> places_;
};

}  // namespace fleetor::demo
