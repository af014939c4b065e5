#include "qt/map/map_view_item.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <unordered_map>
#include <utility>

#include "map/marker_choice.h"
#include "qt/map/map_frame.h"

namespace fleetor {

namespace {

constexpr double furthestOrigin = 512;  // points from the middle of the map
constexpr double margin = 64;           // of what is drawn of a marker and its callout
constexpr double chosenAhead = 0.25;    // of the map, beyond each edge, from a crowd of markers
constexpr int newMarkersPerFrame = 24;  // a few milliseconds' work

}  // namespace

QUrl MapMarkerItem::image() const {
  return read<MapAnnotationView>([](MapAnnotationView& c) { return Adapters::imageUrl(c.image()); });
}

double MapMarkerItem::zPosition() const {
  return read<MapAnnotationView>([](MapAnnotationView& c) { return c.zPosition(); });
}

double MapMarkerItem::course() const {
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  const auto* const view = as<MapAnnotationView>();
  return view ? view->course().value_or(none) : none;
}

QColor MapMarkerItem::ringColor() const {
  return read<MapAnnotationView>([](MapAnnotationView& c) { return toQColor(c.ringColor()); });
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

void MapMarkerItem::setStacked(int count) {
  if (std::exchange(stacked_, count) != count) Q_EMIT placeChanged();
}

int MapMarkerModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

QVariant MapMarkerModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::UserRole || !checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  return QVariant::fromValue(items_[static_cast<std::size_t>(index.row())].data());
}

bool MapMarkerModel::update(const Items& items, int most) {
  std::unordered_map<const MapMarkerItem*, std::size_t> places;
  for (std::size_t i = 0; i < items.size(); ++i)
    places.emplace(items[i].data(), i);
  std::size_t next = 0;  // those that stay do so in their new order
  for (std::size_t row = 0; row < items_.size();) {
    const auto found = places.find(items_[row].data());
    if (items_[row] && found != places.end() && found->second >= next) {
      next = found->second + 1;
      ++row;
      continue;
    }
    beginRemoveRows({}, static_cast<int>(row), static_cast<int>(row));
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(row));
    endRemoveRows();
  }
  std::size_t row = 0;
  for (const auto& item : items) {
    if (row < items_.size() && items_[row] == item) {
      ++row;
      continue;
    }
    if (!item) continue;
    if (most-- <= 0) return false;
    beginInsertRows({}, static_cast<int>(row), static_cast<int>(row));
    items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(row), item);
    endInsertRows();
    ++row;
  }
  return true;
}

MapViewItem::MapViewItem(Component& component, Adapters& registry, TileSource& tiles)
    : ComponentItem(component, registry), tiles_(tiles) {
  auto& map = *as<MapView>();
  connections_.push_back(map.cameraChanged.connect([this] { Q_EMIT cameraChanged(); }));
  connections_.push_back(map.overlaysChanged.connect([this] { Q_EMIT overlaysChanged(); }));
  connections_.push_back(map.travellerChanged.connect([this] {
    travellerStale_ = true;
    Q_EMIT travellerChanged();
  }));
  connections_.push_back(map.annotationsChanged.connect([this] {
    markersStale_ = true;
    Q_EMIT markersChanged();
  }));
}

bool MapViewItem::satellite() const {
  return read<MapView>([](MapView& c) { return c.mapType() == MapType::satellite; });
}

bool MapViewItem::covered() const {
  return read<MapView>([](MapView& c) { return c.isCovered(); });
}

bool MapViewItem::placed() const {
  return read<MapView>([](MapView& c) { return c.isPlaced(); });
}

QString MapViewItem::attribution() const {
  const auto style = satellite() ? MapStyle::satellite : MapStyle::standard;
  return adapters().localized(tiles().attribution(style));
}

QString MapViewItem::noTilesMessage() const {
  return adapters().localized("Map pictures are not available");
}

bool MapViewItem::travels() const {
  return read<MapView>([](MapView& c) { return c.traveller().has_value(); });
}

double MapViewItem::travellerCourse() const {
  return read<MapView>([](MapView& c) { return c.traveller() ? c.traveller()->course : 0; });
}

QUrl MapViewItem::travellerImage() const {
  return read<MapView>(
      [](MapView& c) { return c.traveller() ? Adapters::imageUrl(c.traveller()->image) : QUrl(); });
}

MapMarkerItem* MapViewItem::selected() const {
  return read<MapView>([this](MapView& map) { return itemFor(map, map.selectedAnnotation()); });
}

MapMarkerItem* MapViewItem::current() const {
  return read<MapView>([this](MapView& map) { return itemFor(map, map.currentAnnotation()); });
}

MapMarkerItem* MapViewItem::itemFor(const MapView& map,
                                    const std::shared_ptr<MapAnnotation>& annotation) const {
  return annotation ? adapters().itemFor<MapMarkerItem>(map.viewForAnnotation(*annotation).get()) : nullptr;
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
  map->focusAnnotation(view->annotation());
}

bool MapViewItem::tap(QPointF point) {
  const QPointF finger = point - markerOrigin_;
  const auto touched = stacks_.touched({finger.x(), finger.y()});
  if (!touched) {
    deselect();
    return false;
  }
  const MapMarkerItem* const shown = selected();
  std::optional<std::size_t> open;
  for (std::size_t i = 0; i < touchable_.size(); ++i)
    if (shown && touchable_[i] == shown) open = i;
  toggle(touchable_[stacks_.toOpen(*touched, open).value_or(*touched)]);
  return true;
}

