#pragma once

#include <memory>
#include <vector>

#include "fleet/pinned_vehicles.h"
#include "fleet/vehicle_search.h"
#include "service/session.h"
#include "shell/base/base_view_controller.h"
#include "shell/searched_fleet.h"
#include "ui/table/table_view.h"

namespace fleetor {

class FindViewController;

/// In which order the search shows the vehicles, for one session.
class ChosenOrder {
 public:
  VehicleOrder order() const { return session_.hasEnded() ? VehicleOrder::service : order_; }
  void choose(VehicleOrder order) {
    order_ = order;
    session_ = Session();
  }

 private:
  VehicleOrder order_ = VehicleOrder::service;
  Session session_;
};

class FindViewControllerDelegate {
 public:
  virtual ~FindViewControllerDelegate() = default;

  /// The user wants to see that vehicle. The search closes itself after this call.
  virtual void findViewControllerDidChooseVehicle(FindViewController& controller, const Vehicle& vehicle) = 0;
};

/// Finds vehicles by name and registration, with every letter that is typed; pinned ones come first. Return
/// goes to the rows, or opens the only one. Reports the choice to its delegate and closes.
class FindViewController final : public BaseViewController,
                                 public TableViewDataSource,
                                 public TableViewDelegate,
                                 public TextFieldDelegate {
 public:
  FindViewController(Environment& environment, std::shared_ptr<PinnedVehicles> pins,
                     std::shared_ptr<ChosenOrder> order);

  /// Both before the screen loads.
  void setFleet(std::shared_ptr<SearchedFleet> fleet) { fleet_ = std::move(fleet); }
  void setDelegate(std::weak_ptr<FindViewControllerDelegate> delegate) { delegate_ = std::move(delegate); }

  TextField& searchTextField() { return searchTextField_; }
  Button& clearButton() { return clearButton_; }     ///< disabled while there is nothing to clear
  Label& foundLabel() { return foundLabel_; }        ///< how many vehicles; empty where `emptyLabel` is not
  Label& emptyLabel() { return emptyLabel_; }        ///< why there are no rows
  Label& progressLabel() { return progressLabel_; }  ///< why not all vehicles are searched; empty: they are
  Button& progressButton() { return progressButton_; }  ///< stops the fetching, or goes on with it
  TableView& foundTableView() { return foundTableView_; }

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void viewWillDisappear(bool animated) override;

  bool textFieldShouldReturn(TextField& textField) override;
  int tableViewNumberOfRowsInSection(TableView& tableView, int section) override;
  std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                IndexPath path) override;
  double tableViewHeightForRowAtIndexPath(TableView& tableView, IndexPath path) override;
  void tableViewDidSelectRowAtIndexPath(TableView& tableView, IndexPath path) override;

 private:
  void refresh();
  void showResult();
  void showProgress();
  void stopOrGoOn();
  void showOrders();
  void close();
  const Vehicle& vehicleAt(int row) const;

  std::shared_ptr<PinnedVehicles> pins_;
  std::shared_ptr<ChosenOrder> order_;
  std::shared_ptr<SearchedFleet> fleet_;
  std::weak_ptr<FindViewControllerDelegate> delegate_;
  std::string typed_;
  SearchWords words_;
  std::vector<std::size_t> found_;
  TextField searchTextField_;
  Button clearButton_;
  Label foundLabel_;
  Label emptyLabel_;
  Label progressLabel_;
  Button progressButton_;
  TableView foundTableView_;
  Connection fieldChanged_;
  Connection fleetChanged_;
  Connection pinsChanged_;
};

}  // namespace fleetor
