#include "qt/map/map_surface.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QQuickWindow>
#include <QScopedValueRollback>
#include <QTouchEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace fleetor {

namespace {

constexpr double frameSeconds = 1.0 / 60;  // seconds, of the first step of a movement
constexpr double longestStep = 0.1;        // after a hiccup a movement goes on where it was
constexpr double longestAnimation = 10;    // seconds; a fling needs most
// A map that moves although nobody has touched it for a moment follows a vehicle: half the frames do.
constexpr double untouched = 1;    // seconds
constexpr int followingStep = 33;  // milliseconds
constexpr int mouseFinger = -1;    // the id of the mouse among the fingers

ScreenPoint toScreen(QPointF point) {
  return {point.x(), point.y()};
}

}  // namespace

MapSurface::MapSurface(QQuickItem* parent) : QQuickItem(parent), lineLayer_(*new LineLayer(*this)) {
  setFlag(ItemHasContents);
  setAcceptedMouseButtons(Qt::LeftButton);
  setAcceptTouchEvents(true);
  clock_.start();
  retry_.setSingleShot(true);
  connect(&retry_, &QTimer::timeout, this, &MapSurface::redraw);
  following_.setSingleShot(true);
  following_.setTimerType(Qt::PreciseTimer);
  connect(&following_, &QTimer::timeout, this, &MapSurface::redraw);
  connect(this, &MapSurface::darkChanged, this, &MapSurface::redraw);
}

MapSurface::~MapSurface() = default;

void MapSurface::setMap(MapViewItem* map) {
  if (map == map_) return;
  if (map_) map_->disconnect(this);
  tilesBack_.disconnect();
  board_.reset();
  lineLayer_.clear();
  lines_.reset();
  map_ = map;
  if (MapView* const shown = view()) {
    board_.emplace(map->tiles(), map->tiles().memory());
    board_->onChange = [this] { redraw(); };
    tilesBack_ = map->tiles().back.connect([this] { board_->retry(); });
    lines_.emplace(map->queues(), [this] { redraw(); });
    lines_->setOverlays(*shown);
    connect(map, &MapViewItem::cameraChanged, this, &MapSurface::redraw);
    connect(map, &MapViewItem::markersChanged, this, &MapSurface::redraw);
    connect(map, &MapViewItem::travellerChanged, this, &MapSurface::redraw);
    connect(map, &ComponentItem::changed, this, &MapSurface::redraw);
    connect(map, &MapViewItem::overlaysChanged, this, [this] {
      if (const MapView* const now = view()) lines_->setOverlays(*now);
      redraw();
    });
    shown->moveCamera([this](MapCamera& camera) { camera.setViewport(width(), height()); });
  }
  Q_EMIT mapChanged();
  redraw();
}

void MapSurface::setDark(bool dark) {
  if (std::exchange(dark_, dark) != dark) Q_EMIT darkChanged();
}

QString MapSurface::attribution() const {
  return map_ && tiles_.first == TileState::shown ? map_->attribution() : QString();
}

QString MapSurface::message() const {
  return map_ && tiles_.first == TileState::unavailable ? map_->noTilesMessage() : QString();
}

// A change is laid out before the next frame begins: what changes within a frame asks for another one after
// it.
void MapSurface::redraw() {
  if (stepping_) return;
  stale_ = true;
  if (posted_ || !isVisible()) return;
  posted_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        posted_ = false;
        step();
        stepped_ = true;
      },
      Qt::QueuedConnection);
}

// A frame is about to be composed: it shows the fingers where they are now, and the next step of a movement,
// unless a step has just been made for it.
void MapSurface::frame() {
  const bool stepped = std::exchange(stepped_, false);
  if (!stale_ || !isVisible()) return;
  if (stepped && !gestures_.movesMap())
    window()->update();
  else
    step();
}

