#include "vehicle/info_detail_view_controller.h"

#include <any>
#include <iterator>
#include <string_view>

#include "shell/base/info_cell.h"
#include "shell/base/loading_cell.h"
#include "vehicle/notifications.h"
#include "vehicle/position_sheet.h"
#include "vehicle/vehicle_table_view_cell.h"

namespace fleetor {

namespace {

constexpr const char* addressCaption = "Address";

/// What comes below the vehicle's own row.
constexpr InfoRow<Live> readingRows[] = {
    {[](const Live& live) { return live.dateTime().str(); }, "Update time"},
    {[](const Live& live) { return live.speed.str() + "km/h"; }, "Speed"},
    {[](const Live& live) { return live.rpm.str(); }, "RPM"},
    {[](const Live& live) { return live.direction.str() + "°"; }, "Direction"},
    {[](const Live& live) { return live.street.str(); }, addressCaption},
    {[](const Live& live) { return live.powerSupply.str() + live.powerSupplyType.str(); }, "Power supply"},
    {[](const Live& live) { return live.temp.str() + "°C"; }, "Temperature"},
    {[](const Live& live) { return live.fuel.str() + live.fuelType.str(); }, "Fuel"},
    {[](const Live& live) { return live.odometer.str(); }, "Odometer"},
};

}  // namespace

InfoDetailViewController::InfoDetailViewController(Environment& environment)
    : DetailPageViewController(environment), itemsTableView_(environment) {
  outlet("itemsTableView", itemsTableView_);
  itemsTableView_.registerMaker("VehicleCell", [](const std::string& identifier) {
    auto cell = std::make_shared<VehicleTableViewCell>(identifier);
    cell->setSelectable(false);
    return cell;
  });
  registerInfoCell(itemsTableView_);
  registerLoadingCell(itemsTableView_, localized("Loading"));
  itemsTableView_.setDataSource(this);
  itemsTableView_.setDelegate(this);
}

void InfoDetailViewController::viewDidLoad() {
  DetailPageViewController::viewDidLoad();
  itemsTableView_.setTableFooterView(true);
}

void InfoDetailViewController::viewDidAppear(bool animated) {
  DetailPageViewController::viewDidAppear(animated);
  addObserver(kFleetorNotificationLive,
              [this](const Notification& notification) { receivedNotification(notification); });
}

void InfoDetailViewController::viewDidDisappear(bool animated) {
  DetailPageViewController::viewDidDisappear(animated);
  removeFromNotificationCenter();
}

void InfoDetailViewController::receivedNotification(const Notification& notification) {
  const auto* live = std::any_cast<std::shared_ptr<const Live>>(&notification.object);
  if (!live || (*live)->vehicle().vehicleId != vehicle().vehicleId) return;
  live_ = *live;
  itemsTableView_.reloadData();
}

int InfoDetailViewController::tableViewNumberOfRowsInSection(TableView&, int) {
  return live_ ? 1 + static_cast<int>(std::size(readingRows)) : 1;
}

std::shared_ptr<TableViewCell> InfoDetailViewController::tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                                        IndexPath path) {
  if (!live_) return dequeueLoadingCell(tableView);
  if (path.row == 0) {
    auto cell = std::static_pointer_cast<VehicleTableViewCell>(
        tableView.dequeueReusableCellWithIdentifier("VehicleCell"));
    cell->show(live_->vehicle(), true);
    return cell;
  }
  const auto& [value, caption, contact] = readingRows[path.row - 1];
  auto cell = dequeueInfoCell(tableView, value(*live_), localized(caption), contact);
  if (std::string_view(caption) == addressCaption && isPosition(live_->coordinate()))
    cell->link("RowShare", localized("Share position"), [this] { sharePosition(); });
  return cell;
}

void InfoDetailViewController::sharePosition() {
  showPositionSheet(environment(), {live_->coordinate(), live_->vehicle().name.str(),
                                    live_->street.str() + '\n' + live_->dateTime().str()});
}

double InfoDetailViewController::tableViewHeightForRowAtIndexPath(TableView&, IndexPath path) {
  if (!live_) return 60.0;
  return path.row == 0 ? 68.0 : 42.0;
}

}  // namespace fleetor
