#pragma once

#include <memory>

#include "service/envelopes.h"
#include "shell/known_account.h"
#include "shell/sheet_page.h"
#include "ui/table/table_view.h"

namespace fleetor {

/// The account's data as a list in "infoTableView". It is requested when the loading row is about to be
/// shown. After a failure the list stays empty, and only a new screen starts again. A request in flight keeps
/// the screen alive.
class AccountViewController final : public SheetPage, public TableViewDataSource, public TableViewDelegate {
 public:
  AccountViewController(Environment& environment, std::shared_ptr<KnownAccount> known);

  TableView& infoTableView() { return infoTableView_; }
  const UserResponse& response() const { return response_; }

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;

  /// Fetches the account unless a request is in flight.
  void loadItems();

  int tableViewNumberOfRowsInSection(TableView& tableView, int section) override;
  std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                IndexPath path) override;
  double tableViewHeightForRowAtIndexPath(TableView& tableView, IndexPath path) override;

 private:
  std::shared_ptr<KnownAccount> known_;
  TableView infoTableView_;
  UserResponse response_;
};

}  // namespace fleetor
