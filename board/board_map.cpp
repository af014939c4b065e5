#include "board/board_map.h"

#include <algorithm>
#include <utility>

#include "map/great_circle.h"
#include "map/mercator.h"
#include "values/quantities.h"
#include "vehicle/detail_page_view_controller.h"
#include "vehicle/live_values.h"
#include "vehicle/position_sheet.h"

namespace fleetor {

namespace {

constexpr const char* markerIdentifier = "BoardMarker";
constexpr double followedSpan = 2000.0;  ///< metres shown around the vehicle
constexpr double sameSpot = 1.0;         ///< metres
constexpr double edge = 40;              ///< points
constexpr double trailWidth = 2.0;
constexpr std::size_t longestTrail = 1000;
constexpr std::size_t shortenedTrail = 750;
constexpr Seconds longestGap{120};

std::string subjectOf(std::int64_t vehicleId) {
  return std::to_string(vehicleId);
}

std::string joined(const std::string& one, const char* separator, const std::string& other) {
  return one + (one.empty() || other.empty() ? "" : separator) + other;
}

}  // namespace

class BoardMap::Marker final : public MapAnnotation {
 public:
  Marker(std::shared_ptr<const Live> live, Coordinate at, const Device& device)
      : live_(std::move(live)), at_(at) {
    const auto driving = isDriving(*live_);
    const std::string motion = !driving ? "" : device.localizedString(*driving ? "Driving" : "Standing");
    const std::string speed = readNumber(live_->speed.view()) ? live_->speed.str() + " km/h" : "";
    subtitle_ = joined(joined(motion, ", ", speed), "\n", live_->street.str());
  }

  const Live& live() const { return *live_; }
  Coordinate coordinate() const override { return at_; }
  std::string title() const override { return live_->vehicle().name.str(); }
  std::string subtitle() const override { return subtitle_; }
  std::string subject() const override { return subjectOf(live_->vehicle().vehicleId); }

