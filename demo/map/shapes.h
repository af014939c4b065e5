#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "demo/map/sheet.h"

namespace fleetor::demo {

using Shape = std::vector<Point>;

inline double dot(Point a, Point b) {
  return a.x * b.x + a.y * b.y;
}
inline double cross(Point a, Point b) {
  return a.x * b.y - a.y * b.x;
}
inline double lengthOf(Point a) {
  return std::hypot(a.x, a.y);
}
// To the left of the direction.
inline Point leftOf(Point a) {
  return {-a.y, a.x};
}
inline Point unitOf(Point a) {
  const double length = lengthOf(a);
  return length > 0 ? a * (1 / length) : Point{1, 0};
}

Shape counterClockwise(Shape polygon);
// Positive when the polygon runs counter-clockwise.
double areaOf(const Shape& polygon);
Point centroidOf(const Shape& polygon);
bool contains(const Shape& polygon, Point p);
// To the nearest point of a line, or of a polygon's border when `closed`.
double distanceTo(const Shape& line, Point p, bool closed);
bool crosses(const Shape& line, Point a, Point b);

// The part of a polygon inside a box; its border may run along the box.
Shape clipped(const Shape& polygon, const Box& box);
// The line moved sideways, to the left for a positive offset.
Shape movedAside(const Shape& line, double offset);
// A polygon's border moved inwards; points that would leave the polygon are left out.
Shape insetOf(const Shape& polygon, double metres);
// Corners cut twice, so that a line of few points bends like a road. The ends stay.
Shape smoothed(Shape line, bool closed);

// A place along a line and the direction there.
struct Station {
  Point at;
  Point direction;
};

// A rectangle: `along` and `across` are measured in the station's direction and to its left.
Shape rectangleAt(const Station& station, double alongFrom, double alongTo, double acrossFrom,
                  double acrossTo);
// The direction of a polygon's longest side, and a rectangle in that direction around its middle.
Station longestSide(const Shape& polygon);

// A line that can be walked by metres.
class Walk {
 public:
  explicit Walk(Shape line);
  double length() const { return along_.back(); }
  // `metres` is held to the line.
  Station at(double metres) const;
  // The stretch between two places, both ends included.
  Shape between(double from, double to) const;

 private:
  Shape line_;
  std::vector<double> along_;
};

// Both in [0, 1): random, smooth over about one unit, the same for the same seed and place.
double smoothNoise(std::uint64_t seed, double x, double y);
// Four octaves of it.
double fractalNoise(std::uint64_t seed, double x, double y);

// Finds shapes by place: cells of a square grid that list what lies in them.
class PlaceIndex {
 public:
  // Holds what is inside `extent` in cells of `cell` metres.
  PlaceIndex(const Box& extent, double cell);
  void add(std::uint32_t id, const Box& box);
  // Every id whose cells meet the box, ascending, each once.
  std::vector<std::uint32_t> within(const Box& box) const;

 private:
  struct Range {
    int left, bottom, right, top;
  };
  Range rangeOf(const Box& box) const;

  Box extent_;
  double cell_;
  std::size_t cellAt(int row, int column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
           static_cast<std::size_t>(column);
  }

  int columns_;
  int rows_;
  std::vector<std::vector<std::uint32_t>> cells_;
};

}  // namespace fleetor::demo
