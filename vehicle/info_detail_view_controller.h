#pragma once

#include <memory>
#include <optional>

#include "ui/table/table_view.h"
#include "vehicle/detail_page_view_controller.h"
#include "vehicle/watch/live_status.h"
#include "vehicle/watch/reading_chart.h"

namespace fleetor {

/// The vehicle's latest readings as a list in "itemsTableView". The pager's polls update it while it is
/// visible; when it appears, it shows the latest of them. Their age stands in the row of the
/// update time; old ones are faded. A tap on one that is a number opens its chart.
class InfoDetailViewController final : public DetailPageViewController,
                                       public TableViewDataSource,
                                       public TableViewDelegate {
 public:
  explicit InfoDetailViewController(Environment& environment);

  TableView& itemsTableView() { return itemsTableView_; }
  const std::shared_ptr<const Live>& live() const { return live_; }  ///< null before the first

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void viewDidDisappear(bool animated) override;
  void receivedNotification(const Notification& notification);

  int tableViewNumberOfRowsInSection(TableView& tableView, int section) override;
  std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                IndexPath path) override;
  double tableViewHeightForRowAtIndexPath(TableView& tableView, IndexPath path) override;

 private:
  void sharePosition();
  void refresh();

  TableView itemsTableView_;
  std::shared_ptr<const Live> live_;
  LiveStatus status_;
  ReadingChart chart_;
  Connection aged_;
};

}  // namespace fleetor
