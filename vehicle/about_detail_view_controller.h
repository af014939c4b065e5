#pragma once

#include <memory>

#include "service/envelopes.h"
#include "service/session.h"
#include "ui/table/table_view.h"
#include "vehicle/detail_page_view_controller.h"
#include "vehicle/known_info.h"

namespace fleetor {

/// The vehicle's standing data as a list in "itemsTableView": dates of service, driver, tracking unit.
/// Fetched once and kept. Until then, each poll of the pager while this page is visible, a failed one
/// included, starts a request; after a failure the list is empty. A request in flight keeps the page alive.
/// "overdueLabel" and "dueLabel" state what is due, a line each, once a reading has come as well; the mark on
/// the tab reports the most urgent. Until this page has its answer, the mark is by what this session knows
/// of the vehicle from before.
class AboutDetailViewController final : public DetailPageViewController,
                                        public TableViewDataSource,
                                        public TableViewDelegate {
 public:
  explicit AboutDetailViewController(Environment& environment,
                                     std::shared_ptr<KnownInfo> known = std::make_shared<KnownInfo>());

  TableView& itemsTableView() { return itemsTableView_; }
  const InfoResponse& response() const { return response_; }

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void viewDidDisappear(bool animated) override;
  void firstSelected() override;
  void receivedNotification(const Notification& notification);
  void receivedRecord(const std::shared_ptr<const Live>& live) override;

  int tableViewNumberOfRowsInSection(TableView& tableView, int section) override;
  std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                IndexPath path) override;
  double tableViewHeightForRowAtIndexPath(TableView& tableView, IndexPath path) override;

 private:
  void loadItems();
  void stateWhatIsDue();

  Session session_;
  std::shared_ptr<KnownInfo> known_;
  TableView itemsTableView_;
  InfoResponse response_;
  std::shared_ptr<const Live> live_;
  Label overdueLabel_;
  Label dueLabel_;
};

}  // namespace fleetor