bool MapViewItem::placeMarkers(double pixelRatio) {
  auto* const map = as<MapView>();
  if (!map || !map->camera().hasViewport()) return false;
  const MapCamera& camera = map->camera();
  const WorldRect seen = camera.visibleRect();
  const bool outside = seen.left < window_.left || seen.right > window_.right || seen.top < window_.top ||
                       seen.bottom > window_.bottom;
  if (markersStale_ || (!places_.empty() && (outside || windowZoom_ != std::ceil(camera.zoom()))))
    chooseMarkers(*map);
  if (!complete_) {
    complete_ = markers_.update(wanted_, newMarkersPerFrame);
    placedZoom_ = -1;
    Q_EMIT changed();  // the first marker may be another one
  }
  const auto middle = QPointF(camera.width() / 2, camera.height() / 2);
  const ScreenPoint origin = camera.screenPoint(origin_);
  const bool onWhole = pixelRatio > 0;
  QPointF moved(origin.x, origin.y);
  const bool glides = std::exchange(placedGliding_, map->isGliding()) || map->isGliding();
  // Moving the map moves their origin alone, until that is far away.
  const QPointF away = moved - middle;
  if (placedZoom_ != camera.zoom() || std::hypot(away.x(), away.y()) > furthestOrigin ||
      (onWhole && !placedOnPixels_) || glides) {
    origin_ = camera.centre();
    moved = middle;
    placedZoom_ = camera.zoom();
    placedOnPixels_ = onWhole;
    for (const auto& marker : markers_.items()) {
      const auto* const view = marker ? marker->as<MapAnnotationView>() : nullptr;
      if (!view || !view->annotation()) continue;
      const ScreenPoint at = camera.screenPoint(map->placeOf(*view->annotation()));
      const ScreenPoint offset = view->centerOffset();
      const QPointF place = QPointF(at.x + offset.x, at.y + offset.y) - middle;
      const bool nearby = std::abs(place.x()) < camera.width() / 2 + furthestOrigin + margin &&
                          std::abs(place.y()) < camera.height() / 2 + furthestOrigin + margin;
      marker->setPlace(onWhole ? onPixels(place, pixelRatio) : place, nearby);
    }
    stackMarkers();
  }
  if (onWhole) moved = onPixels(moved, pixelRatio);
  if (moved != markerOrigin_) {
    markerOrigin_ = moved;
    Q_EMIT markersMoved();
  }
  return !complete_;
}

void MapViewItem::placeTraveller() {
  const auto* const map = as<MapView>();
  if (!map) return;
  QPointF place;
  if (const auto& traveller = map->traveller()) {
    const ScreenPoint at = map->camera().screenPoint(traveller->place);
    place = {at.x, at.y};
  }
  if (!std::exchange(travellerStale_, false) && place == travellerPlace_) return;
  travellerPlace_ = place;
  Q_EMIT travellerMoved();
}

void MapViewItem::stackMarkers() {
  touchable_.clear();
  std::vector<MarkerSpot> spots;
  for (const auto& marker : markers_.items()) {
    if (!marker || !marker->nearby() || !marker->tappable()) continue;
    const auto [x, y] = marker->as<MapAnnotationView>()->centerOffset();
    const QPointF at = marker->place();
    spots.push_back({{at.x() - x, at.y() - y}, {at.x(), at.y()}, marker->zPosition()});
    touchable_.push_back(marker);
  }
  stacks_ = MarkerStacks(spots);
  for (std::size_t i = 0; i < touchable_.size(); ++i)
    touchable_[i]->setStacked(static_cast<int>(stacks_.sizeBelow(i)));
}

void MapViewItem::chooseMarkers(MapView& map) {
  const MapAnnotations& all = map.annotations();
  const bool crowded = all.size() > MapView::crowd;
  if (std::exchange(markersStale_, false)) {
    places_.clear();
    places_.reserve(crowded ? all.size() : 0);
    for (std::size_t i = 0; crowded && i < all.size(); ++i)
      places_.push_back(project(all[i]->coordinate()));
  }
  MapAnnotations chosen;
  if (crowded) {
    const WorldRect seen = map.camera().visibleRect();
    const double x = seen.width() * chosenAhead;
    const double y = seen.height() * chosenAhead;
    window_ = {seen.left - x, seen.top - y, seen.right + x, seen.bottom + y};
    windowZoom_ = std::ceil(map.camera().zoom());
    std::set<std::size_t> indices{0, all.size() - 1};
    for (const std::size_t index : fleetor::chooseMarkers(places_, window_, MapView::crowd))
      indices.insert(index);
    for (const auto& kept : {map.selectedAnnotation(), map.currentAnnotation()})
      if (kept) indices.insert(static_cast<std::size_t>(std::ranges::find(all, kept) - all.begin()));
    for (const std::size_t index : indices)
      chosen.push_back(all[index]);
  } else {
    chosen = all;
  }
  map.needViews(chosen);
  wanted_.clear();
  for (const auto& annotation : chosen)
    if (const auto view = map.viewForAnnotation(*annotation))
      wanted_.emplace_back(adapters().itemFor<MapMarkerItem>(view.get()));
  complete_ = false;
}

void addMapAdapters(Adapters& adapters, TileSource& tiles) {
  adapters.add<MapView>([&tiles](Component& component, Adapters& all) -> ComponentItem* {
    return new MapViewItem(component, all, tiles);
  });
  adapters.add<MapAnnotationView>([](Component& component, Adapters& all) -> ComponentItem* {
    return new MapMarkerItem(component, all);
  });
}

}  // namespace fleetor
