#pragma once

#include "platform/settings.h"
#include "shell/choose_vehicle_table_view_controller.h"
#include "ui/containers/sw_reveal_view_controller.h"

namespace fleetor {

/// The container of everything that a signed-in user sees. Presents the chooser of the widget's vehicle when
/// it is asked to, and stores the choice for the widget.
class MainViewController final : public SWRevealViewController,
                                 public ChooseVehicleTableViewControllerDelegate {
 public:
  MainViewController(Environment& environment, Settings& sharedSettings)
      : SWRevealViewController(environment), sharedSettings_(sharedSettings) {}

  /// Whether the chooser is presented as soon as the container has appeared.
  bool showChooser() const { return showChooser_; }
  void setShowChooser(bool show) { showChooser_ = show; }

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void prepareForSegue(Segue& segue, const std::any& sender) override;

  void chooseVehocleTableViewContollerDidCancel(ChooseVehicleTableViewController& controller) override;
  void chooseVehocleTableViewContollerDidChooseVehicle(ChooseVehicleTableViewController& controller,
                                                       const Vehicle& vehicle) override;

 private:
  Settings& sharedSettings_;
  bool showChooser_ = false;
};

}  // namespace fleetor
