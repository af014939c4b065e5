#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "demo/town/geometry.h"

namespace fleetor::demo {

// In the order in which a map draws them; no vehicle of the fleet uses the first two.
enum class RoadClass : std::uint8_t { path, drive, residential, collector, main, ring };
inline constexpr int roadClasses = 6;

// Metres a second.
double speedLimit(RoadClass kind);

struct Street {
  std::string name;
  RoadClass kind = RoadClass::residential;
};

struct Junction {
  Point at;
  std::vector<std::uint32_t> edges;
};

// A stretch of street between two junctions.
struct StreetEdge {
  std::uint32_t from = 0;
  std::uint32_t to = 0;
  std::uint32_t street = 0;
  bool bridge = false;
  // From one junction to the other.
  Walk line;
  // Metres from the first house of the street to `from`; house numbers follow it.
  double houseOffset = 0;
};

// The quickest ways from one junction to all others.
struct RouteTree {
  struct Reach {
    double seconds = 0;
    double metres = 0;
    // The last edge on the way here; `none` at the root and where no way leads.
    std::uint32_t edge = none;
  };
  static constexpr std::uint32_t none = 0xffffffff;

  std::uint32_t root = none;
  std::vector<Reach> reach;
};

// One edge of a way, in the direction it is driven.
struct RouteStep {
  std::uint32_t edge = 0;
  bool forward = true;
};

// The streets of a town as a graph. Filled once, then only read, from any thread.
class StreetNetwork {
 public:
  std::uint32_t addJunction(Point at);
  std::uint32_t addStreet(std::string name, RoadClass kind);
  std::uint32_t addEdge(std::uint32_t from, std::uint32_t to, std::uint32_t street, Shape line,
                        double houseOffset, bool bridge);
  // Cuts the edge at a fraction of its length, in (0, 1), and returns the new junction between the halves.
  std::uint32_t splitEdge(std::uint32_t edge, double fraction);

  const std::vector<Junction>& junctions() const { return junctions_; }
  const std::vector<Street>& streets() const { return streets_; }
  const std::vector<StreetEdge>& edges() const { return edges_; }
  RoadClass kindOf(const StreetEdge& edge) const { return streets_[edge.street].kind; }

  RouteTree quickestFrom(std::uint32_t junction) const;
  // From the tree's root to the target in driving order; empty when it is the root itself or cannot be
  // reached.
  std::vector<RouteStep> route(const RouteTree& tree, std::uint32_t target) const;

  // Street and house number, for instance "Alderfen Road 14".
  std::string address(const StreetEdge& edge, double metres) const;
  // The address at a junction, by the first of its edges.
  std::string addressAt(std::uint32_t junction) const;

 private:
  std::vector<Junction> junctions_;
  std::vector<Street> streets_;
  std::vector<StreetEdge> edges_;
};

}  // namespace fleetor::demo
