#pragma once

#include <functional>
#include <memory>
#include <string>

#include "kept/kept_fleet.h"
#include "ui/background_watch.h"
#include "ui/controls/controls.h"
#include "ui/environment.h"
#include "ui/table/table_view.h"
#include "ui/wake_up.h"
#include "vehicle/watch/last_readings.h"

namespace fleetor {

/// What is known from before while the service cannot be reached: a line that says how old that is, and the
/// vehicles in a table, each with its last reading and the age of that. Ages are counted by the device's
/// calendar clock. One timer while it is shown. Main thread only.
class OfflineList final : public TableViewDataSource, public TableViewDelegate {
 public:
  using List = std::shared_ptr<const KeptFleet::List>;

  /// A row shows what `readings` have received of its vehicle instead of what is kept. `open` is called with
  /// the vehicle that the user has tapped.
  OfflineList(Environment& environment, std::shared_ptr<LastReadings> readings,
              std::function<void(const Vehicle&)> open);

  /// Gives the screen the outlets "offlineLabel", empty while there is nothing, and "offlineTableView".
  void addOutletsTo(Outlets& screen);

  const List& list() const { return list_; }
  void show(List list);           ///< null: nothing
  void setVisible(bool visible);  ///< whether the screen is

  int tableViewNumberOfRowsInSection(TableView& tableView, int section) override;
  std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                IndexPath path) override;
  double tableViewHeightForRowAtIndexPath(TableView& tableView, IndexPath path) override;
  void tableViewDidSelectRowAtIndexPath(TableView& tableView, IndexPath path) override;

 private:
  void update();
  std::string textOf(const KeptFleet::Entry& entry);
  const KeptFleet::Entry& entryAt(IndexPath path) const;

  Environment& environment_;
  std::shared_ptr<LastReadings> readings_;
  std::function<void(const Vehicle&)> open_;
  Label label_;
  TableView tableView_;
  List list_;
  bool visible_ = false;
  WakeUp ages_;
  BackgroundWatch background_;
  Connection received_;
};

}  // namespace fleetor
