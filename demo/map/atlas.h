#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "demo/map/shapes.h"
#include "demo/town/town.h"

namespace fleetor::demo {

struct Road {
  RoadClass kind = RoadClass::residential;
  bool bridge = false;
  Shape line;
};

// In the order in which they lie on each other.
enum class LandUse : std::uint8_t {
  field,
  meadow,
  wood,
  builtUp,  // the ground of the town and of villages
  housing,
  oldTown,
  retail,
  industry,
  school,
  sports,
  cemetery,
  park,
  square,
  garden,
  lawn,
  parking,
  pitch,
  water,
};

struct Area {
  LandUse use = LandUse::field;
  std::uint8_t tone = 0;  // any number; neighbours of one use differ by it
  float bearing = 0;      // of furrows and parking bays, radians counter-clockwise from east
  Shape outline;
};

struct Building {
  Shape outline;  // counter-clockwise
  float height = 6;
  std::uint8_t tone = 0;
  bool large = false;  // of industry, retail or the public
};

struct Tree {
  Point at;
  float radius = 3;
  std::uint8_t tone = 0;
};

enum class NameKind : std::uint8_t {
  town,
  village,
  water,
  river,
  park,
  landmark,
  street,
  house,
  parking,
  sea,
  city
};

// A name that stands at a point, or along a line when there is one.
struct Name {
  std::string text;
  NameKind kind = NameKind::street;
  int firstZoom = 0;
  int rank = 0;  // the smaller, the earlier it is placed
  Point at;
  Shape line;
};

// Everything that the map shows. One town and seed make one atlas. Read-only after construction, from any
// thread.
class Atlas {
 public:
  Atlas(const Town& town, std::uint64_t seed);

  const std::vector<Shape>& continents() const { return continents_; }
  // The island that the town lies on: its coast, and where the sand ends.
  const Shape& coast() const { return coast_; }
  const Shape& shore() const { return shore_; }
  const std::vector<Area>& areas() const { return areas_; }
  const std::vector<Road>& roads() const { return roads_; }
  const std::vector<Building>& buildings() const { return buildings_; }
  const std::vector<Tree>& trees() const { return trees_; }
  const std::vector<Name>& names() const { return names_; }

  // Each ascending: in the order of drawing.
  std::vector<std::uint32_t> areasIn(const Box& box) const { return areaIndex_.within(box); }
  std::vector<std::uint32_t> roadsIn(const Box& box) const { return roadIndex_.within(box); }
  std::vector<std::uint32_t> buildingsIn(const Box& box) const { return buildingIndex_.within(box); }
  std::vector<std::uint32_t> treesIn(const Box& box) const { return treeIndex_.within(box); }
  // Whether anything but land and sea lies in the box.
  bool touchesIsland(const Box& box) const { return box.meets(boxOf(coast_)); }

 private:
  void index();

  std::vector<Shape> continents_;
  Shape coast_;
  Shape shore_;
  std::vector<Area> areas_;
  std::vector<Road> roads_;
  std::vector<Building> buildings_;
  std::vector<Tree> trees_;
  std::vector<Name> names_;
  PlaceIndex areaIndex_{500};
  PlaceIndex roadIndex_{400};
  PlaceIndex buildingIndex_{150};
  PlaceIndex treeIndex_{150};
};

}  // namespace fleetor::demo
