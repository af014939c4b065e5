#include "qt/map/map_surface.h"

#include <QQuickWindow>
#include <algorithm>
#include <cmath>
#include <utility>

namespace fleetor {

namespace {

constexpr double aFrame = 1.0 / 60;  // seconds, of the first step of a movement
constexpr double longestStep = 0.1;  // after a hiccup a movement goes on where it was

}  // namespace

MapSurface::MapSurface(QQuickItem* parent) : QQuickItem(parent), lineLayer_(*new LineLayer(*this)) {
  setFlag(ItemHasContents);
  setAcceptedMouseButtons(Qt::LeftButton);
  setAcceptTouchEvents(true);
  clock_.start();
  retry_.setSingleShot(true);
  connect(&retry_, &QTimer::timeout, this, &MapSurface::redraw);
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
  return map_ && tiles_.first == TileSight::shown ? map_->attribution() : QString();
}

QString MapSurface::message() const {
  return map_ && tiles_.first == TileSight::unavailable ? map_->noTilesMessage() : QString();
}

void MapSurface::redraw() {
  stale_ = true;
  if (isVisible()) update();
}

// Comes right before a frame is put together, so that what it shows is what the camera says at that moment.
void MapSurface::frame() {
  MapView* const shown = view();
  if (!stale_ || !isVisible() || !shown || !window()) return;
  const double time = now();
  if (shown->camera().moving()) {
    const double step = steppedAt_ < 0 ? aFrame : std::min(time - steppedAt_, longestStep);
    steppedAt_ = time;
    shown->moveCamera([step](MapCamera& camera) { camera.advance(step); });
  }
  stale_ = false;
  const bool more = layOut(time) || !frame_.steady;
  update();
  if (!shown->camera().moving()) steppedAt_ = -1;
  if (!shown->camera().moving() && !board_->isFading() && !more) return;
  stale_ = true;
  window()->update();  // the item's own update() asks for this frame, which is under way already
}

// While the zoom stays, the map moves by whole pixels: nothing in it blurs or trembles.
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
    steadyAt_ = position.center;
    return;
  }
  const double scale = pointsPerWorldUnit(position.zoom);
  frame_.camera.center = {
      steadyAt_.x + onPixels((position.center.x - steadyAt_.x) * scale, pixelRatio) / scale,
      steadyAt_.y + onPixels((position.center.y - steadyAt_.y) * scale, pixelRatio) / scale};
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
  board_->update({camera.center(), camera.zoom(), camera.width(), camera.height(), frame_.pixelRatio, style},
                 time);
  if (const std::pair seen(board_->sight(), style); std::exchange(tiles_, seen) != seen)
    Q_EMIT tilesChanged();
  lines_->update(camera);
  lineLayer_.show(frame_, *lines_);
  const bool resting = !camera.moving() && !(gestures_.active() && gestures_.moved());
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
  auto* const node = before ? static_cast<MapNode*>(before) : new MapNode;
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

bool MapSurface::isAtEdge(QPointF point) const {
  return point.x() < leftEdge_ || point.x() > width() - rightEdge_;
}

void MapSurface::follow(const std::vector<MapGestures::Finger>& fingers, double slop) {
  MapView* const shown = view();
  if (!shown) return;
  const bool begins = !gestures_.active();
  if (begins) sideways_ = fingers.size() == 1 && isAtEdge(fingers.front().position);
  if (fingers.size() > 1) sideways_ = false;
  if (sideways_ && !gestures_.moved() && fingers.size() == 1 && !begins) {
    // Near an edge the map waits until it is clear that the finger does not go sideways.
    const QPointF way = gestures_.travelled();
    if (std::abs(way.y()) > slop && std::abs(way.y()) > std::abs(way.x())) sideways_ = false;
  }
  std::optional<MapGestures::Tap> tapped;
  shown->moveCamera([&](MapCamera& camera) {
    tapped = gestures_.update(fingers, sideways_ ? width() : slop, now(), camera);
  });
  setKeepMouseGrab(gestures_.active() && !sideways_);
  setKeepTouchGrab(gestures_.active() && !sideways_);
  if (tapped) tap(*tapped);
}

void MapSurface::tap(const MapGestures::Tap& tap) {
  const ScreenPoint at{tap.position.x(), tap.position.y()};
  if (tap.kind != MapGestures::TapKind::single) {
    const double levels = tap.kind == MapGestures::TapKind::twice ? 1 : -1;
    view()->moveCamera([&](MapCamera& camera) { camera.zoomSmoothlyBy(levels, at); });
    return;
  }
  if (callout_ && callout_->isVisible() && callout_->contains(mapToItem(callout_, tap.position))) return;
  if (map_->tap(tap.position)) gestures_.forgetTap();
}

}  // namespace fleetor
