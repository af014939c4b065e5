#pragma once

#include <any>
#include <memory>
#include <string>

#include "board/held_vehicles.h"
#include "kept/kept_fleet.h"
#include "shell/find_view_controller.h"
#include "shell/offline_list.h"
#include "shell/paged_vehicles.h"
#include "shell/row_readings.h"
#include "ui/controls/alert_view.h"
#include "vehicle/vehicle_view_controller.h"

namespace fleetor {

/// "My Vehicles": where a signed-in user starts. On a phone it opens a vehicle by pushing its pager; on a
/// tablet it is the permanent left column, puts the pager beside itself and carries what the side menu
/// carries on a phone. After a failed page, and where there is no vehicle, it offers to load the list again.
/// While the first page stays away, because the service cannot be reached, the vehicles that are kept from
/// before are shown beside the list.
class VehiclesTableViewController final : public PagedVehicles<PageViewController>,
                                          public AlertViewDelegate,
                                          public FindViewControllerDelegate {
 public:
  VehiclesTableViewController(Environment& environment, std::shared_ptr<HeldVehicles> held,
                              std::shared_ptr<LastReadings> readings, KeptFleet* kept);

  Label& failureLabel() { return failureLabel_; }  ///< empty while nothing has failed

  /// In place of a list without a vehicle: that it is empty, or that it failed. Without an image otherwise.
  ImageView& noVehiclesImageView() { return noVehiclesImageView_; }
  Button& reloadButton() { return reloadButton_; }

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void viewDidDisappear(bool animated) override;
  std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                IndexPath path) override;
  /// Takes the place of another list, also in what it reports of a failure.
  void continueFrom(VehiclesTableViewController& before);

  /// Shows the pager at once, where a tapped vehicle shows.
  void show(const std::shared_ptr<VehicleViewController>& pager);

  /// Shows the fleet at once, beside the list or instead of it.
  void showFleet();

  /// A screen with that identifier over the list, as a sheet.
  void presentFormSheet(const std::string& storyboardIdentifier);

  void prepareForSegue(Segue& segue, const std::any& sender) override;
  void tableViewDidSelectRowAtIndexPath(TableView& tableView, IndexPath path) override;
  void alertViewClickedButtonAtIndex(AlertView& alertView, int index) override;

  void showFind(Component& sender);
  void findViewControllerDidChooseVehicle(FindViewController& controller, const Vehicle& vehicle) override;

  // The buttons of a tablet.
  void logout(Component& sender);  ///< asks first
  void showAccount(Component& sender);
  void showAbout(Component& sender);
  void showFleet(Component& sender);

 protected:
  bool showsRegistration() const override { return true; }
  void pageFailed(bool answered) override;
  void pageEnded() override;

 private:
  void markOpenVehicle();  ///< selects the vehicle that a tablet shows beside the list, if any
  using ButtonAction = void (VehiclesTableViewController::*)(Component&);
  std::shared_ptr<BarButtonItem> barButton(const std::string& image, const std::string& name,
                                           ButtonAction action);
  std::shared_ptr<NavigationController> stackOf(const std::string& storyboardIdentifier);
  void loadAgain();  ///< in a new screen
  void showIfEmpty();
  bool waitsForAnswer() const { return !answered_ && !session_.hasEnded(); }
  void loadKept();
  void showKept(const OfflineList::List& list);
  void noteAnswer();
  void open(const Vehicle& vehicle);
  void openBesideList(const Vehicle& vehicle);
  void putBesideList(const std::shared_ptr<NavigationController>& stack);

  Session session_;
  std::shared_ptr<HeldVehicles> held_;
  std::size_t handedOn_ = 0;  ///< of the items, to `held_`
  std::shared_ptr<LastReadings> readings_;
  RowReadings rows_;
  KeptFleet* kept_;  ///< null: nothing is kept
  OfflineList offline_;
  bool hasAppeared_ = false;
  bool answered_ = false;  ///< the service has answered
  Label failureLabel_;
  ImageView noVehiclesImageView_;
  Button reloadButton_;
  Connection reloaded_;
  Connection besideChanged_;
  bool failed_ = false;
  std::shared_ptr<BarButtonItem> findButton_;
  Button fleetButton_;                    ///< disabled on a phone, whose menu has it
  std::shared_ptr<SearchedFleet> fleet_;  ///< none before the first search
};

}  // namespace fleetor
