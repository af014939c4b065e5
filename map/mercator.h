#pragma once

#include <cmath>

#include "platform/coordinate.h"

namespace fleetor {

/// A point of the Web Mercator map (EPSG:3857), the world as the unit square: x grows eastwards from
/// longitude -180, y southwards from `mercatorLatitudeLimit`. x beyond 0 to 1 is a further copy of the world
/// beside it.
struct WorldPoint {
  double x = 0;
  double y = 0;

  friend bool operator==(const WorldPoint&, const WorldPoint&) = default;
};

/// World units; left may be below 0 and right above 1, where the world repeats. Edges belong to it.
struct WorldRect {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;

  double width() const { return right - left; }
  double height() const { return bottom - top; }
  bool intersects(const WorldRect& other) const {
    return left <= other.right && other.left <= right && top <= other.bottom && other.top <= bottom;
  }

  friend bool operator==(const WorldRect&, const WorldRect&) = default;
};

/// atan(sinh(pi)) in degrees: where the map is as high as it is wide.
inline constexpr double mercatorLatitudeLimit = 85.05112877980659;

/// Spherical Mercator as EPSG Guidance Note 7-2 gives it for "Popular Visualisation Pseudo Mercator" (method
/// 1024). Latitudes beyond the limit are taken as the limit, longitudes beyond 180 degrees wrap, a number
/// that is not finite counts as 0; the result lies within the unit square.
WorldPoint project(Coordinate coordinate);

/// Longitude from -180 to 180: x wraps; y is kept within the square.
Coordinate unproject(WorldPoint point);

/// Metres on the ground for one world unit at that latitude, the same in both directions. Above 3.4 million:
/// the latitude is limited as in project().
double metresPerWorldUnit(double latitude);

/// Tiles are 256 points wide.
inline double pointsPerWorldUnit(double zoom) {
  return 256 * std::exp2(zoom);
}

}  // namespace fleetor
