#pragma once

#include <any>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "board/board_cell.h"
#include "board/board_map.h"
#include "board/fleet_poll.h"
#include "board/held_vehicles.h"
#include "fleet/pinned_vehicles.h"
#include "service/session.h"
#include "shell/base/page_view_controller.h"
#include "ui/background_watch.h"
#include "ui/table/table_view.h"
#include "ui/wake_up.h"
#include "vehicle/watch/last_readings.h"

namespace fleetor {

/// Up to 24 vehicles at a glance, on one map and as cards in "boardTableView": the pinned ones, or without
/// pins the first ones of the account. They are asked for their state in turn, only while this screen is
/// visible and the program in the foreground. A tap on a card opens the vehicle, and so does
/// "openVehicleButton" in a callout; the map follows the one whose "followButton" is selected. When the list
/// is missing, this screen requests it; that request keeps it alive.
class BoardViewController final : public PageViewController,
                                  public TableViewDataSource,
                                  public TableViewDelegate {
 public:
  static constexpr std::size_t most = 24;

  BoardViewController(Environment& environment, std::shared_ptr<PinnedVehicles> pins,
                      std::shared_ptr<HeldVehicles> held, std::shared_ptr<LastReadings> readings,
                      std::shared_ptr<FleetPoll> poll);
  ~BoardViewController() override;

  MapView& mapView() { return map_.map(); }
  TableView& boardTableView() { return boardTableView_; }
  Label& noteLabel() { return map_.panel().noteLabel; }
  Label& failureLabel() { return failureLabel_; }  ///< empty while the list has not failed
  Button& reloadButton() { return reloadButton_; }
  Button& openVehicleButton() { return openVehicleButton_; }
  Label& newsLabel() {
    return newsLabel_;
  }  ///< the followed vehicle has set off, stopped, or its record got old

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void viewDidDisappear(bool animated) override;
  void prepareForSegue(Segue& segue, const std::any& sender) override;

  int tableViewNumberOfRowsInSection(TableView& tableView, int section) override;
  std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                IndexPath path) override;
  double tableViewHeightForRowAtIndexPath(TableView& tableView, IndexPath path) override;
  void tableViewDidSelectRowAtIndexPath(TableView& tableView, IndexPath path) override;

 private:
  struct Card {
    Vehicle vehicle;
    std::shared_ptr<BoardCell> cell;
  };

  std::vector<std::int64_t> wantedIds();
  std::optional<Vehicle> recordOf(std::int64_t vehicleId);
  void setShown(bool shown);
  bool isWatched() const { return shown_ && !background_.inBackground() && !session_.hasEnded(); }
  void update();  ///< which vehicles there are
  void fetchList();
  void receive(std::int64_t vehicleId);
  void show(std::int64_t vehicleId);
  void fill(const Card& card);
  void refresh();
  void showState();
  void showFollowed();
  void sharePosition();
  void openVehicle(const Vehicle& vehicle);

  Session session_;
  std::shared_ptr<PinnedVehicles> pins_;
  std::shared_ptr<HeldVehicles> held_;
  std::shared_ptr<LastReadings> readings_;
  std::shared_ptr<FleetPoll> poll_;
  BoardMap map_;
  TableView boardTableView_;
  Label failureLabel_;
  Button reloadButton_;
  Button openVehicleButton_;
  Button sharePositionButton_;
  Label newsLabel_;
  WakeUp refresh_;
  std::vector<std::int64_t> ids_;  ///< all that are asked for
  std::vector<Card> cards_;        ///< of those whose names are known
  std::string news_;               ///< what `newsLabel` was set for
  bool shown_ = false;
  BackgroundWatch background_;
  bool listFailed_ = false;
  bool listAsked_ = false;
  Connection pinsChanged_;
  Connection heldChanged_;
  Connection received_;
  Connection failed_;
  Connection onMap_;
};

}  // namespace fleetor
