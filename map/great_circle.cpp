#include "map/great_circle.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace fleetor {

namespace {

double inRadians(double degrees) {
  return std::isfinite(degrees) ? degrees * (std::numbers::pi / 180) : 0;
}

double squaredSineOfHalf(double angle) {
  const double sine = std::sin(angle / 2);
  return sine * sine;
}

}  // namespace

double distanceInMetres(Coordinate from, Coordinate to) {
  constexpr double meanRadius = 6371008.8;
  const double fromLatitude = inRadians(from.latitude);
  const double toLatitude = inRadians(to.latitude);
  const double haversine = squaredSineOfHalf(toLatitude - fromLatitude) +
                           std::cos(fromLatitude) * std::cos(toLatitude) *
                               squaredSineOfHalf(inRadians(to.longitude) - inRadians(from.longitude));
  // Rounding may carry opposite points beyond 1.
  return 2 * meanRadius * std::asin(std::sqrt(std::clamp(haversine, 0.0, 1.0)));
}

}  // namespace fleetor
