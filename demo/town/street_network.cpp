#include "demo/town/street_network.h"

#include <algorithm>
#include <limits>
#include <queue>
#include <utility>

namespace fleetor::demo {
namespace {

constexpr double metresPerHouse = 17;

}  // namespace

double speedLimit(RoadClass kind) {
  constexpr double kilometresPerHour[roadClasses] = {5, 10, 30, 50, 60, 80};
  return kilometresPerHour[static_cast<int>(kind)] / 3.6;
}

std::uint32_t StreetNetwork::addJunction(Point at) {
  junctions_.push_back({at, {}});
  return static_cast<std::uint32_t>(junctions_.size() - 1);
}

std::uint32_t StreetNetwork::addStreet(std::string name, RoadClass kind) {
  streets_.push_back({std::move(name), kind});
  return static_cast<std::uint32_t>(streets_.size() - 1);
}

std::uint32_t StreetNetwork::addEdge(std::uint32_t from, std::uint32_t to, std::uint32_t street, Shape line,
                                     double houseOffset, bool bridge) {
  const auto index = static_cast<std::uint32_t>(edges_.size());
  // To the last bit, so that edges meet without a gap however the line was computed.
  line.front() = junctions_[from].at;
  line.back() = junctions_[to].at;
  edges_.push_back({from, to, street, bridge, Walk(std::move(line)), houseOffset});
  junctions_[from].edges.push_back(index);
  junctions_[to].edges.push_back(index);
  return index;
}

std::uint32_t StreetNetwork::splitEdge(std::uint32_t index, double fraction) {
  const Walk whole = edges_[index].line;
  const double cut = whole.length() * fraction;
  const std::uint32_t middle = addJunction(whole.at(cut).at);
  StreetEdge& first = edges_[index];
  const std::uint32_t end = first.to;
  first.line = Walk(whole.between(0, cut));
  first.to = middle;
  std::erase(junctions_[end].edges, index);
  junctions_[middle].edges.push_back(index);
  addEdge(middle, end, first.street, whole.between(cut, whole.length()), first.houseOffset + cut,
          first.bridge);
  return middle;
}

RouteTree StreetNetwork::quickestFrom(std::uint32_t root) const {
  constexpr double crossingSeconds = 4;
  RouteTree tree;
  tree.root = root;
  tree.reach.assign(junctions_.size(), {std::numeric_limits<double>::infinity(), 0, RouteTree::none});
  tree.reach[root].seconds = 0;

  using Entry = std::pair<double, std::uint32_t>;
  std::priority_queue<Entry, std::vector<Entry>, std::greater<>> open;
  open.push({0, root});
  while (!open.empty()) {
    const auto [seconds, here] = open.top();
    open.pop();
    if (seconds > tree.reach[here].seconds) continue;
    for (const std::uint32_t index : junctions_[here].edges) {
      const StreetEdge& edge = edges_[index];
      const std::uint32_t there = edge.from == here ? edge.to : edge.from;
      const double cost = seconds + edge.line.length() / speedLimit(kindOf(edge)) + crossingSeconds;
      if (cost >= tree.reach[there].seconds) continue;
      tree.reach[there] = {cost, tree.reach[here].metres + edge.line.length(), index};
      open.push({cost, there});
    }
  }
  return tree;
}

std::vector<RouteStep> StreetNetwork::route(const RouteTree& tree, std::uint32_t target) const {
  std::vector<RouteStep> steps;
  for (std::uint32_t here = target; here != tree.root && tree.reach[here].edge != RouteTree::none;) {
    const StreetEdge& edge = edges_[tree.reach[here].edge];
    const bool forward = edge.to == here;
    steps.push_back({tree.reach[here].edge, forward});
    here = forward ? edge.from : edge.to;
  }
  std::ranges::reverse(steps);
  return steps;
}

std::string StreetNetwork::address(const StreetEdge& edge, double metres) const {
  const double offset = edge.houseOffset + std::clamp(metres, 0.0, edge.line.length());
  const int house = 1 + static_cast<int>(offset / metresPerHouse);
  return streets_[edge.street].name + " " + std::to_string(house);
}

std::string StreetNetwork::addressAt(std::uint32_t junction) const {
  const StreetEdge& edge = edges_[junctions_[junction].edges.front()];
  return address(edge, edge.from == junction ? 0 : edge.line.length());
}

}  // namespace fleetor::demo
