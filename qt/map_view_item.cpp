#include "qt/map_view_item.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fleetor {

namespace {

constexpr double furthestOrigin = 512;  // points from the middle of the map
constexpr double margin = 64;           // of what is drawn of a marker and its callout
constexpr double revealedInset = 72;    // points from an edge

QPointF snapped(QPointF point, double pixelRatio) {
  if (pixelRatio <= 0) return point;
  return {std::round(point.x() * pixelRatio) / pixelRatio, std::round(point.y() * pixelRatio) / pixelRatio};
}

}  // namespace

QUrl MapMarkerItem::image() const {
  return read<MapAnnotationView>([](MapAnnotationView& c) { return Adapters::imageUrl(c.image()); });
}

double MapMarkerItem::zPosition() const {
  return read<MapAnnotationView>([](MapAnnotationView& c) { return c.zPosition(); });
}

QString MapMarkerItem::title() const {
  return read<MapAnnotationView>(
      [](MapAnnotationView& c) { return c.annotation() ? toQString(c.annotation()->title()) : QString(); });
}

QString MapMarkerItem::subtitle() const {
  return read<MapAnnotationView>([](MapAnnotationView& c) {
    return c.annotation() ? toQString(c.annotation()->subtitle()) : QString();
  });
}

bool MapMarkerItem::tappable() const {
  return read<MapAnnotationView>([](MapAnnotationView& c) { return c.enabled() && c.canShowCallout(); });
}

void MapMarkerItem::setPlace(QPointF place, bool nearby) {
  if (place == place_ && nearby == nearby_) return;
  place_ = place;
  nearby_ = nearby;
  Q_EMIT placeChanged();
}

int MapMarkerModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

QVariant MapMarkerModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::UserRole || index.row() >= rowCount()) return {};
  return QVariant::fromValue(items_[static_cast<std::size_t>(index.row())].data());
}

void MapMarkerModel::update(Items items) {
  if (items == items_) return;
  beginResetModel();
  items_ = std::move(items);
  endResetModel();
}

MapViewItem::MapViewItem(Component& component, Adapters& registry) : ComponentItem(component, registry) {
  auto& map = *as<MapView>();
  connections_.push_back(map.cameraChanged.connect([this] { Q_EMIT cameraChanged(); }));
  connections_.push_back(map.overlaysChanged.connect([this] { Q_EMIT overlaysChanged(); }));
  connections_.push_back(map.annotationsChanged.connect([this] {
    markersStale_ = true;
    Q_EMIT markersChanged();
  }));
}

bool MapViewItem::satellite() const {
  return read<MapView>([](MapView& c) { return c.mapType() == MapType::satellite; });
}

QString MapViewItem::attribution() const {
  return toQString(tiles().attribution(satellite() ? MapStyle::satellite : MapStyle::standard));
}

MapMarkerItem* MapViewItem::selected() const {
  const auto* map = as<MapView>();
  if (!map || !map->selectedAnnotation()) return nullptr;
  return adapters().itemFor<MapMarkerItem>(map->viewForAnnotation(*map->selectedAnnotation()).get());
}

void MapViewItem::toggle(MapMarkerItem* marker) {
  auto* const map = as<MapView>();
  const auto* const view = marker ? marker->as<MapAnnotationView>() : nullptr;
  if (!map || !view || !view->annotation()) return;
  if (map->selectedAnnotation() == view->annotation())
    map->deselectAnnotation();
  else
    map->selectAnnotation(view->annotation());
}

void MapViewItem::deselect() {
  if (auto* map = as<MapView>()) map->deselectAnnotation();
}

void MapViewItem::reveal(MapMarkerItem* marker) {
  auto* const map = as<MapView>();
  const auto* const view = marker ? marker->as<MapAnnotationView>() : nullptr;
  if (!map || !view || !view->annotation()) return;
  const MapCamera& camera = map->camera();
  const ScreenPoint at = camera.screenPoint(project(view->annotation()->coordinate()));
  const bool inSight = at.x >= revealedInset && at.x <= camera.width() - revealedInset &&
                       at.y >= revealedInset && at.y <= camera.height() - revealedInset;
  if (!inSight) map->setCenterCoordinate(view->annotation()->coordinate(), true);
}

MapMarkerItem* MapViewItem::markerAt(QPointF point, double reach) const {
  MapMarkerItem* best = nullptr;
  for (const auto& marker : markers_.items()) {
    if (!marker) continue;
    const QPointF off = markerOrigin_ + marker->place() - point;
    if (!marker->nearby() || !marker->tappable() || std::hypot(off.x(), off.y()) > reach) continue;
    if (!best || marker->zPosition() >= best->zPosition()) best = marker.data();
  }
  return best;
}

void MapViewItem::placeMarkers(double pixelRatio) {
  const auto* const map = as<MapView>();
  if (!map || !map->camera().hasViewport()) return;
  if (std::exchange(markersStale_, false)) updateMarkers();
  const MapCamera& camera = map->camera();
  const auto middle = QPointF(camera.width() / 2, camera.height() / 2);
  const ScreenPoint origin = camera.screenPoint(origin_);
  const bool onPixels = pixelRatio > 0;
  QPointF moved(origin.x, origin.y);
  // Moving the map moves their origin alone, until that is far away.
  const QPointF away = moved - middle;
  if (placedZoom_ != camera.zoom() || std::hypot(away.x(), away.y()) > furthestOrigin ||
      (onPixels && !placedOnPixels_)) {
    origin_ = camera.center();
    moved = middle;
    placedZoom_ = camera.zoom();
    placedOnPixels_ = onPixels;
    for (const auto& marker : markers_.items()) {
      const auto* const view = marker ? marker->as<MapAnnotationView>() : nullptr;
      if (!view || !view->annotation()) continue;
      const ScreenPoint at = camera.screenPoint(project(view->annotation()->coordinate()));
      const QPointF place = QPointF(at.x, at.y) - middle;
      const bool nearby = std::abs(place.x()) < camera.width() / 2 + furthestOrigin + margin &&
                          std::abs(place.y()) < camera.height() / 2 + furthestOrigin + margin;
      marker->setPlace(snapped(place, pixelRatio), nearby);
    }
  }
  moved = snapped(moved, pixelRatio);
  if (moved == markerOrigin_) return;
  markerOrigin_ = moved;
  Q_EMIT markersMoved();
}

void MapViewItem::updateMarkers() {
  MapMarkerModel::Items items;
  const auto& map = *as<MapView>();
  for (const auto& annotation : map.annotations())
    if (const auto view = map.viewForAnnotation(*annotation))
      items.emplace_back(adapters().itemFor<MapMarkerItem>(view.get()));
  markers_.update(std::move(items));
  placedZoom_ = -1;
}

}  // namespace fleetor
