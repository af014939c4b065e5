#include "map/mercator.h"

#include <algorithm>
#include <numbers>

namespace fleetor {

namespace {

constexpr double radiansPerDegree = std::numbers::pi / 180;

double limitedLatitude(double latitude) {
  return std::isfinite(latitude) ? std::clamp(latitude, -mercatorLatitudeLimit, mercatorLatitudeLimit) : 0;
}

}  // namespace

WorldPoint project(Coordinate coordinate) {
  double turns = std::isfinite(coordinate.longitude) ? coordinate.longitude / 360 : 0;
  if (std::abs(turns) > 0.5) turns -= std::round(turns);
  // ln tan(pi/4 + latitude/2), with one sine instead of a tangent: a day has 86,400 of these.
  const double sine = std::sin(limitedLatitude(coordinate.latitude) * radiansPerDegree);
  const double y = 0.5 - std::log((1 + sine) / (1 - sine)) / (4 * std::numbers::pi);
  return {turns + 0.5, std::clamp(y, 0.0, 1.0)};
}

Coordinate unproject(WorldPoint point) {
  double turns = point.x - 0.5;
  if (std::abs(turns) > 0.5) turns -= std::round(turns);
  const double northing = (0.5 - std::clamp(point.y, 0.0, 1.0)) * 2 * std::numbers::pi;
  return {std::atan(std::sinh(northing)) / radiansPerDegree, turns * 360};
}

double metresPerWorldUnit(double latitude) {
  constexpr double equatorialRadius = 6378137;  // WGS 84, which EPSG:3857 takes for its sphere
  return 2 * std::numbers::pi * equatorialRadius * std::cos(limitedLatitude(latitude) * radiansPerDegree);
}

}  // namespace fleetor
