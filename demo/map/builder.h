#pragma once

#include <optional>

#include "demo/map/atlas.h"
#include "demo/town/random.h"

namespace fleetor::demo {

// How houses stand along a street.
enum class Housing { closedRows, openRows, detached };

// One side of a street, waiting for its houses.
struct Frontage {
  const Walk& street;
  bool left = true;
  double houseOffset = 0;  // metres from the street's first house to the line's beginning
  double halfWidth = 4;    // from the centre line to the edge of the pavement
  Housing housing = Housing::detached;
  const Shape* block = nullptr;  // none: anywhere
  bool numbered = true;
};

// Puts up buildings, gardens and trees where there is room.
class Builder {
 public:
  Builder(const Box& extent, std::uint64_t seed) : random_(seed), index_(extent, 60) {}

  // Keeps the ground free: of a river, a road, a square.
  void reserve(const Shape& line, double halfWidth);
  void buildAlong(const Frontage& frontage);
  // Rows of buildings over a whole block where there is room, aligned with its longest side. `share` of the
  // places are built on.
  void fillBlock(const Shape& block, double width, double depth, double gap, double share, bool large = true);
  // A building of its own when there is room for it.
  bool build(const Shape& outline, double height, bool large, const Shape* block, double margin);
  void plant(Point at, double low, double high);
  bool isFree(Point at) const;

  std::vector<Building> buildings;
  std::vector<Area> areas;  // gardens
  std::vector<Tree> trees;
  std::vector<Name> numbers;

 private:
  void buildRow(const Frontage& frontage, double middle, double width);
  // How far a garden reaches from the street's centre line: to the middle between two streets.
  double lotDepth(const Frontage& frontage, double along, double longest) const;
  std::optional<Point> buildHouse(const Frontage& frontage, double middle, double width);
  bool overlaps(const Shape& quad) const;

  Random random_;
  std::vector<Shape> taken_;  // convex
  PlaceIndex index_;
};

}  // namespace fleetor::demo
