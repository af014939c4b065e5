#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "demo/town/geometry.h"

namespace fleetor::demo {

// The map's sheet: Web Mercator (EPSG:3857), moved and scaled so that it is metres east and north of the
// market square there. A tile is then a square of the sheet, and everything drawn is a Point of it.
inline constexpr double kEarthRadius = 6371008.8;
inline const double kSheetShrink = std::cos(kTownCentre.latitude * std::numbers::pi / 180);
// From the antimeridian to the Greenwich meridian.
inline const double kHalfSheet = std::numbers::pi * kEarthRadius * kSheetShrink;

inline double sheetNorthing(double latitude) {
  return kEarthRadius * kSheetShrink * std::asinh(std::tan(latitude * std::numbers::pi / 180));
}

inline Point onSheet(GeoPosition position) {
  return {(position.longitude - kTownCentre.longitude) / 180 * kHalfSheet,
          sheetNorthing(position.latitude) - sheetNorthing(kTownCentre.latitude)};
}

// From the town's own plane.
inline Point onSheet(Point inTown) {
  return onSheet(geoPosition(inTown));
}

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

// A square of the sheet: 2^zoom by 2^zoom of them cover the world, x eastward, y southward.
struct TileAddress {
  int zoom = 0;
  int x = 0;
  int y = 0;

  friend auto operator<=>(const TileAddress&,
                          const TileAddress&) = default;  // NOLINT(modernize-use-nullptr): not its zero

  double metres() const { return 2 * kHalfSheet / std::exp2(zoom); }
  Point topLeft() const {
    const Point greenwich = onSheet(GeoPosition{0, 0});
    return {greenwich.x - kHalfSheet + x * metres(), greenwich.y + kHalfSheet - y * metres()};
  }
  Box box() const {
    const Point corner = topLeft();
    return {corner.x, corner.y - metres(), corner.x + metres(), corner.y};
  }
};

// Of the sheet, at scale 1.
inline double metresPerPixel(int zoom) {
  return 2 * kHalfSheet / (256 * std::exp2(zoom));
}

}  // namespace fleetor::demo
