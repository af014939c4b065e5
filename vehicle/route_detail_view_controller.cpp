#include "vehicle/route_detail_view_controller.h"

#include "day/day_stage.h"
#include "service/api.h"
#include "shell/base/loading_cell.h"
#include "vehicle/day_views.h"
#include "vehicle/notifications.h"
#include "vehicle/opened_trip.h"
#include "vehicle/vehicle_route_table_view_cell.h"

namespace fleetor {

namespace {
constexpr const char* routeCell = "RouteCell";
constexpr double routeRowHeight = 265.0;
constexpr double routeLoadingRowHeight = 60.0;

/// Whether the map can be asked for it: a stop is a marker there.
bool isOnMap(const DayStage& stage) {
  return stage.kind == DayStage::Kind::driving && stage.begin;
}

const char* imageOf(DayStage::Kind kind) {
  switch (kind) {
    case DayStage::Kind::driving:
      return "RowDriving";
    case DayStage::Kind::parking:
      return "parking";
    case DayStage::Kind::unknown:
      return "";
  }
  return "";
}
}  // namespace

RouteDetailViewController::RouteDetailViewController(Environment& environment)
    : DetailPageViewController(environment),
      itemsTableView_(environment),
      bar_(environment, *this, localized("No trips on {day}")),
      export_(environment, *this, [this] {
        return ExportableDay{vehicle(), bar_.shownDay() ? *bar_.shownDay() : date().value_or(""), nullptr,
                             bar_.shownDay() ? std::optional(items_) : std::nullopt};
      }) {
  outlet("itemsTableView", itemsTableView_);
  outlet("dayRibbon", dayRibbon_);
  outlet("dayTotals", dayTotals_);
  dayRibbon_.setAccessibleName(localized("Timeline of the day"));
  momentChosen_ = dayRibbon_.momentChosen.connect([this](double) { showRowOfMoment(); });
  itemsTableView_.registerMaker(routeCell, [](const std::string& identifier) {
    return std::make_shared<VehicleRouteTableViewCell>(identifier);
  });
  registerLoadingCell(itemsTableView_, localized("Loading"));
  itemsTableView_.setDataSource(this);
  itemsTableView_.setDelegate(this);
}

void RouteDetailViewController::setDayChoice(const std::shared_ptr<DayChoice>& days) {
  stopOpened_ = days->stopOpened.connect([this](const std::string& day, float seconds) {
    wanted_ = Moment{day, seconds};
    if (bar_.shownDay() == day)
      showWantedCard();
    else
      bar_.open(day);
  });
  days_ = days;
  bar_.setChoice(days);
}

void RouteDetailViewController::showWantedCard() {
  if (!wanted_ || wanted_->day != date()) return;
  const float seconds = std::exchange(wanted_, std::nullopt)->seconds;
  for (int row = 0; row < numberOfItems(); ++row) {
    const auto stage = DayStage::fromItem(items_.route->at(static_cast<std::size_t>(row)), *date());
    if (stage.kind == DayStage::Kind::parking && stage.begin && *stage.begin <= seconds &&
        seconds <= *stage.end)
      return itemsTableView_.scrollToRowAtIndexPath({0, row});
  }
  showErrorToast(localized("The trips have no stop at this time"));
}

void RouteDetailViewController::viewDidLoad() {
  DetailPageViewController::viewDidLoad();
  day_.setDate(bar_.chosenDay());
  items_ = {};
  itemsTableView_.reloadData();
  addObserver(UIApplicationDidEnterBackgroundNotification,
              [this](const Notification&) { didEnterBackground(); });
  addObserver(UIApplicationWillEnterForegroundNotification,
              [this](const Notification&) { wilEnterForeground(); });
}

void RouteDetailViewController::viewDidAppear(bool animated) {
  DetailPageViewController::viewDidAppear(animated);
  addObserver(kFleetorNotificationDate,
              [this](const Notification& notification) { receivedNotification(notification); });
  bar_.appeared();
}

void RouteDetailViewController::viewDidDisappear(bool animated) {
  DetailPageViewController::viewDidDisappear(animated);
  removeFromNotificationCenter();
  bar_.disappeared();
}

// The pager may call this before the page is notified of the return to the foreground.
void RouteDetailViewController::firstSelected() {
  DetailPageViewController::firstSelected();
  day_.putBack();
  load();
}

void RouteDetailViewController::receivedNotification(const Notification& notification) {
  if (!day_.receive(notification.object)) return;
  if (wanted_ && wanted_->day != date()) wanted_.reset();
  load();
}

void RouteDetailViewController::clearView() {
  day_.putAside();
  setLoading(false);
  items_ = {};
  showDay();
  itemsTableView_.reloadData();
  bar_.cleared();
}

void RouteDetailViewController::load() {
  items_ = RouteResponse::initForLoading();
  bar_.removed();
  dayTotals_.setFacts({});
  // Blank, so that nothing moves until the answer comes.
  if (!timeline_.isEmpty()) dayRibbon_.show({{0, DayTimeline::length}}, {}, {}, {});
  loadItems(date());
  itemsTableView_.reloadData();
}

void RouteDetailViewController::loadItems(const std::optional<std::string>& day) {
  if (!day || (isLoading() && day == date())) return;
  setLoading(true);
  const auto progress = bar_.loading(*day);
  const auto self = sharedFrom(this);
  API::getWithPath("/route", {{"vehid", vehicle().vehicleId}, {"date", *day}}, modelClass<RouteResponse>, {},
                   progress, [self, day](auto response, auto kind, long, auto&) {
                     auto outcome =
                         kind == ResponseKindSuccess ? DayBar::Outcome::dropped : DayBar::Outcome::failed;
                     if (kind == ResponseKindSuccess && self->date() == day) {
                       // A quick trip to the background can make two answers of one day.
                       self->items_ = RouteResponse::initForLoading();
                       self->items_.nextResult(*response);
                       outcome = self->numberOfItems() ? DayBar::Outcome::shown : DayBar::Outcome::empty;
                     } else {
                       self->items_.onError();
                     }
                     self->setLoading(false);
                     self->showDay();
                     self->itemsTableView_.reloadData();
                     if (outcome == DayBar::Outcome::failed && self->wanted_ && self->wanted_->day == *day)
                       self->wanted_.reset();
                     else if (outcome != DayBar::Outcome::dropped)
                       self->showWantedCard();
                     self->bar_.loaded(*day, outcome);
                   });
}

void RouteDetailViewController::showDay() {
  const Localizer words = [this](const std::string& key) { return localized(key); };
  const bool isShown = items_.route && date();
  timeline_ = isShown ? DayTimeline::fromRows(*items_.route, *date()) : DayTimeline();
  showTimeline(dayRibbon_, timeline_, colorFromHexString(vehicle().mapLineColor), words,
               [this](const DayStretch& stretch) { return items_.route->at(stretch.last).to.str(); });
  dayTotals_.setFacts(
      factsOf(isShown ? DayTotals::fromAnswer(items_, *date()) : DayTotals(), environment().device));
}

void RouteDetailViewController::showRowOfMoment() {
  const auto index = dayRibbon_.chosenStretch();
  if (!index || *index >= timeline_.stretches.size()) return;
  const auto row = static_cast<int>(timeline_.stretches[*index].first);
  if (numberOfItems() > 0) itemsTableView_.scrollToRowAtIndexPath({0, row});
}

int RouteDetailViewController::tableViewNumberOfRowsInSection(TableView&, int) {
  return numberOfItems() + (items_.total == numberOfItems() ? 0 : 1);
}

std::shared_ptr<TableViewCell> RouteDetailViewController::tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                                         IndexPath path) {
  if (path.row >= numberOfItems()) return dequeueLoadingCell(tableView);
  auto cell = std::static_pointer_cast<VehicleRouteTableViewCell>(
      tableView.dequeueReusableCellWithIdentifier(routeCell));
  const RouteItem& item = items_.route->at(static_cast<std::size_t>(path.row));
  const DayStage stage = DayStage::fromItem(item, date().value_or(""));
  cell->kindImageView().setImage(imageOf(stage.kind));
  cell->clockLabel().setText(stage.clock);
  cell->setSelectable(isOnMap(stage));
  cell->statusLabel().setText(item.status.str());
  cell->timeLabel().setText(item.timeFrom.str());
  cell->durationLabel().setText(item.duration.str());
  cell->distanceLabel().setText(item.distance.str() + " km");
  cell->fromLabel().setText(item.from.str());
  cell->toLabel().setText(item.to.str());
  return cell;
}

void RouteDetailViewController::tableViewDidSelectRowAtIndexPath(TableView&, IndexPath path) {
  const RouteItem& item = items_.route->at(static_cast<std::size_t>(path.row));
  if (!days_ || !date()) return;
  days_->tripOpened.emit({*date(), DayStage::fromItem(item, *date()), item.from.str(), item.to.str(),
                          item.distance.str() + " km", item.duration.str()});
}

double RouteDetailViewController::tableViewHeightForRowAtIndexPath(TableView&, IndexPath path) {
  return path.row < numberOfItems() ? routeRowHeight : routeLoadingRowHeight;
}

}  // namespace fleetor
