#include "ui/map/map_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fleetor {

namespace {

constexpr double focusInset = 72;  // points from an edge

}  // namespace

void MapView::setDelegate(MapViewDelegate* delegate) {
  delegate_ = delegate;
  if (!delegate_) return;
  const bool waiting = std::ranges::any_of(views_, [](const auto& entry) { return !entry.second; });
  if (waiting) {
    if (!isCrowded()) needViews(annotations_);
    annotationsChanged.emit();
  }
  bool newRenderers = false;
  for (const auto& overlay : overlays_) {
    auto& renderer = renderers_[overlay.get()];
    if (renderer) continue;
    renderer = delegate_->mapViewRendererForOverlay(*this, overlay);
    newRenderers |= renderer != nullptr;
  }
  if (newRenderers) overlaysChanged.emit();
}

void MapView::setRegion(Coordinate centre, double latitudinalMetres, double longitudinalMetres,
                        bool animated) {
  camera_.setRegion(centre, latitudinalMetres, longitudinalMetres, animated);
  assign(placed_, true);
  cameraChanged.emit();
}

void MapView::setCenterCoordinate(Coordinate centre, bool animated) {
  camera_.setCentre(project(centre), animated);
  assign(placed_, true);
  cameraChanged.emit();
}

void MapView::showAnnotations(const MapAnnotations& annotations, bool animated) {
  std::vector<Coordinate> coordinates;
  coordinates.reserve(annotations.size());
  for (const auto& annotation : annotations)
    coordinates.push_back(annotation->coordinate());
  fit(coordinates, animated);
}

void MapView::showAll(bool animated) {
  std::vector<Coordinate> coordinates;
  for (const auto& annotation : annotations_)
    coordinates.push_back(annotation->coordinate());
  for (const auto& overlay : overlays_)
    coordinates.insert(coordinates.end(), overlay->coordinates().begin(), overlay->coordinates().end());
  fit(coordinates, animated);
}

void MapView::fit(const std::vector<Coordinate>& coordinates, bool animated) {
  if (coordinates.empty()) return;
  camera_.fit(coordinates, fitPadding, animated);
  assign(placed_, true);
  cameraChanged.emit();
}

void MapView::zoomBy(double levels) {
  camera_.zoomSmoothlyBy(levels, {camera_.width() / 2, camera_.height() / 2});
  cameraChanged.emit();
}

void MapView::addAnnotations(const MapAnnotations& annotations) {
  MapAnnotations added;
  views_.reserve(views_.size() + annotations.size());
  for (const auto& annotation : annotations)
    if (views_.try_emplace(annotation.get()).second) added.push_back(annotation);
  if (added.empty()) return;
  annotations_.insert(annotations_.end(), added.begin(), added.end());
  if (delegate_ && !isCrowded()) makeViews(added);
  annotationsChanged.emit();
}

void MapView::needViews(const MapAnnotations& annotations) {
  MapAnnotations missing;
  for (const auto& annotation : annotations)
    if (!views_.at(annotation.get())) missing.push_back(annotation);
  if (delegate_ && !missing.empty()) makeViews(missing);
}

void MapView::makeViews(const MapAnnotations& annotations) {
  MapAnnotationViews made;
  for (const auto& annotation : annotations) {
    auto view = delegate_->mapViewViewForAnnotation(*this, annotation);
    if (!view) {
      view = std::make_shared<MapAnnotationView>("");
      view->setAnnotation(annotation);
    }
    views_[annotation.get()] = view;
    made.push_back(std::move(view));
  }
  delegate_->mapViewDidAddAnnotationViews(*this, made);
}

// Often called with the map's own list, which must therefore last until the end.
void MapView::removeAnnotations(const MapAnnotations& annotations) {
  bool removed = false;
  bool removedSelected = false;
  for (const auto& annotation : annotations) {
    const auto found = views_.find(annotation.get());
    if (found == views_.end()) continue;
    removed = true;
    removedSelected |= annotation == selected_;
    if (annotation == current_) current_ = nullptr;
    if (glide_ && annotation == glide_->annotation) glide_.reset();
    if (const auto view = std::move(found->second)) {
      view->setAnnotation(nullptr);
      if (!view->reuseIdentifier().empty()) reusable_[view->reuseIdentifier()].push_back(view);
    }
    views_.erase(found);
  }
  if (!removed) return;
  std::erase_if(annotations_, [this](const auto& each) { return !views_.contains(each.get()); });
  if (removedSelected) deselectAnnotation();
  annotationsChanged.emit();
}

