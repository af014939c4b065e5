#include "demo/town/town.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "demo/town/random.h"
#include "demo/town/street_names.h"

namespace fleetor::demo {
namespace {

constexpr int gridLines = 37;  // in either direction
constexpr int lastLine = gridLines - 1;
constexpr std::size_t gridNodes = std::size_t{gridLines} * gridLines;
constexpr double ringRadius = 3900;  // metres from the centre to the ring road
constexpr int shapeSteps = 4;        // pieces of a street between two crossings

struct GridPoint {
  double u = 0;  // both in [-1, 1]
  double v = 0;
};

constexpr bool isMainLine(int line) {
  return line % 9 == 0 && line != 0 && line != lastLine;
}

constexpr RoadClass lineClass(int line) {
  if (line == 0 || line == lastLine) return RoadClass::ring;
  if (isMainLine(line)) return RoadClass::main;
  return line % 9 == 4 || line % 9 == 5 ? RoadClass::collector : RoadClass::residential;
}

constexpr double linePosition(int line) {
  const double t = 2.0 * line / lastLine - 1;
  return t * (0.62 + 0.38 * (t < 0 ? -t : t));
}

// One block's side while the plan is still on the drawing board.
struct Side {
  int fromNode = 0;
  int toNode = 0;
  int line = 0;
  bool horizontal = true;
  bool bridge = false;
  bool kept = true;
};

// A ring road around a bent grid: main roads through the middle, collectors between them, small blocks in the
// centre and larger ones outside, parks that swallow streets, and a river that only bridges cross. Connected
// throughout.
class Draughtsman {
 public:
  explicit Draughtsman(std::uint64_t seed)
      : random_(seed), names_(hashOf(seed, 7)), bend_{random_.between(0, 6.28), random_.between(0, 6.28)} {
    for (Point& jitter : jitter_)
      jitter = {random_.between(-14, 14), random_.between(-14, 14)};
  }

  void draw() {
    drawParks();
    drawSides();
    joinIslands();
    keepNodes();
    nameStreets();
    for (int i = -60; i <= 60; ++i) {
      const double u = i / 40.0;
      river.push_back(onPlane({u, riverAt(u)}));
    }
  }

  StreetNetwork streets;
  std::vector<Park> parks;
  Shape river;

 private:
  static int node(int column, int row) { return row * gridLines + column; }
  static GridPoint gridOf(int index) {
    return {linePosition(index % gridLines), linePosition(index / gridLines)};
  }

  double riverAt(double u) const { return 0.13 + 0.07 * std::sin(2.6 * u + bend_[0]) + 0.04 * u; }

  // The square of the grid, rounded towards a disc and bent a little, so that no street is quite straight.
  Point onPlane(GridPoint g) const {
    const double u = g.u * std::sqrt(std::max(0.1, 1 - 0.40 * g.v * g.v));
    const double v = g.v * std::sqrt(std::max(0.1, 1 - 0.40 * g.u * g.u));
    const double x = u * ringRadius;
    const double y = v * ringRadius;
    return {x + 95 * std::sin(y / 830 + bend_[0]), y + 95 * std::sin(x / 910 + bend_[1])};
  }

  Point nodePoint(int index) const {
    return onPlane(gridOf(index)) + jitter_[static_cast<std::size_t>(index)];
  }

  Shape sideShape(const Side& side) const {
    const GridPoint a = gridOf(side.fromNode);
    const GridPoint b = gridOf(side.toNode);
    const Point shiftA = jitter_[static_cast<std::size_t>(side.fromNode)];
    const Point shiftB = jitter_[static_cast<std::size_t>(side.toNode)];
    Shape shape;
    for (int i = 0; i <= shapeSteps; ++i) {
      const double t = static_cast<double>(i) / shapeSteps;
      shape.push_back(onPlane({std::lerp(a.u, b.u, t), std::lerp(a.v, b.v, t)}) + lerp(shiftA, shiftB, t));
    }
    return shape;
  }

  bool overRiver(const Side& side) const {
    const GridPoint a = gridOf(side.fromNode);
    const GridPoint b = gridOf(side.toNode);
    for (int i = 0; i <= 8; ++i) {
      const double u = std::lerp(a.u, b.u, i / 8.0);
      const double v = std::lerp(a.v, b.v, i / 8.0);
      if (std::abs(v - riverAt(u)) * ringRadius < Town::riverWidth / 2 + 16) return true;
    }
    return false;
  }

