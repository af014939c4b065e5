#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "ui/environment.h"
#include "ui/table/table_view_cell.h"

namespace fleetor {

class TableView;

struct IndexPath {
  int section = 0;
  int row = 0;

  friend bool operator==(const IndexPath&, const IndexPath&) = default;
};

class TableViewDataSource {
 public:
  virtual ~TableViewDataSource() = default;
  virtual int tableViewNumberOfRowsInSection(TableView& tableView, int section) = 0;

  /// The filled cell of a row that is about to be shown; never null.
  virtual std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                        IndexPath path) = 0;
};

class TableViewDelegate {
 public:
  virtual ~TableViewDelegate() = default;

  /// Points.
  virtual double tableViewHeightForRowAtIndexPath(TableView& tableView, IndexPath path) = 0;
  virtual double tableViewEstimatedHeightForRowAtIndexPath(TableView& tableView, IndexPath path) {
    return tableViewHeightForRowAtIndexPath(tableView, path);
  }
  virtual void tableViewDidSelectRowAtIndexPath(TableView& /*tableView*/, IndexPath /*path*/) {}
};

/// A list of one section. The number of rows is requested once after each reload, a cell only when its row is
/// about to be shown; it is kept until the next reload or until the row has left the screen.
class TableView : public Component {
 public:
  using CellMaker = std::function<std::shared_ptr<TableViewCell>(const std::string& identifier)>;

  explicit TableView(Environment& environment) : environment_(environment) {}
  Environment& environment() const { return environment_; }

  /// Weak: both must outlive the table or be reset.
  void setDataSource(TableViewDataSource* dataSource) { dataSource_ = dataSource; }
  void setDelegate(TableViewDelegate* delegate) { delegate_ = delegate; }

  void registerMaker(const std::string& identifier, CellMaker maker) {
    makers_[identifier] = std::move(maker);
  }

  /// A cell with its last content, or a new one. After a reload a row gets the cell that it had if the
  /// identifier fits, so that what has not changed is not redrawn. An identifier without a maker is a
  /// programming error.
  std::shared_ptr<TableViewCell> dequeueReusableCellWithIdentifier(const std::string& identifier);

  /// Drops all cells, the row count and the selection, then emits `reloaded`. While the data source is being
  /// called, the reload waits for the next turn of the main queue.
  void reloadData();
  Signal<> reloaded;

  /// An empty footer: no separators below the last row.
  bool tableFooterView() const { return tableFooterView_; }
  void setTableFooterView(bool empty) { assign(tableFooterView_, empty); }

  std::optional<IndexPath> indexPathForSelectedRow() const { return selected_; }
  /// By the program; none: no row is selected.
  void selectRowAtIndexPath(std::optional<IndexPath> path) { assign(selected_, path); }

  /// Asks the adapter to bring the row to the upper edge, as far as the list allows.
  void scrollToRowAtIndexPath(IndexPath path) {
    if (contains(path.row)) rowWanted.emit(path.row);
  }
  Signal<int> rowWanted;

  // For adapters. Rows out of range have no cell and no height, and are not tapped.
  int numberOfRows();
  double heightForRow(int row);
  double estimatedHeightForRow(int row);
  std::shared_ptr<TableViewCell> cellForRow(int row);  ///< the row is about to be shown
  void didEndDisplayingRow(int row);                   ///< the row has left the screen
  void tap(int row);   ///< the user selects the row, if it is selectable, or starts its action
  bool copy(int row);  ///< the user copies the row; false: it cannot be copied

 private:
  bool contains(int row) { return row >= 0 && row < numberOfRows(); }
  void reloadNow();
  void keepSpare(std::shared_ptr<TableViewCell> cell);

  Environment& environment_;
  TableViewDataSource* dataSource_ = nullptr;
  TableViewDelegate* delegate_ = nullptr;
  std::map<std::string, CellMaker> makers_;
  std::map<std::string, std::vector<std::shared_ptr<TableViewCell>>> reusable_;
  std::unordered_map<int, std::shared_ptr<TableViewCell>> cells_;
  std::unordered_map<int, std::shared_ptr<TableViewCell>> before_;  ///< from before a reload, not reused yet
  int asked_ = -1;                                                  ///< the row whose cell is being requested
  std::optional<int> rows_;
  std::optional<IndexPath> selected_;
  bool tableFooterView_ = false;
  int asking_ = 0;
  bool reloadPending_ = false;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace fleetor
