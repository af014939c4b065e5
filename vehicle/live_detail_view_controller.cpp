#include "vehicle/live_detail_view_controller.h"

#include <any>
#include <utility>
#include <vector>

#include "map/great_circle.h"
#include "vehicle/live_values.h"
#include "vehicle/notifications.h"
#include "vehicle/position_sheet.h"

namespace fleetor {

namespace {

constexpr const char* vehicleSubject = "vehicle";
constexpr double standingStill = 1.0;  ///< metres

class LiveAnnotation final : public MapAnnotation {
 public:
  explicit LiveAnnotation(std::shared_ptr<const Live> live) : live_(std::move(live)) {}
  Coordinate coordinate() const override { return live_->coordinate(); }
  std::string title() const override { return live_->title().str(); }
  std::string subtitle() const override { return live_->subtitle().str(); }
  std::string subject() const override { return vehicleSubject; }
  std::optional<Coordinate> place() const { return positionOf(*live_); }

 private:
  std::shared_ptr<const Live> live_;
};

}  // namespace

LiveDetailViewController::LiveDetailViewController(Environment& environment)
    : TrackPageViewController(environment), status_(environment) {
  outlet("followButton", followButton_);
  status_.addOutletsTo(*this);
  followButton_.setAccessibleName(localized("Follow the vehicle"));
  followButton_.setAction([this](Component&) { setFollows(!followButton_.selected()); });
  setFollows(true);
}

void LiveDetailViewController::viewDidLoad() {
  TrackPageViewController::viewDidLoad();
  items_.clear();
  imageName_ = vehicle().icon.str();
  mapView().setGlidingSubject(vehicleSubject);
  status_.setWatch(watch());
  updateCover();
}

void LiveDetailViewController::viewDidAppear(bool animated) {
  TrackPageViewController::viewDidAppear(animated);
  addObserver(kFleetorNotificationLive,
              [this](const Notification& notification) { receivedNotification(notification); });
  status_.setVisible(true);
  if (items_.empty() || !mapView().annotations().empty()) return;
  updateMapView();  // the trail of another page, for which the map has had no delegate yet
  updateCover();
}

void LiveDetailViewController::viewDidDisappear(bool animated) {
  TrackPageViewController::viewDidDisappear(animated);
  status_.setVisible(false);
}

void LiveDetailViewController::continueFrom(const DetailPageViewController& before) {
  TrackPageViewController::continueFrom(before);
  const auto& page = dynamic_cast<const LiveDetailViewController&>(before);
  items_ = page.items_;
  imageName_ = page.imageName_;
  setFollows(page.followButton_.selected());
  if (watch() && watch()->latest()) status_.received(*watch()->latest(), watch()->seen());
}

void LiveDetailViewController::setFollows(bool follows) {
  followButton_.setSelected(follows);
  followButton_.setImage(follows ? "BtnCentreSelected" : "BtnCentre");
  if (follows && !items_.empty()) mapView().setCenterCoordinate(items_.back()->coordinate(), true);
}

void LiveDetailViewController::clearView() {
  TrackPageViewController::clearView();
  items_.clear();
  status_.clear();
  setFollows(true);
  updateCover();
}

void LiveDetailViewController::updateCover() {
  const bool waiting = items_.empty();
  mapView().setCovered(waiting);
  const std::string earlier = status_.earlierText();
  noteLabel().setText(
      !waiting ? "" : localized("Waiting for the next position") + (earlier.empty() ? "" : "\n" + earlier));
  if (waiting)
    loadingIndicator().startAnimating();
  else
    loadingIndicator().stopAnimating();
}

void LiveDetailViewController::receivedNotification(const Notification& notification) {
  const auto* object = std::any_cast<std::shared_ptr<const Live>>(&notification.object);
  if (!object || (*object)->vehicle().vehicleId != vehicle().vehicleId) return;
  const Live& live = **object;
  imageName_ = markerImage(live);
  status_.received(live);
  if (!items_.empty() && !(distanceInMetres(items_.back()->coordinate(), live.coordinate()) > standingStill))
    return;
  items_.push_back(*object);
  updateMapView();
  updateCover();
}

void LiveDetailViewController::updateMapView() {
  if (items_.size() >= 2) drawRoute();
  if (items_.empty()) return;
  const auto& last = items_.back();
  mapView().replaceAnnotations({std::make_shared<LiveAnnotation>(last)});
  if (items_.size() == 1 || mapView().isCovered())
    mapView().setRegion(last->coordinate(), vehicleSpan, vehicleSpan, true);
  else if (followButton_.selected())
    mapView().setCenterCoordinate(last->coordinate(), true);
}

// A new line through all positions each time. The one before has all of them but the last, and hands them
// over, so that a long trail costs no more than a short one.
void LiveDetailViewController::drawRoute() {
  removePolyline();
  if (polyline() && polyline()->coordinates().size() + 1 == items_.size())
    return addPolyline(MapPolyline::polylineByAppendingCoordinate(*polyline(), items_.back()->coordinate()));
  std::vector<Coordinate> coordinates;
  coordinates.reserve(items_.size());
  for (const auto& live : items_)
    coordinates.push_back(live->coordinate());
  addPolyline(MapPolyline::polylineWithCoordinates(coordinates));
}

std::optional<Coordinate> LiveDetailViewController::placeOf(const MapAnnotation& annotation) const {
  const auto* const vehicle = dynamic_cast<const LiveAnnotation*>(&annotation);
  return vehicle ? vehicle->place() : std::nullopt;
}

std::shared_ptr<MapAnnotationView> LiveDetailViewController::mapViewViewForAnnotation(
    MapView&, const std::shared_ptr<MapAnnotation>& annotation) {
  if (!dynamic_cast<const LiveAnnotation*>(annotation.get())) return nullptr;
  return vehicleAnnotationView(annotation, imageName_, localized("Vehicle"));
}

}  // namespace fleetor
