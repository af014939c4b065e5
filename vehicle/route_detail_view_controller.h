#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "day/day_timeline.h"
#include "service/envelopes.h"
#include "ui/controls/fact_strip.h"
#include "ui/controls/time_ribbon.h"
#include "ui/table/table_view.h"
#include "vehicle/chosen_day.h"
#include "vehicle/day_bar.h"
#include "vehicle/day_export.h"
#include "vehicle/detail_page_view_controller.h"

namespace fleetor {

/// The vehicle's trips and stops of one day as a list in "itemsTableView": that chosen in the pager when this
/// page loads, then that chosen while this page is visible. The whole day comes in one request.
///
/// The loading flag is the only guard: a day chosen while a request is in flight is not loaded, and the
/// answer, which belongs to another day, leaves the list empty until the next selection or day. While the
/// service claims more items than it sent, the loading row stays. A request in flight keeps the page alive.
///
/// The page follows the program to the background and back only until it first disappears.
class RouteDetailViewController final : public DetailPageViewController,
                                        public TableViewDataSource,
                                        public TableViewDelegate {
 public:
  explicit RouteDetailViewController(Environment& environment);

  TableView& itemsTableView() { return itemsTableView_; }
  const RouteResponse& items() const { return items_; }

  /// The hours of the day, as far as the rows tell them. A chosen moment brings its row into view.
  TimeRibbon& dayRibbon() { return dayRibbon_; }
  const FactStrip& dayTotals() const { return dayTotals_; }

  /// The day shown, "yyyy-MM-dd"; none while the program is in the background.
  const std::optional<std::string>& date() const { return day_.date(); }

  void setDayChoice(const std::shared_ptr<DayChoice>& days) override;
  void receivedPosition(Coordinate /*position*/) override { bar_.refresh(); }
  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void viewDidDisappear(bool animated) override;
  void firstSelected() override;
  void receivedNotification(const Notification& notification);

  /// Empties the list and puts the day aside until the return to the foreground.
  void clearView();

  int tableViewNumberOfRowsInSection(TableView& tableView, int section) override;
  std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                IndexPath path) override;
  double tableViewHeightForRowAtIndexPath(TableView& tableView, IndexPath path) override;
  void tableViewDidSelectRowAtIndexPath(TableView& tableView, IndexPath path) override;

 private:
  struct Moment {
    std::string day;
    float seconds;  ///< since its midnight
  };

  void didEnterBackground() { clearView(); }
  void wilEnterForeground() { day_.putBack(); }

  void showWantedCard();

  /// Shows the loading row and asks for the day.
  void load();

  /// Without a day nothing is requested.
  void loadItems(const std::optional<std::string>& day);
  int numberOfItems() const { return items_.route ? static_cast<int>(items_.route->size()) : 0; }

  void showDay();  ///< what the rows mean
  void showRowOfMoment();

  TableView itemsTableView_;
  TimeRibbon dayRibbon_;
  FactStrip dayTotals_;
  DayTimeline timeline_;
  Connection momentChosen_;
  ChosenDay day_;
  DayBar bar_;
  DayExportButton export_;
  std::shared_ptr<DayChoice> days_;
  Connection stopOpened_;
  std::optional<Moment> wanted_;  ///< of a stop whose card is to come into view
  RouteResponse items_;
};

}  // namespace fleetor
