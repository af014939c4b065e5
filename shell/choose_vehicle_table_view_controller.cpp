#include "shell/choose_vehicle_table_view_controller.h"

namespace fleetor {

ChooseVehicleTableViewController::ChooseVehicleTableViewController(Environment& environment)
    : PagedVehicles(environment),
      cancelButton_(BarButtonItem::initWithBarButtonSystemItem(
          environment, SystemItem::cancel, [this](Component& sender) { cancelAction(sender); })) {
  setTitle(localized("Choose vehicle"));
  outlet("cancelButton", *cancelButton_);
  navigationItem().setLeftBarButtonItem(cancelButton_);
}

void ChooseVehicleTableViewController::cancelAction(Component&) {
  if (const auto delegate = delegate_.lock()) delegate->chooseVehocleTableViewContollerDidCancel(*this);
}

void ChooseVehicleTableViewController::tableViewDidSelectRowAtIndexPath(TableView&, IndexPath path) {
  if (!isVehicleRow(path)) return;
  if (const auto delegate = delegate_.lock())
    delegate->chooseVehocleTableViewContollerDidChooseVehicle(*this, vehicleAtIndexPath(path));
}

}  // namespace fleetor