void MapSurface::step() {
  MapView* const shown = view();
  if (!stale_ || !isVisible() || !shown || !window()) return;
  const QScopedValueRollback guard(stepping_, true);
  const double time = now();
  if (shown->isMoving()) {
    const double seconds = steppedAt_ < 0 ? frameSeconds : std::min(time - steppedAt_, longestStep);
    shown->advance(animated_ ? seconds : longestAnimation);
  }
  stale_ = false;
  const bool more = layOut(time) || !frame_.steady || board_->isFading();
  update();
  const bool moves = shown->isMoving();
  steppedAt_ = moves ? time : -1;
  if (moves && !more && time - touchedAt_ > untouched) {
    following_.start(followingStep);
  } else if (moves || more) {
    stale_ = true;
    window()->update();  // the item's own update() asks for this frame, which may be under way already
  }
}

// While the zoom stays, the map moves by whole pixels, so that it neither blurs nor trembles.
void MapSurface::takePosition(const MapCamera& camera) {
  const CameraPosition position = camera.position();
  const double pixelRatio = window()->effectiveDevicePixelRatio();
  const QSizeF size(camera.width(), camera.height());
  frame_.steady =
      position.zoom == frame_.camera.zoom && pixelRatio == frame_.pixelRatio && size == frame_.size;
  frame_.pixelRatio = pixelRatio;
  frame_.size = size;
  frame_.camera = position;
  if (!frame_.steady) {
    steadyAt_ = position.centre;
    return;
  }
  const double scale = pointsPerWorldUnit(position.zoom);
  frame_.camera.centre = {
      steadyAt_.x + onPixels((position.centre.x - steadyAt_.x) * scale, pixelRatio) / scale,
      steadyAt_.y + onPixels((position.centre.y - steadyAt_.y) * scale, pixelRatio) / scale};
}

bool MapSurface::layOut(double time) {
  const MapCamera& camera = view()->camera();
  if (!camera.hasViewport()) return false;
  takePosition(camera);
  frame_.ground = ground_;
  frame_.grid = grid_;
  const MapStyle style = map_->satellite() ? MapStyle::satellite
                         : dark_           ? MapStyle::dark
                                           : MapStyle::standard;
  board_->update(
      {camera.centre(), camera.zoom(), camera.width(), camera.height(), frame_.pixelRatio, style, animated_},
      time);
  if (const std::pair seen(board_->state(), style); std::exchange(tiles_, seen) != seen)
    Q_EMIT tilesChanged();
  lines_->update(*view());
  lineLayer_.show(frame_, *lines_);
  const bool resting = !view()->isMoving() && !gestures_.movesMap();
  map_->placeTraveller();
  const bool more = map_->placeMarkers(resting ? frame_.pixelRatio : 0);
  if (const auto wake = board_->wakeAt())
    retry_.start(static_cast<int>(std::ceil(std::clamp(*wake - time, 0.0, 3600.0) * 1000)));
  else
    retry_.stop();
  return more;
}

QSGNode* MapSurface::updatePaintNode(QSGNode* before, UpdatePaintNodeData*) {
  if (!view() || frame_.size.isEmpty()) {
    delete before;
    return nullptr;
  }
  auto* const node = before ? static_cast<BaseMapNode*>(before) : new BaseMapNode;
  if (node->update(frame_, board_->drawn(), *window()))
    QMetaObject::invokeMethod(this, &MapSurface::redraw, Qt::QueuedConnection);
  return node;
}

void MapSurface::geometryChange(const QRectF& now, const QRectF& before) {
  QQuickItem::geometryChange(now, before);
  if (now.size() == before.size()) return;
  if (MapView* const shown = view())
    shown->moveCamera([&](MapCamera& camera) { camera.setViewport(now.width(), now.height()); });
}

void MapSurface::itemChange(ItemChange change, const ItemChangeData& data) {
  if (change == ItemSceneChange) {
    disconnect(frames_);
    if (data.window) frames_ = connect(data.window, &QQuickWindow::afterAnimating, this, &MapSurface::frame);
  }
  QQuickItem::itemChange(change, data);
  if (change == ItemVisibleHasChanged) {
    if (!data.boolValue && board_) board_->suspend();
    steppedAt_ = -1;
    redraw();
  } else if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) {
    redraw();
  }
}

