#pragma once

#include <cmath>
#include <numbers>
#include <vector>

namespace fleetor::demo {

// A place in the town's plane: metres east and north of its market square. The plane is Web Mercator
// (EPSG:3857), moved and scaled so that its metres are true at the square, and a map tile is a square of it.
struct Point {
  double x = 0;
  double y = 0;

  friend constexpr Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
  friend constexpr Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
  friend constexpr Point operator*(Point a, double k) { return {a.x * k, a.y * k}; }
  friend constexpr bool operator==(Point, Point) = default;
};

using Shape = std::vector<Point>;

inline double distanceBetween(Point a, Point b) {
  return std::hypot(b.x - a.x, b.y - a.y);
}
constexpr Point lerp(Point a, Point b, double t) {
  return a + (b - a) * t;
}
inline double lengthOf(Point a) {
  return std::hypot(a.x, a.y);
}
inline Point unitOf(Point a) {
  const double length = lengthOf(a);
  return length > 0 ? a * (1 / length) : Point{1, 0};
}
// Degrees clockwise from north, in [0, 360).
inline double headingOf(Point direction) {
  const double degrees = std::atan2(direction.x, direction.y) * 180 / std::numbers::pi;
  return degrees < 0 ? degrees + 360 : degrees;
}

// A place along a line and the direction there.
struct Station {
  Point at;
  Point direction;
};

// A line that can be followed by metres.
class Walk {
 public:
  // At least two points.
  explicit Walk(Shape line);
  double length() const { return along_.back(); }
  const Shape& line() const { return line_; }
  // `metres` is held to the line.
  Station at(double metres) const;
  // The stretch between two places, both ends included.
  Shape between(double from, double to) const;

 private:
  Shape line_;
  std::vector<double> along_;  // metres to each point
};

// WGS 84, degrees.
struct GeoPosition {
  double latitude = 0;
  double longitude = 0;
};

// The town lies on a shoal out at sea, so its streets contradict no real ones.
inline constexpr GeoPosition townCentre{54.72, 2.35};

GeoPosition geoPosition(Point point);
Point townPoint(GeoPosition position);

}  // namespace fleetor::demo
