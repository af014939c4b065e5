#include "vehicle/about_detail_view_controller.h"

#include <iterator>
#include <utility>

#include "service/api.h"
#include "shell/base/info_cell.h"
#include "shell/base/loading_cell.h"
#include "vehicle/notifications.h"
#include "vehicle/service_due.h"

namespace fleetor {

namespace {

constexpr InfoRow<Info> aboutRows[] = {
    {[](const Info& info) { return info.service.tech.str(); }, "Technical service"},
    {[](const Info& info) { return info.service.oil.str(); }, "Oil change"},
    {[](const Info& info) { return info.service.odo.str(); }, "Distance service"},
    {[](const Info& info) { return info.vehicle.driver.str(); }, "Driver"},
    {[](const Info& info) { return info.vehicle.driverGsm.str(); }, "Driver phone", Contact::phone},
    {[](const Info& info) { return info.vehicle.active.str(); }, "Localizer expiration date"},
};
static_assert(std::size(aboutRows) == InfoResponse::rows);

}  // namespace

AboutDetailViewController::AboutDetailViewController(Environment& environment,
                                                     std::shared_ptr<KnownInfo> known)
    : DetailPageViewController(environment), known_(std::move(known)), itemsTableView_(environment) {
  outlet("itemsTableView", itemsTableView_);
  outlet("overdueLabel", overdueLabel_);
  outlet("dueLabel", dueLabel_);
  registerInfoCell(itemsTableView_);
  registerLoadingCell(itemsTableView_, localized("Loading"));
  itemsTableView_.setDataSource(this);
  itemsTableView_.setDelegate(this);
}

void AboutDetailViewController::viewDidLoad() {
  DetailPageViewController::viewDidLoad();
  itemsTableView_.setTableFooterView(true);
  response_ = {};
}

void AboutDetailViewController::viewDidAppear(bool animated) {
  DetailPageViewController::viewDidAppear(animated);
  addObserver(kFleetorNotificationLive,
              [this](const Notification& notification) { receivedNotification(notification); });
}

void AboutDetailViewController::viewDidDisappear(bool animated) {
  DetailPageViewController::viewDidDisappear(animated);
  removeFromNotificationCenter();
}

void AboutDetailViewController::firstSelected() {
  DetailPageViewController::firstSelected();
  if (response_.info) return;
  response_ = InfoResponse::initForLoading();
  itemsTableView_.reloadData();
}

void AboutDetailViewController::receivedNotification(const Notification&) {
  if (!response_.info) loadItems();
}

void AboutDetailViewController::receivedRecord(const std::shared_ptr<const Live>& live) {
  live_ = live;
  stateWhatIsDue();
}

void AboutDetailViewController::stateWhatIsDue() {
  const Info* const info = response_.info ? &*response_.info : known_->of(vehicle().vehicleId);
  if (!info || !live_) return;
  const auto due = serviceDue(*info, *live_, [this](const std::string& key) { return localized(key); });
  const auto joined = [](const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
      text += (text.empty() ? "" : "\n") + line;
    return text;
  };
  if (response_.info) {
    overdueLabel_.setText(joined(due.overdue));
    dueLabel_.setText(joined(due.soon));
  }
  marked.emit(!due.isUrgent ? "" : !due.overdue.empty() ? due.overdue.front() : due.soon.front());
}

void AboutDetailViewController::loadItems() {
  if (isLoading()) return;
  setLoading(true);
  const auto self = sharedFrom(this);
  API::getWithPath("/info", {{"vehid", vehicle().vehicleId}}, modelClass<InfoResponse>, {},
                   [self](auto response, auto kind, long, auto&) {
                     if (kind == ResponseKindSuccess) {
                       self->response_.nextResult(*response);
                       if (!self->session_.hasEnded())
                         self->known_->keep(self->vehicle().vehicleId, *self->response_.info);
                     } else {
                       self->response_.onError();
                     }
                     self->setLoading(false);
                     self->stateWhatIsDue();
                     self->itemsTableView_.reloadData();
                   });
}

int AboutDetailViewController::tableViewNumberOfRowsInSection(TableView&, int) {
  return static_cast<int>(response_.total);
}

std::shared_ptr<TableViewCell> AboutDetailViewController::tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                                         IndexPath path) {
  if (!response_.info) return dequeueLoadingCell(tableView);
  const auto& [value, caption, contact] = aboutRows[path.row];
  return dequeueInfoCell(tableView, value(*response_.info), localized(caption), contact);
}

double AboutDetailViewController::tableViewHeightForRowAtIndexPath(TableView&, IndexPath) {
  return response_.info ? 50.0 : 60.0;
}

}  // namespace fleetor
