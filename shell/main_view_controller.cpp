#include "shell/main_view_controller.h"

#include <memory>

#include "shell/beside_rear.h"
#include "shell/widget_reading.h"

namespace fleetor {

void MainViewController::viewDidLoad() {
  SWRevealViewController::viewDidLoad();
  setRearViewRevealOverdraw(0.0);
  setDraggableBorderWidth(120.0);
  setBounceBackOnOverdraw(false);
  setToggleAnimationType(SWRevealToggleAnimationType::easeOut);
  if (!environment().device.isPad()) return;
  setFrontViewPositionAnimated(FrontViewPosition::rightMost, true);
  placeFrontBesideRear(*this);
}

void MainViewController::viewDidAppear(bool animated) {
  SWRevealViewController::viewDidAppear(animated);
  if (!showChooser_) return;
  performSegueWithIdentifier("ChooseSegue");
  showChooser_ = false;
}

void MainViewController::prepareForSegue(Segue& segue, const std::any&) {
  const auto chooser =
      std::dynamic_pointer_cast<ChooseVehicleTableViewController>(segue.destinationViewController);
  if (!chooser) return;
  if (environment().device.isPad()) chooser->setModalPresentationStyle(ModalPresentationStyle::formSheet);
  chooser->setDelegate(std::static_pointer_cast<MainViewController>(shared_from_this()));
}

void MainViewController::chooseVehocleTableViewContollerDidCancel(ChooseVehicleTableViewController&) {
  dismissViewControllerAnimated(true);
}

void MainViewController::chooseVehocleTableViewContollerDidChooseVehicle(ChooseVehicleTableViewController&,
                                                                         const Vehicle& vehicle) {
  sharedSettings_.setObject(vehicle.vehicleId, "WidgetVehicle");
  sharedSettings_.synchronize();
  environment().notificationCenter.postNotificationName(kFleetorNotificationWidgetVehicle, vehicle);
  dismissViewControllerAnimated(true, [] {});
}

}  // namespace fleetor
