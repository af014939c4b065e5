#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <unordered_map>
#include <vector>

#include "demo/town/geometry.h"

namespace fleetor::demo {

struct Box {
  double left = std::numeric_limits<double>::infinity();
  double bottom = std::numeric_limits<double>::infinity();
  double right = -std::numeric_limits<double>::infinity();
  double top = -std::numeric_limits<double>::infinity();

  void include(Point p) {
    left = std::min(left, p.x);
    right = std::max(right, p.x);
    bottom = std::min(bottom, p.y);
    top = std::max(top, p.y);
  }
  Box grownBy(double margin) const { return {left - margin, bottom - margin, right + margin, top + margin}; }
  bool meets(const Box& other) const {
    return left <= other.right && other.left <= right && bottom <= other.top && other.bottom <= top;
  }
  bool holds(Point p) const { return p.x >= left && p.x <= right && p.y >= bottom && p.y <= top; }
};

inline Box boxOf(const std::vector<Point>& points) {
  Box box;
  for (const Point& point : points)
    box.include(point);
  return box;
}

// A square of the plane: 2^zoom by 2^zoom of them cover the world, x eastward, y southward.
struct TileAddress {
  int zoom = 0;
  int x = 0;
  int y = 0;

  friend auto operator<=>(const TileAddress&,
                          const TileAddress&) = default;  // NOLINT(modernize-use-nullptr): not its zero

  double metres() const;
  Box box() const;
};

inline double dot(Point a, Point b) {
  return a.x * b.x + a.y * b.y;
}
inline double cross(Point a, Point b) {
  return a.x * b.y - a.y * b.x;
}
// To the left of the direction.
inline Point leftOf(Point a) {
  return {-a.y, a.x};
}
Shape counterClockwise(Shape polygon);
// Positive when the polygon runs counter-clockwise.
double areaOf(const Shape& polygon);
Point centroidOf(const Shape& polygon);
bool contains(const Shape& polygon, Point p);
// To the nearest point of a line, or of a polygon's border when `closed`.
double distanceTo(const Shape& line, Point p, bool closed);

// The part of a polygon inside a box; its border may run along the box.
Shape clipped(const Shape& polygon, const Box& box);
// The line moved sideways, to the left for a positive offset.
Shape movedAside(const Shape& line, double offset);
// A polygon's border moved inwards; points that would leave the polygon are left out.
Shape insetOf(const Shape& polygon, double metres);
// Counter-clockwise; `at` gives for each direction where the ring is, seen from the middle.
Shape ringAround(Point middle, int points, const std::function<Point(Point)>& at);
// Corners cut twice, so that a line of few points bends like a road. The ends stay.
Shape smoothed(Shape line, bool closed);

// A rectangle: `along` and `across` are measured in the station's direction and to its left.
Shape rectangleAt(const Station& station, double alongFrom, double alongTo, double acrossFrom,
                  double acrossTo);
// The direction of a polygon's longest side, and a rectangle in that direction around its middle.
Station longestSide(const Shape& polygon);

// Both in [0, 1): random, smooth over about one unit, the same for the same seed and place.
double smoothNoise(std::uint64_t seed, double x, double y);
// Four octaves of it.
double fractalNoise(std::uint64_t seed, double x, double y);

// Finds shapes by place: cells of a square grid that list what lies in them.
class PlaceIndex {
 public:
  // `cell` is the side of a cell in metres.
  explicit PlaceIndex(double cell) : cell_(cell) {}
  void add(std::uint32_t id, const Box& box);
  // Every id whose cells meet the box, ascending, each once.
  std::vector<std::uint32_t> within(const Box& box) const;
  // Of all that was added.
  const Box& extent() const { return extent_; }

 private:
  template <class Visit>
  void visitCells(const Box& box, Visit visit) const;

  double cell_;
  Box extent_;
  std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> cells_;
};

}  // namespace fleetor::demo