  void drawParks() {
    struct Box {
      int left, bottom, width, height;
    };
    constexpr Box boxes[] = {{10, 10, 3, 4}, {22, 28, 4, 3}, {28, 12, 4, 3}, {4, 24, 4, 4}, {19, 5, 3, 3}};
    for (const Box& box : boxes) {
      Park park{names_.nextPark(), {}};
      const auto corner = [&](int column, int row) { park.outline.push_back(nodePoint(node(column, row))); };
      for (int i = 0; i < box.width; ++i)
        corner(box.left + i, box.bottom);
      for (int i = 0; i < box.height; ++i)
        corner(box.left + box.width, box.bottom + i);
      for (int i = 0; i < box.width; ++i)
        corner(box.left + box.width - i, box.bottom + box.height);
      for (int i = 0; i < box.height; ++i)
        corner(box.left, box.bottom + box.height - i);
      parks.push_back(std::move(park));
      for (int row = box.bottom; row <= box.bottom + box.height; ++row)
        for (int column = box.left; column <= box.left + box.width; ++column) {
          const bool insideX = column > box.left && column < box.left + box.width;
          const bool insideY = row > box.bottom && row < box.bottom + box.height;
          if (insideX && row < box.bottom + box.height)
            swallowed_.push_back({node(column, row), node(column, row + 1)});
          if (insideY && column < box.left + box.width)
            swallowed_.push_back({node(column, row), node(column + 1, row)});
        }
    }
  }

  void drawSides() {
    for (int line = 0; line < gridLines; ++line)
      for (int step = 0; step < lastLine; ++step)
        for (const bool horizontal : {true, false}) {
          Side side;
          side.fromNode = horizontal ? node(step, line) : node(line, step);
          side.toNode = horizontal ? node(step + 1, line) : node(line, step + 1);
          side.line = line;
          side.horizontal = horizontal;
          side.bridge = overRiver(side);
          const bool small = lineClass(line) == RoadClass::residential;
          const bool big = !horizontal && (isMainLine(line) || line == 0 || line == lastLine);
          side.kept =
              side.bridge ? big || lineClass(line) == RoadClass::ring : !(small && random_.chance(0.15));
          const std::pair<int, int> ends{side.fromNode, side.toNode};
          if (std::ranges::find(swallowed_, ends) != swallowed_.end() && !isMainLine(line)) side.kept = false;
          sides_.push_back(side);
        }
  }

  // Whatever cannot be reached from the ring road is not built: no vehicle could serve it.
  void joinIslands() {
    std::vector<int> leader(gridNodes);
    std::iota(leader.begin(), leader.end(), 0);
    const auto find = [&leader](int index) {
      while (leader[static_cast<std::size_t>(index)] != index)
        index = leader[static_cast<std::size_t>(index)];
      return index;
    };
    for (const Side& side : sides_)
      if (side.kept) leader[static_cast<std::size_t>(find(side.fromNode))] = find(side.toNode);
    const int town = find(0);
    for (Side& side : sides_)
      side.kept = side.kept && find(side.fromNode) == town;
  }

  void keepNodes() {
    junctionOf_.assign(gridNodes, RouteTree::none);
    for (const Side& side : sides_)
      if (side.kept)
        for (const int end : {side.fromNode, side.toNode}) {
          std::uint32_t& junction = junctionOf_[static_cast<std::size_t>(end)];
          if (junction == RouteTree::none) junction = streets.addJunction(nodePoint(end));
        }
  }

  // A street runs along its line until it meets a main road, a park or the water; beyond, it has another
  // name.
  void nameStreets() {
    for (const bool horizontal : {true, false})
      for (int line = 0; line < gridLines; ++line) {
        std::uint32_t street = 0;
        double houses = 0;
        int reached = -1;
        int step = 0;
        for (const Side& side : sides_) {
          if (side.horizontal != horizontal || side.line != line) continue;
          const int at = step++;
          if (!side.kept) continue;
          if (side.fromNode != reached || isMainLine(at)) {
            street = streets.addStreet(names_.nextStreet(lineClass(line)), lineClass(line));
            houses = 0;
          }
          reached = side.toNode;
          const std::uint32_t edge = streets.addEdge(junctionOf_[static_cast<std::size_t>(side.fromNode)],
                                                     junctionOf_[static_cast<std::size_t>(side.toNode)],
                                                     street, sideShape(side), houses, side.bridge);
          houses += streets.edges()[edge].line.length();
        }
      }
  }

  Random random_;
  StreetNames names_;
  std::array<double, 2> bend_;
  std::array<Point, gridNodes> jitter_;
  std::vector<Side> sides_;
  std::vector<std::pair<int, int>> swallowed_;
  std::vector<std::uint32_t> junctionOf_;
};

}  // namespace

Town::Town(std::uint64_t seed) {
  Draughtsman draughtsman(hashOf(seed, 1));
  draughtsman.draw();
  streets_ = std::move(draughtsman.streets);
  parks_ = std::move(draughtsman.parks);
  river_ = std::move(draughtsman.river);
  choosePlaces(hashOf(seed, 2));
}

void Town::choosePlaces(std::uint64_t seed) {
  constexpr std::size_t wantedPlaces = 140;
  Random random(seed);
  const auto blocks = static_cast<std::uint32_t>(streets_.edges().size());
  std::vector<bool> taken(blocks, false);
  std::vector<std::uint32_t> junctions;
  for (int tries = 0; junctions.size() < wantedPlaces && tries < 20000; ++tries) {
    const std::uint32_t index = random.below(blocks);
    const StreetEdge& edge = streets_.edges()[index];
    const RoadClass kind = streets_.kindOf(edge);
    const bool quiet = kind <= RoadClass::collector;
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
