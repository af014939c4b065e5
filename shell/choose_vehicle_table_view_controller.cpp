#include "shell/choose_vehicle_table_view_controller.h"

namespace fleetor {

ChooseVehicleTableViewController::ChooseVehicleTableViewController(Environment& environment)
    : PagedVehicles(environment) {
  setTitle(localized("Choose vehicle"));
  navigationItem().setLeftBarButtonItem(BarButtonItem::initWithBarButtonSystemItem(
      environment, SystemItem::cancel, [this](Component& sender) { cancelAction(sender); }));
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