void MapSurface::touchEvent(QTouchEvent* event) {
  if (event->type() == QEvent::TouchCancel) {
    touchUngrabEvent();
    return;
  }
  std::vector<MapGestures::Finger> fingers;
  for (const QEventPoint& point : event->points())
    if (point.state() != QEventPoint::Released) fingers.push_back({point.id(), toScreen(point.position())});
  follow(fingers, MapGestures::Pointer::finger);
  event->accept();
}

void MapSurface::touchUngrabEvent() {
  gestures_.cancel();
  redraw();
}

void MapSurface::mousePressEvent(QMouseEvent* event) {
  forceActiveFocus(Qt::MouseFocusReason);
  mouseMoveEvent(event);
}

void MapSurface::mouseMoveEvent(QMouseEvent* event) {
  follow({{mouseFinger, toScreen(event->position())}}, MapGestures::Pointer::mouse);
}

void MapSurface::mouseReleaseEvent(QMouseEvent*) {
  follow({}, MapGestures::Pointer::mouse);
}

void MapSurface::mouseUngrabEvent() {
  touchUngrabEvent();
}

void MapSurface::follow(const std::vector<MapGestures::Finger>& fingers, MapGestures::Pointer pointer) {
  MapView* const shown = view();
  if (!shown) return;
  gestures_.setEdges({leftEdge_, rightEdge_});
  std::optional<ScreenPoint> tapped;
  shown->moveCamera([&](MapCamera& camera) { tapped = gestures_.update(fingers, pointer, now(), camera); });
  setKeepMouseGrab(gestures_.holdsFingers());
  setKeepTouchGrab(gestures_.holdsFingers());
  if (!tapped) return;
  const QPointF at(tapped->x, tapped->y);
  if (callout_ && callout_->isVisible() && callout_->contains(mapToItem(callout_, at))) return;
  if (map_->tap(at)) gestures_.forgetTap();
}

void MapSurface::wheelEvent(QWheelEvent* event) {
  MapView* const shown = view();
  if (!shown) return;
  const ScreenPoint at = toScreen(event->position());
  shown->moveCamera([&](MapCamera& camera) {
    if (event->pixelDelta().isNull())
      zoomByWheel(camera, event->angleDelta().y() / 120.0, at);
    else
      zoomByTouchpad(camera, event->pixelDelta().y(), at);
  });
  event->accept();
}

bool MapSurface::event(QEvent* event) {
  if (event->isInputEvent()) touchedAt_ = now();
  if (event->type() != QEvent::NativeGesture) return QQuickItem::event(event);
  const auto& gesture = static_cast<QNativeGestureEvent&>(*event);
  MapView* const shown = view();
  if (!shown || gesture.gestureType() != Qt::ZoomNativeGesture) return false;
  shown->moveCamera(
      [&](MapCamera& camera) { camera.zoomBy(1 + gesture.value(), toScreen(gesture.position())); });
  return true;
}

void MapSurface::keyPressEvent(QKeyEvent* event) {
  MapView* const shown = view();
  if (!shown) return event->ignore();
  const auto move = [shown](int east, int south) {
    shown->moveCamera([=](MapCamera& camera) { moveBySteps(camera, east, south); });
  };
  switch (event->key()) {
    case Qt::Key_Left:
      return move(-1, 0);
    case Qt::Key_Right:
      return move(1, 0);
    case Qt::Key_Up:
      return move(0, -1);
    case Qt::Key_Down:
      return move(0, 1);
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      return shown->zoomBy(1);
    case Qt::Key_Minus:
      return shown->zoomBy(-1);
    case Qt::Key_0:
      return shown->showAll(true);
    case Qt::Key_Escape:
      if (map_->selected()) return map_->deselect();
      break;
    default:
      break;
  }
  event->ignore();
}

}  // namespace fleetor
