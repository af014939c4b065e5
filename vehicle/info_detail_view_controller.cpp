#include "vehicle/info_detail_view_controller.h"

#include <any>

#include "shell/base/info_cell.h"
#include "shell/base/loading_cell.h"
#include "shell/base/vehicle_table_view_cell.h"
#include "vehicle/notifications.h"

namespace fleetor {

namespace {
constexpr int infoRows = 10;
constexpr int infoVehicleRow = 0;
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
  return live_ ? infoRows : 1;
}

std::shared_ptr<TableViewCell> InfoDetailViewController::tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                                        IndexPath path) {
  if (!live_) return dequeueLoadingCell(tableView);
  if (path.row == infoVehicleRow) {
    auto cell = std::static_pointer_cast<VehicleTableViewCell>(
        tableView.dequeueReusableCellWithIdentifier("VehicleCell"));
    cell->nameLabel().setText(live_->vehicle().fullName());
    cell->photoImageView().setImage(live_->vehicle().icon.str());
    return cell;
  }
  const auto [value, caption] = textsForRow(path.row);
  return dequeueInfoCell(tableView, value, caption);
}

double InfoDetailViewController::tableViewHeightForRowAtIndexPath(TableView&, IndexPath path) {
  if (!live_) return 60.0;
  return path.row == infoVehicleRow ? 68.0 : 42.0;
}

std::pair<std::string, std::string> InfoDetailViewController::textsForRow(int row) const {
  const Live& live = *live_;
  switch (row) {
    case 1:
      return {live.dateTime().str(), localized("Update time")};
    case 2:
      return {live.speed.str() + "km/h", localized("Speed")};
    case 3:
      return {live.rpm.str(), localized("RPM")};
    case 4:
      return {live.direction.str() + "°", localized("Direction")};
    case 5:
      return {live.street.str(), localized("Address")};
    case 6:
      return {live.powerSupply.str() + live.powerSupplyType.str(), localized("Power supply")};
    case 7:
      return {live.temp.str() + "°C", localized("Temperature")};
    case 8:
      return {live.fuel.str() + live.fuelType.str(), localized("Fuel")};
    case 9:
      return {live.odometer.str(), localized("Odometer")};
    default:
      return {};
  }
}

}  // namespace fleetor