 private:
  std::shared_ptr<const Live> live_;
  Coordinate at_;
  std::string subtitle_;
};

BoardMap::BoardMap(Environment& environment, Outlets& screen)
    : environment_(environment), panel_(environment, screen) {
  panel_.wholeTrackButton.setAccessibleName(environment.device.localizedString("Show all vehicles"));
  panel_.wholeTrackButton.setAction([this](Component&) { showAll(); });
  onMap_ = map().changed.connect([this] { changed.emit(); });
  map().setDelegate(this);
}

BoardMap::~BoardMap() {
  map().setDelegate(nullptr);
}

void BoardMap::show(const LastReadings::Entry& entry) {
  const auto at = positionOf(*entry.live);
  if (!at) return;
  Place& place = places_[entry.live->vehicle().vehicleId];
  if (place.marker && &place.marker->live() == entry.live.get()) return;
  const auto marker = std::make_shared<Marker>(entry.live, *at, environment_.device);
  extendTrail(place, *marker, entry.arrived);
  const auto before = std::exchange(place.marker, marker);
  if (before) {
    map().replaceAnnotation(before, marker);
  } else {
    map().addAnnotation(marker);
    // The user who has moved the map does not want it to move by itself.
    const bool mayMove = !followed_ && (!map().isPlaced() || map().camera().keepsRegion());
    if (mayMove && !isInSight(*at)) map().showAnnotations(map().annotations(), !map().isCovered());
  }
  if (followed_ == entry.live->vehicle().vehicleId) lookAtFollowed(!before);
}

bool BoardMap::isInSight(Coordinate place) const {
  const MapCamera& camera = panel_.map.camera();
  const auto [x, y] = camera.screenPoint(project(place));
  return panel_.map.isPlaced() && x >= edge && x <= camera.width() - edge && y >= edge &&
         y <= camera.height() - edge;
}

void BoardMap::extendTrail(Place& place, const Marker& marker, Seconds arrived) {
  const Coordinate at = marker.coordinate();
  if (!place.marker || arrived - place.arrived > longestGap) {
    map().removeOverlay(place.trail);
    colours_.erase(place.trail.get());
    place.trail = nullptr;
    place.first = {at};
  } else if (distanceInMetres(place.marker->coordinate(), at) > sameSpot) {
    std::shared_ptr<MapPolyline> longer;
    map().removeOverlay(place.trail);
    colours_.erase(place.trail.get());
    if (!place.trail) {
      place.first.push_back(at);
      longer = MapPolyline::polylineWithCoordinates(place.first);
    } else if (const auto& points = place.trail->coordinates(); points.size() < longestTrail) {
      longer = MapPolyline::polylineByAppendingCoordinate(*place.trail, at);
    } else {
      std::vector<Coordinate> latest(points.end() - static_cast<std::ptrdiff_t>(shortenedTrail),
                                     points.end());
      latest.push_back(at);
      longer = MapPolyline::polylineWithCoordinates(latest);
    }
    place.trail = std::move(longer);
    colours_[place.trail.get()] =
        DetailPageViewController::colorFromHexString(marker.live().vehicle().mapLineColor.view());
    map().addOverlay(place.trail);
  }
  place.arrived = arrived;
}

void BoardMap::keepOnly(const std::vector<std::int64_t>& ids) {
  std::erase_if(places_, [&](const auto& entry) {
    if (std::ranges::find(ids, entry.first) != ids.end()) return false;
    map().removeOverlay(entry.second.trail);
    colours_.erase(entry.second.trail.get());
    map().removeAnnotations({entry.second.marker});
    return true;
  });
  if (followed_ && std::ranges::find(ids, *followed_) == ids.end()) follow({});
}

void BoardMap::follow(std::optional<std::int64_t> vehicleId) {
  if (std::exchange(followed_, vehicleId) == vehicleId) return;
  map().setGlidingSubject(vehicleId ? subjectOf(*vehicleId) : "");
  lookAtFollowed(true);
  changed.emit();
}

void BoardMap::lookAtFollowed(bool closer) {
  const auto place = followed_ ? places_.find(*followed_) : places_.end();
  if (place == places_.end()) return;
  const Coordinate at = place->second.marker->coordinate();
  if (closer)
    map().setRegion(at, followedSpan, followedSpan, true);
  else
    map().setCenterCoordinate(at, true);
}

void BoardMap::showAll() {
  follow({});
  map().showAnnotations(map().annotations(), true);
}

const Live* BoardMap::selected() const {
  const auto* const marker = dynamic_cast<const Marker*>(panel_.map.selectedAnnotation().get());
  return marker ? &marker->live() : nullptr;
}

std::shared_ptr<MapAnnotationView> BoardMap::mapViewViewForAnnotation(
    MapView&, const std::shared_ptr<MapAnnotation>& annotation) {
  const auto* const marker = dynamic_cast<const Marker*>(annotation.get());
  if (!marker) return nullptr;
  auto view = map().dequeueReusableAnnotationViewWithIdentifier(markerIdentifier);
  if (!view) view = std::make_shared<MapAnnotationView>(markerIdentifier);
  const Live& live = marker->live();
  view->setAnnotation(annotation);
  view->setCanShowCallout(true);
  view->setImage(markerImage(live));
  view->setCourse(courseOf(live));
  view->setRingColor(DetailPageViewController::colorFromHexString(live.vehicle().mapLineColor.view()));
  return view;
}

std::shared_ptr<MapPolylineRenderer> BoardMap::mapViewRendererForOverlay(
    MapView&, const std::shared_ptr<MapPolyline>& overlay) {
  const auto colour = colours_.find(overlay.get());
  if (colour == colours_.end()) return nullptr;
  auto renderer = std::make_shared<MapPolylineRenderer>(overlay);
  renderer->setStrokeColor(colour->second);
  renderer->setLineWidth(trailWidth);
  return renderer;
}

}  // namespace fleetor
