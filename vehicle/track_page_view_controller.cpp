#include "vehicle/track_page_view_controller.h"

#include <string>
#include <utility>

#include "vehicle/position_sheet.h"

namespace fleetor {

namespace {
constexpr const char* vehicleAnnotationIdentifier = "VehicleAnnotation";
constexpr double trackLineWidth = 2.0;
}  // namespace

TrackPageViewController::TrackPageViewController(Environment& environment)
    : DetailPageViewController(environment) {
  outlet("mapView", mapView_);
  outlet("loadingIndicator", loadingIndicator_);
  outlet("noteLabel", noteLabel_);
  mapView_.setAccessibleName(localized("Map"));
  mapView_.setCovered(true);
  loadingIndicator_.setAccessibleName(localized("Loading"));
  const auto equip = [this](const char* name, Button& button, const char* image, std::string accessibleName,
                            Action action) {
    outlet(name, button);
    button.setImage(image);
    button.setAccessibleName(std::move(accessibleName));
    button.setAction(std::move(action));
  };
  equip("changeTypeButton", changeTypeButton_, "BtnMapType", localized("Satellite map"),
        [this](Component& sender) { changeMapType(sender); });
  equip("wholeTrackButton", wholeTrackButton_, "BtnWholeTrack", localized("Show the whole track"),
        [this](Component&) { mapView_.showAll(true); });
  equip("sharePositionButton", sharePositionButton_, "RowShare", localized("Share position"),
        [this](Component&) { sharePosition(); });
  onMap_ = mapView_.changed.connect([this] {
    const auto& selected = mapView_.selectedAnnotation();
    sharePositionButton_.setEnabled(selected && placeOf(*selected));
  });
  equip("zoomInButton", zoomInButton_, "BtnZoomIn", localized("Zoom in"),
        [this](Component&) { mapView_.zoomBy(1); });
  equip("zoomOutButton", zoomOutButton_, "BtnZoomOut", localized("Zoom out"),
        [this](Component&) { mapView_.zoomBy(-1); });
}

void TrackPageViewController::viewDidLoad() {
  DetailPageViewController::viewDidLoad();
  addObserver(UIApplicationDidEnterBackgroundNotification,
              [this](const Notification&) { didEnterBackground(); });
  addObserver(UIApplicationWillEnterForegroundNotification,
              [this](const Notification&) { wilEnterForeground(); });
}

void TrackPageViewController::viewDidAppear(bool animated) {
  DetailPageViewController::viewDidAppear(animated);
  mapView_.setDelegate(this);
}

void TrackPageViewController::viewDidDisappear(bool animated) {
  DetailPageViewController::viewDidDisappear(animated);
  mapView_.setDelegate(nullptr);
  removeFromNotificationCenter();
}

void TrackPageViewController::receivedPosition(Coordinate position) {
  if (mapView_.isCovered()) mapView_.setRegion(position, vehicleSpan, vehicleSpan, false);
}

void TrackPageViewController::continueFrom(const DetailPageViewController& before) {
  if (dynamic_cast<const TrackPageViewController&>(before).changeTypeButton_.selected())
    changeMapType(changeTypeButton_);
}

void TrackPageViewController::changeMapType(Component&) {
  const bool satellite = !changeTypeButton_.selected();
  changeTypeButton_.setSelected(satellite);
  changeTypeButton_.setImage(satellite ? "BtnMapTypeSelected" : "BtnMapType");
  mapView_.setMapType(satellite ? MapType::satellite : MapType::standard);
}

void TrackPageViewController::sharePosition() {
  const auto& place = *mapView_.selectedAnnotation();
  const std::string title = place.title();
  const std::string subtitle = place.subtitle();
  showPositionSheet(environment(), {*placeOf(place), vehicle().name.str(),
                                    title + (title.empty() || subtitle.empty() ? "" : "\n") + subtitle});
}

void TrackPageViewController::clearView() {
  removePolyline();
  mapView_.removeAnnotations(mapView_.annotations());
  polyline_ = nullptr;
  polylineRenderer_ = nullptr;
}

void TrackPageViewController::addPolyline(std::shared_ptr<MapPolyline> polyline) {
  polyline_ = std::move(polyline);
  polylineRenderer_ = std::make_shared<MapPolylineRenderer>(polyline_);
  polylineRenderer_->setStrokeColor(colorFromHexString(vehicle().mapLineColor));
  polylineRenderer_->setLineWidth(trackLineWidth);
  mapView_.addOverlay(polyline_);
}

std::shared_ptr<MapAnnotationView> TrackPageViewController::vehicleAnnotationView(
    const std::shared_ptr<MapAnnotation>& annotation, const std::string& image, const std::string& kind) {
  auto view = mapView_.dequeueReusableAnnotationViewWithIdentifier(vehicleAnnotationIdentifier);
  if (!view) view = std::make_shared<MapAnnotationView>(vehicleAnnotationIdentifier);
  view->setAnnotation(annotation);
  view->setEnabled(true);
  view->setCanShowCallout(true);
  view->setDraggable(false);
  view->setDragState(AnnotationViewDragState::none);
  view->setImage(image);
  view->setAccessibleName(kind);
  return view;
}

std::shared_ptr<MapPolylineRenderer> TrackPageViewController::mapViewRendererForOverlay(
    MapView&, const std::shared_ptr<MapPolyline>& overlay) {
  return overlay == polyline_ ? polylineRenderer_ : nullptr;
}

}  // namespace fleetor
