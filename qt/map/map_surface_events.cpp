#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QTouchEvent>
#include <QWheelEvent>
#include <vector>

#include "qt/map/map_surface.h"

namespace fleetor {

namespace {

constexpr double fingerSlop = 8;            // points
constexpr double mouseSlop = 4;             // points
constexpr double levelsANotch = 0.5;        // of a mouse wheel
constexpr double levelsAPoint = 1.0 / 100;  // of a touchpad
constexpr double keyStep = 96;              // points

constexpr int mouseFinger = -1;

}  // namespace

void MapSurface::touchEvent(QTouchEvent* event) {
  if (event->type() == QEvent::TouchCancel) {
    touchUngrabEvent();
    return;
  }
  std::vector<MapGestures::Finger> fingers;
  for (const QEventPoint& point : event->points())
    if (point.state() != QEventPoint::Released) fingers.push_back({point.id(), point.position()});
  follow(fingers, fingerSlop);
  event->accept();
}

void MapSurface::touchUngrabEvent() {
  gestures_.cancel();
  redraw();
}

void MapSurface::mousePressEvent(QMouseEvent* event) {
  forceActiveFocus(Qt::MouseFocusReason);
  follow({{mouseFinger, event->position()}}, mouseSlop);
}

void MapSurface::mouseMoveEvent(QMouseEvent* event) {
  follow({{mouseFinger, event->position()}}, mouseSlop);
}

void MapSurface::mouseReleaseEvent(QMouseEvent*) {
  follow({}, mouseSlop);
}

void MapSurface::mouseUngrabEvent() {
  touchUngrabEvent();
}

void MapSurface::wheelEvent(QWheelEvent* event) {
  MapView* const shown = view();
  if (!shown) return;
  const bool touchpad = !event->pixelDelta().isNull();
  const double levels =
      touchpad ? event->pixelDelta().y() * levelsAPoint : event->angleDelta().y() / 120.0 * levelsANotch;
  const ScreenPoint at{event->position().x(), event->position().y()};
  shown->moveCamera([&](MapCamera& camera) { camera.zoomSmoothlyBy(levels, at); });
  event->accept();
}

bool MapSurface::event(QEvent* event) {
  if (event->type() != QEvent::NativeGesture) return QQuickItem::event(event);
  const auto& gesture = static_cast<QNativeGestureEvent&>(*event);
  MapView* const shown = view();
  if (!shown || gesture.gestureType() != Qt::ZoomNativeGesture) return false;
  const ScreenPoint at{gesture.position().x(), gesture.position().y()};
  shown->moveCamera([&](MapCamera& camera) { camera.zoomBy(1 + gesture.value(), at); });
  return true;
}

void MapSurface::keyPressEvent(QKeyEvent* event) {
  MapView* const shown = view();
  if (!shown) return event->ignore();
  double dx = 0;
  double dy = 0;
  switch (event->key()) {
    case Qt::Key_Left:
      dx = -keyStep;
      break;
    case Qt::Key_Right:
      dx = keyStep;
      break;
    case Qt::Key_Up:
      dy = -keyStep;
      break;
    case Qt::Key_Down:
      dy = keyStep;
      break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      shown->zoomBy(1);
      return;
    case Qt::Key_Minus:
      shown->zoomBy(-1);
      return;
    case Qt::Key_0:
      shown->showAll(true);
      return;
    case Qt::Key_Escape:
      if (map_->selected()) {
        map_->deselect();
        return;
      }
      [[fallthrough]];
    default:
      event->ignore();
      return;
  }
  shown->moveCamera([&](MapCamera& camera) {
    const CameraPosition to = camera.destination();
    const double scale = pointsPerWorldUnit(to.zoom);
    camera.setCenter({to.center.x + dx / scale, to.center.y + dy / scale}, true);
  });
}

}  // namespace fleetor
