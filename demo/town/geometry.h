#pragma once

#include <cmath>
#include <numbers>

namespace fleetor::demo {

// A place in the town's own plane: metres east and north of its market square.
struct Point {
  double x = 0;
  double y = 0;

  friend constexpr Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
  friend constexpr Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
  friend constexpr Point operator*(Point a, double k) { return {a.x * k, a.y * k}; }
  friend constexpr bool operator==(Point, Point) = default;
};

inline double distanceBetween(Point a, Point b) {
  return std::hypot(b.x - a.x, b.y - a.y);
}
constexpr Point lerp(Point a, Point b, double t) {
  return a + (b - a) * t;
}

// Degrees clockwise from north, in [0, 360).
inline double headingFromTo(Point a, Point b) {
  const double degrees = std::atan2(b.x - a.x, b.y - a.y) * 180 / std::numbers::pi;
  return degrees < 0 ? degrees + 360 : degrees;
}

// WGS 84, degrees.
struct GeoPosition {
  double latitude = 0;
  double longitude = 0;
};

// The town lies on a shoal out at sea, so its streets contradict nobody's.
inline constexpr GeoPosition kTownCentre{54.72, 2.35};

// Over a town of eight kilometres the plane differs from the sphere by centimetres.
inline constexpr double kMetresPerDegree = 6371008.8 * std::numbers::pi / 180;

inline GeoPosition geoPosition(Point point) {
  const double shrink = std::cos(kTownCentre.latitude * std::numbers::pi / 180);
  return {kTownCentre.latitude + point.y / kMetresPerDegree,
          kTownCentre.longitude + point.x / (kMetresPerDegree * shrink)};
}

inline Point townPoint(GeoPosition position) {
  const double shrink = std::cos(kTownCentre.latitude * std::numbers::pi / 180);
  return {(position.longitude - kTownCentre.longitude) * kMetresPerDegree * shrink,
          (position.latitude - kTownCentre.latitude) * kMetresPerDegree};
}

}  // namespace fleetor::demo