void MapView::replaceAnnotations(const MapAnnotations& annotations) {
  const std::string subject = selected_ ? selected_->subject() : "";
  const auto isGlider = [this](const auto& each) {
    return !glidingSubject_.empty() && each->subject() == glidingSubject_;
  };
  const auto before = std::ranges::find_if(annotations_, isGlider);
  const auto after = std::ranges::find_if(annotations, isGlider);
  std::optional<Glide> glide;
  if (before != annotations_.end() && after != annotations.end()) glide = Glide{*after, placeOf(**before)};
  removeAnnotations(annotations_);
  glide_ = std::move(glide);
  addAnnotations(annotations);
  const auto successor = std::ranges::find(annotations, subject, &MapAnnotation::subject);
  if (!subject.empty() && successor != annotations.end()) selectAnnotation(*successor);
}

void MapView::replaceAnnotation(const std::shared_ptr<MapAnnotation>& earlier,
                                std::shared_ptr<MapAnnotation> next) {
  const bool glides = !glidingSubject_.empty() && next->subject() == glidingSubject_;
  const bool wasGliding = glide_ && glide_->annotation == earlier;
  if (glides)
    glide_ = Glide{next, placeOf(*earlier)};
  else if (wasGliding)
    glide_.reset();
  const bool wasSelected = earlier == selected_;
  if (earlier == current_) current_ = next;
  auto entry = views_.extract(earlier.get());
  if (const auto view = std::exchange(entry.mapped(), nullptr)) {
    view->setAnnotation(nullptr);
    if (!view->reuseIdentifier().empty()) reusable_[view->reuseIdentifier()].push_back(view);
  }
  entry.key() = next.get();
  views_.insert(std::move(entry));
  *std::ranges::find(annotations_, earlier) = next;
  if (delegate_ && !isCrowded()) makeViews({next});
  if (wasSelected) assign(selected_, std::move(next));
  annotationsChanged.emit();
}

WorldPoint MapView::placeOf(const MapAnnotation& annotation) const {
  const WorldPoint to = project(annotation.coordinate());
  if (!glide_ || glide_->annotation.get() != &annotation) return to;
  const double left = 1 - MapCamera::easedOut(glide_->elapsed / MapCamera::shortJourney);
  const double way = glide_->from.x - to.x;
  return {to.x + (way - std::round(way)) * left, to.y + (glide_->from.y - to.y) * left};
}

void MapView::advance(double seconds) {
  if (glide_ && (glide_->elapsed += seconds) >= MapCamera::shortJourney) glide_.reset();
  camera_.advance(seconds);
  cameraChanged.emit();
}

std::shared_ptr<MapAnnotationView> MapView::viewForAnnotation(const MapAnnotation& annotation) const {
  const auto found = views_.find(&annotation);
  return found == views_.end() ? nullptr : found->second;
}

std::shared_ptr<MapAnnotationView> MapView::dequeueReusableAnnotationViewWithIdentifier(
    const std::string& identifier) {
  auto& waiting = reusable_[identifier];
  if (waiting.empty()) return nullptr;
  auto view = std::move(waiting.back());
  waiting.pop_back();
  view->setZPosition(0);
  view->setCenterOffset({});
  return view;
}

void MapView::selectAnnotation(const std::shared_ptr<MapAnnotation>& annotation) {
  const auto view = viewForAnnotation(*annotation);
  if (view && view->enabled() && view->canShowCallout()) assign(selected_, annotation);
}

std::shared_ptr<MapAnnotation> MapView::currentAnnotation() const {
  return current_ || annotations_.empty() ? current_ : annotations_.front();
}

void MapView::focusAnnotation(const std::shared_ptr<MapAnnotation>& annotation) {
  assign(current_, annotation);
  const auto [x, y] = camera_.screenPoint(project(annotation->coordinate()));
  const bool isInSight = x >= focusInset && x <= camera_.width() - focusInset && y >= focusInset &&
                         y <= camera_.height() - focusInset;
  if (camera_.hasViewport() && !isInSight) setCenterCoordinate(annotation->coordinate(), true);
}

void MapView::addOverlay(std::shared_ptr<MapPolyline> overlay) {
  if (!renderers_.try_emplace(overlay.get()).second) return;
  if (delegate_) renderers_[overlay.get()] = delegate_->mapViewRendererForOverlay(*this, overlay);
  overlays_.push_back(std::move(overlay));
  overlaysChanged.emit();
}

void MapView::setTraveller(const std::optional<MapTraveller>& traveller) {
  if (traveller_ == traveller) return;
  traveller_ = traveller;
  travellerChanged.emit();
}

void MapView::removeOverlay(const std::shared_ptr<MapPolyline>& overlay) {
  if (renderers_.erase(overlay.get()) == 0) return;
  std::erase(overlays_, overlay);
  overlaysChanged.emit();
}

std::shared_ptr<MapPolylineRenderer> MapView::rendererForOverlay(const MapPolyline& overlay) const {
  const auto found = renderers_.find(&overlay);
  return found == renderers_.end() ? nullptr : found->second;
}

}  // namespace fleetor
