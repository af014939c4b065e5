#pragma once

#include <memory>
#include <string>

#include "shell/paged_vehicles.h"

namespace fleetor {

class ChooseVehicleTableViewController;

class ChooseVehicleTableViewControllerDelegate {
 public:
  virtual ~ChooseVehicleTableViewControllerDelegate() = default;
  virtual void chooseVehocleTableViewContollerDidCancel(ChooseVehicleTableViewController& controller) = 0;
  virtual void chooseVehocleTableViewContollerDidChooseVehicle(ChooseVehicleTableViewController& controller,
                                                               const Vehicle& vehicle) = 0;
};

/// Asks which vehicle the widget shows. Reports the answer to its delegate, which also dismisses it.
class ChooseVehicleTableViewController final : public PagedVehicles<BaseViewController> {
 public:
  explicit ChooseVehicleTableViewController(Environment& environment);

  void setDelegate(std::weak_ptr<ChooseVehicleTableViewControllerDelegate> delegate) {
    delegate_ = std::move(delegate);
  }

  void cancelAction(Component& sender);
  void tableViewDidSelectRowAtIndexPath(TableView& tableView, IndexPath path) override;

 protected:
  bool showsRegistration() const override { return false; }

 private:
  std::weak_ptr<ChooseVehicleTableViewControllerDelegate> delegate_;
};

}  // namespace fleetor
