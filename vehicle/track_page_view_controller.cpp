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
    : DetailPageViewController(environment), panel_(environment, *this) {
  outlet("sharePositionButton", sharePositionButton_);
  sharePositionButton_.setImage("RowShare");
  sharePositionButton_.setAccessibleName(localized("Share position"));
  sharePositionButton_.setAction([this](Component&) { sharePosition(); });
  onMap_ = mapView().changed.connect([this] {
    const auto& selected = mapView().selectedAnnotation();
    sharePositionButton_.setEnabled(selected && placeOf(*selected));
  });
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
  mapView().setDelegate(this);
}

void TrackPageViewController::viewDidDisappear(bool animated) {
  DetailPageViewController::viewDidDisappear(animated);
  mapView().setDelegate(nullptr);
  removeFromNotificationCenter();
}

void TrackPageViewController::receivedPosition(Coordinate position) {
  if (mapView().isCovered()) mapView().setRegion(position, vehicleSpan, vehicleSpan, false);
}

void TrackPageViewController::continueFrom(const DetailPageViewController& before) {
  if (dynamic_cast<const TrackPageViewController&>(before).panel_.changeTypeButton.selected())
    panel_.changeMapType();
}

void TrackPageViewController::sharePosition() {
  const auto& place = *mapView().selectedAnnotation();
  const std::string title = place.title();
  const std::string subtitle = place.subtitle();
  showPositionSheet(environment(), {*placeOf(place), vehicle().name.str(),
                                    title + (title.empty() || subtitle.empty() ? "" : "\n") + subtitle});
}

void TrackPageViewController::clearView() {
  removePolyline();
  mapView().removeAnnotations(mapView().annotations());
  polyline_ = nullptr;
  polylineRenderer_ = nullptr;
}

void TrackPageViewController::addPolyline(std::shared_ptr<MapPolyline> polyline) {
  polyline_ = std::move(polyline);
  polylineRenderer_ = std::make_shared<MapPolylineRenderer>(polyline_);
  polylineRenderer_->setStrokeColor(colorFromHexString(vehicle().mapLineColor));
  polylineRenderer_->setLineWidth(trackLineWidth);
  mapView().addOverlay(polyline_);
}

std::shared_ptr<MapAnnotationView> TrackPageViewController::vehicleAnnotationView(
    const std::shared_ptr<MapAnnotation>& annotation, const std::string& image, const std::string& kind) {
  auto view = mapView().dequeueReusableAnnotationViewWithIdentifier(vehicleAnnotationIdentifier);
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
