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

// The map while it is drawn up: places buildings, gardens and trees where there is room.
class MapDraft {
 public:
  explicit MapDraft(std::uint64_t seed) : random(seed) {}

  void name(NameKind kind, std::string text, Point at, int rank);
  void nameLine(NameKind kind, int firstZoom, std::string text, Shape line, int rank);

  // Keeps the ground free: of a river, a road, a square.
  void reserve(const Shape& line, double halfWidth);
  void buildAlong(const Frontage& frontage);
  // Rows of buildings over a whole block where there is room, aligned with its longest side. `share` of the
  // places are built on.
  void fillBlock(const Shape& block, double width, double depth, double gap, double share, bool large = true);
  // A single building. False when there is no room for it.
  bool build(const Shape& outline, double height, bool large, const Shape* block, double margin);
  // A tree with a crown of a radius between these.
  void plant(Point at, double low, double high);
  // Trees in a row beside a line. `share` of the places are planted.
  void plantAlong(const Walk& walk, double aside, bool left, double spacing, double share);
  bool isFree(Point at) const;

  Random random;
  std::vector<Area> areas;
  std::vector<Road> roads;
  std::vector<Building> buildings;
  std::vector<Tree> trees;
  std::vector<Name> names;

 private:
  void buildRow(const Frontage& frontage, double middle, double width);
  // How far a garden reaches from the street's centre line: to the middle between two streets.
  double lotDepth(const Frontage& frontage, double along, double longest) const;
  std::optional<Point> buildHouse(const Frontage& frontage, double middle, double width);
  bool overlaps(const Shape& quad) const;

  std::vector<Shape> taken_;  // convex
  PlaceIndex takenIndex_{60};
};

}  // namespace fleetor::demo
