#pragma once

#include <QColor>
#include <QPointF>
#include <QSizeF>
#include <cmath>

#include "map/camera.h"

namespace fleetor {

/// What a map shows in one frame, except for its tiles, lines and markers.
struct MapFrame {
  CameraPosition camera;
  QSizeF size;            ///< points
  double pixelRatio = 1;  ///< pixels a point
  bool steady = true;     ///< the zoom stays as it is: everything lies on whole pixels
  QColor ground;          ///< where there is no tile
  QColor grid;            ///< of the lines on the ground

  /// x is not wrapped.
  QPointF screenPoint(WorldPoint point) const {
    const double scale = pointsPerWorldUnit(camera.zoom);
    return {size.width() / 2 + (point.x - camera.centre.x) * scale,
            size.height() / 2 + (point.y - camera.centre.y) * scale};
  }
};

/// The nearest place where a pixel begins.
inline double onPixels(double points, double pixelRatio) {
  return std::round(points * pixelRatio) / pixelRatio;
}
inline QPointF onPixels(QPointF point, double pixelRatio) {
  return {onPixels(point.x(), pixelRatio), onPixels(point.y(), pixelRatio)};
}

}  // namespace fleetor
