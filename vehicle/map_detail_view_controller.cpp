#include "vehicle/map_detail_view_controller.h"

#include <utility>

#include "service/api.h"
#include "vehicle/day_track.h"
#include "vehicle/day_views.h"
#include "vehicle/notifications.h"
#include "vehicle/position_sheet.h"

namespace fleetor {

namespace {
constexpr double vehicleMarkerHeight = 1000.0;
constexpr double tripEndHeight = 500.0;
constexpr ScreenPoint flagOffset{0, -20};  // the foot is in the middle of the lower edge
}  // namespace

MapDetailViewController::MapDetailViewController(Environment& environment)
    : TrackPageViewController(environment),
      bar_(environment, *this, localized("No track on {day}")),
      export_(environment, *this, [this] { return exportableDay(); }) {
  outlet("dayRibbon", dayRibbon_);
  outlet("stopCardButton", stopCardButton_);
  dayRibbon_.setAccessibleName(localized("Timeline of the day"));
  stopCardButton_.setAccessibleName(localized("Show in the trips"));
  stopCardButton_.setEnabled(false);
  outlet("replay", replay_);
  outlet("replayButton", replayButton_);
  outlet("chartsButton", charts_.button());
  outlet("distanceChart", charts_.distance());
  outlet("speedChart", charts_.speed());
  chosen_ = dayRibbon_.momentChosen.connect([this](double seconds) {
    replay_.setOpen(true);
    replay_.moveTo(seconds);
    if (replay_.state().open) dayRibbon_.setMoment(replay_.moment());
  });
  replays_ = replay_.changed.connect([this] {
    dayRibbon_.setMoment(replay_.state().open ? std::optional(replay_.moment()) : std::nullopt);
    shareMomentButton_.setEnabled(replay_.place().has_value());
  });
  outlet("shareMomentButton", shareMomentButton_);
  shareMomentButton_.setImage("RowShare");
  shareMomentButton_.setAccessibleName(localized("Share position"));
  shareMomentButton_.setAction([this](Component&) { shareMoment(); });
  replayButton_.setImage("BtnReplay");
  replayButton_.setAccessibleName(localized("Replay the day"));
  replayButton_.setAction([this](Component&) { replay_.setOpen(true); });
}

void MapDetailViewController::setDayChoice(const std::shared_ptr<DayChoice>& days) {
  tripOpened_ = days->tripOpened.connect([this](const OpenedTrip& trip) {
    replay_.setOpen(false);
    trip_.open(trip);
    if (bar_.shownDay() == trip.day)
      drawTrip();
    else
      bar_.open(trip.day);
  });
  trip_.setBack([days](Component&) { days->tripLeft.emit(); });
  stopCardButton_.setAction(
      [this, days](Component&) { days->stopOpened.emit(*bar_.shownDay(), *timeOfOpenStop()); });
  mapChanged_ = mapView().changed.connect([this] { updateStopCardButton(); });
  bar_.setChoice(days);
}

std::optional<Coordinate> MapDetailViewController::placeOf(const MapAnnotation& annotation) const {
  const auto* const entry = dynamic_cast<const MapEntryAnnotation*>(&annotation);
  if (entry) return entry->place();
  return trip_.markOf(annotation) ? std::optional(annotation.coordinate()) : std::nullopt;
}

std::optional<float> MapDetailViewController::timeOfOpenStop() {
  const auto* stop = dynamic_cast<const MapEntryAnnotation*>(mapView().selectedAnnotation().get());
  if (!stop || !stop->isParking() || !dayPoints_ || stop->point() >= dayPoints_->seconds.size())
    return std::nullopt;
  return dayPoints_->seconds[stop->point()];
}

void MapDetailViewController::updateStopCardButton() {
  stopCardButton_.setEnabled(timeOfOpenStop() && bar_.shownDay());
}

// A trip is over as soon as another day shows, unless its own day is still to come.
void MapDetailViewController::drawTrip() {
  if (!trip_.trip() || !dayPoints_) return;
  if (trip_.trip()->day == bar_.shownDay())
    trip_.draw(*dayPoints_, polylineRenderer());
  else if (trip_.trip()->day != date())
    trip_.close();
}

void MapDetailViewController::viewDidLoad() {
  TrackPageViewController::viewDidLoad();
  day_.setDate(bar_.chosenDay());
  loadingIndicator().stopAnimating();
}

void MapDetailViewController::viewDidAppear(bool animated) {
  TrackPageViewController::viewDidAppear(animated);
  addObserver(kFleetorNotificationDate,
              [this](const Notification& notification) { receivedNotification(notification); });
  bar_.appeared();
  addObserver(UIApplicationDidEnterBackgroundNotification, [this](const Notification&) { replay_.pause(); });
}

void MapDetailViewController::viewDidDisappear(bool animated) {
  TrackPageViewController::viewDidDisappear(animated);
  bar_.disappeared();
  replay_.pause();
}

void MapDetailViewController::continueFrom(const DetailPageViewController& before) {
  TrackPageViewController::continueFrom(before);
  if (const auto& trip = dynamic_cast<const MapDetailViewController&>(before).trip_.trip()) trip_.open(*trip);
}

// The pager may call this before the page is notified of the return to the foreground.
void MapDetailViewController::firstSelected() {
  TrackPageViewController::firstSelected();
  day_.putBack();
  loadItems(date());
}

void MapDetailViewController::receivedNotification(const Notification& notification) {
  if (day_.receive(notification.object)) loadItems(date());
}

void MapDetailViewController::clearView() {
  day_.putAside();
  trip_.erase();
  TrackPageViewController::clearView();
  track_ = nullptr;
  if (dayPoints_) setDayPoints(nullptr);
  endLoading();
  bar_.cleared();
}

void MapDetailViewController::receivedPosition(Coordinate position) {
  TrackPageViewController::receivedPosition(position);
  updateCover();
  bar_.refresh();
}

void MapDetailViewController::loadItems(const std::optional<std::string>& day) {
  if (!day || (isLoading() && day == date())) return;
  setLoading(true);
  loadingIndicator().startAnimating();
  updateCover();
  const auto progress = bar_.loading(*day);
  const auto self = sharedFrom(this);
  API::getWithPath(
      "/map", {{"vehid", vehicle().vehicleId}, {"date", *day}}, modelClass<MapResponse>, {}, progress,
      [self, day](auto response, auto kind, long, auto&) {
        if (kind != ResponseKindSuccess) {
          self->endLoading();
          return self->loaded(*day, DayBar::Outcome::failed);
        }
        // The answer, some hundred thousand texts, is also destroyed there; the page never is.
        self->runInBackground(
            [page = self, day, response = std::move(response), camera = self->mapView().camera()]() mutable {
              const auto track = std::make_shared<const DayTrack>(DayTrack::fromAnswer(*response, camera));
              auto& queues = page->environment().queues;
              queues.main([page, day, track] {
                auto outcome = DayBar::Outcome::dropped;
                if (page->date() == day)
                  outcome = page->show(track) ? DayBar::Outcome::shown : DayBar::Outcome::empty;
                page->endLoading();
                page->loaded(*day, outcome);
              });
              const auto points = std::make_shared<const DayPoints>(DayPoints::fromAnswer(*response, *day));
              response = nullptr;
              queues.main([page = std::move(page), track, points] {
                if (page->track_ == track) page->setDayPoints(points);
              });
            });
      });
}

// The trip of a day that did not come is not on the map.
void MapDetailViewController::loaded(const std::string& day, DayBar::Outcome outcome) {
  if (trip_.trip() && trip_.trip()->day == day && bar_.shownDay() != day && outcome != DayBar::Outcome::shown)
    trip_.close();
  bar_.loaded(day, outcome);
}

bool MapDetailViewController::show(std::shared_ptr<const DayTrack> track) {
  const bool isEmpty = track->total < 1 || track->markers.empty();
  wasDrawn_ = wasDrawn_ || !isEmpty;
  if (track->total >= 2) drawRoute(track->polyline);
  if (track->total < 1) return false;
  mapView().replaceAnnotations(track->markers);
  mapView().showAnnotations(mapView().annotations(), false);
  if (isEmpty) bar_.removed();
  track_ = std::move(track);
  if (dayPoints_) setDayPoints(nullptr);  // those of an earlier track
  return !isEmpty;
}

void MapDetailViewController::setDayPoints(std::shared_ptr<const DayPoints> points) {
  dayPoints_ = std::move(points);
  showTimeline(
      dayRibbon_, dayPoints_ ? DayTimeline::fromPoints(*dayPoints_) : DayTimeline(),
      colorFromHexString(vehicle().mapLineColor), [this](const std::string& key) { return localized(key); },
      [day = dayPoints_](const DayStretch& stretch) {
        return day->addressTexts.at(day->addresses.at(stretch.last));
      });
  drawGaps();
  drawTrip();
  updateStopCardButton();
  replay_.setDay(dayPoints_, polyline(), vehicle().icon.str());
  dayChanged.emit();
}

// The line and the points are of the same answer, unless it was too short for a line.
void MapDetailViewController::drawGaps() {
  if (!dayPoints_ || !track_ || !polyline() || polyline() != track_->polyline) return;
  auto gaps = dayPoints_->gaps();
  if (gaps.empty()) return;
  polylineRenderer()->setGaps(std::make_shared<const std::vector<std::uint32_t>>(std::move(gaps)));
  mapView().redrawOverlays();
}

void MapDetailViewController::drawRoute(std::shared_ptr<MapPolyline> polyline) {
  trip_.erase();
  removePolyline();
  addPolyline(std::move(polyline));
}

void MapDetailViewController::shareMoment() {
  replay_.pause();  // and shows the texts of this moment
  const auto place = replay_.place();
  if (!place) return;
  const Player::State& now = replay_.state();
  std::string what = (bar_.shownDay() ? *bar_.shownDay() + ' ' : "") + now.time;
  for (const std::string& more : {now.address, now.note})
    if (!more.empty()) what += '\n' + more;
  showPositionSheet(environment(), {*place, vehicle().name.str(), what});
}

ExportableDay MapDetailViewController::exportableDay() const {
  if (bar_.shownDay()) return {vehicle(), *bar_.shownDay(), dayPoints_, std::nullopt};
  return {vehicle(), date().value_or(""), nullptr, std::nullopt};
}

void MapDetailViewController::endLoading() {
  setLoading(false);
  loadingIndicator().stopAnimating();
  updateCover();
}

void MapDetailViewController::updateCover() {
  const bool isLoaded = wasSelected() && !isLoading();
  mapView().setCovered(!wasDrawn_ && !(isLoaded && mapView().isPlaced()));
}

std::shared_ptr<MapPolylineRenderer> MapDetailViewController::mapViewRendererForOverlay(
    MapView& mapView, const std::shared_ptr<MapPolyline>& overlay) {
  const auto ofTrip = trip_.rendererFor(overlay);
  return ofTrip ? ofTrip : TrackPageViewController::mapViewRendererForOverlay(mapView, overlay);
}

std::shared_ptr<MapAnnotationView> MapDetailViewController::mapViewViewForAnnotation(
    MapView&, const std::shared_ptr<MapAnnotation>& annotation) {
  if (const auto end = trip_.markOf(*annotation)) {
    auto view = vehicleAnnotationView(annotation, end->image, end->kind);
    view->setZPosition(tripEndHeight);
    return view;
  }
  const auto* entry = dynamic_cast<const MapEntryAnnotation*>(annotation.get());
  if (!entry) return nullptr;
  if (entry->lp() == 0) {
    auto flag = vehicleAnnotationView(annotation, "flag", localized("Start"));
    flag->setCenterOffset(flagOffset);
    return flag;
  }
  if (entry->isParking()) return vehicleAnnotationView(annotation, "parking", localized("Parking stop"));
  return vehicleAnnotationView(annotation, vehicle().icon.str(), localized("Vehicle"));
}

void MapDetailViewController::mapViewDidAddAnnotationViews(MapView&, const MapAnnotationViews& views) {
  for (const auto& view : views) {
    const auto* entry = dynamic_cast<const MapEntryAnnotation*>(view->annotation().get());
    if (entry && entry->lp() != 0 && !entry->isParking()) view->setZPosition(vehicleMarkerHeight);
  }
}

}  // namespace fleetor
