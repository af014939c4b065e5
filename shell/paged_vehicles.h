#pragma once

#include <functional>
#include <memory>
#include <string>

#include "model/vehicle_records.h"
#include "service/envelopes.h"
#include "shell/base/page_view_controller.h"
#include "ui/table/table_view.h"

namespace fleetor {

/// A screen over `Base` that lists the account's vehicles in its "itemsTableView" and fetches them page by
/// page: the next page is requested when the loading row, always the last, is about to be shown. After a
/// failed page the list keeps what it has and requests no more; only a new screen starts again. A page that
/// adds nothing to an incomplete list is requested again after 15 seconds, then 30, up to 5 minutes.
///
/// A request in flight keeps the screen alive, a pause between requests does not. Instantiated for
/// BaseViewController and PageViewController.
template <class Base>
class PagedVehicles : public Base, public TableViewDataSource, public TableViewDelegate {
 public:
  explicit PagedVehicles(Environment& environment);

  TableView& itemsTableView() { return itemsTableView_; }
  const VehiclesResponse& items() const { return items_; }

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;

  /// Takes the place of another list of the same session: with its rows, and with the answer that it still
  /// waits for. Loads this screen.
  void continueFrom(PagedVehicles& before);

  /// Fetches the next page unless one is on its way.
  void loadItems();

  int tableViewNumberOfRowsInSection(TableView& tableView, int section) override;
  std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                IndexPath path) override;
  double tableViewHeightForRowAtIndexPath(TableView& tableView, IndexPath path) override;

 protected:
  virtual bool showsRegistration() const = 0;

  virtual void pageFailed(bool /*answered*/) {}  ///< no more pages are requested
  virtual void pageEnded() {}                    ///< another page may be requested

  /// Requests a page that the list does not take, as the one request that this screen has in flight. The
  /// answer is null after a failure. False: there is a request in flight already.
  using PageTaken = std::function<void(const VehiclesResponse* page)>;
  bool requestPage(std::size_t offset, PageTaken taken);

  bool isVehicleRow(IndexPath path) const { return path.row < numberOfVehicles(); }
  const Vehicle& vehicleAtIndexPath(IndexPath path) const;  ///< of a vehicle row

 private:
  static constexpr Seconds firstPause{15};

  int numberOfVehicles() const { return items_.vehicles ? static_cast<int>(items_.vehicles->size()) : 0; }
  bool isComplete() const { return items_.total == numberOfVehicles(); }
  std::shared_ptr<PagedVehicles> current();  ///< this screen, or the one that took its place
  void endLoading();
  void endLoadingLater();

  TableView itemsTableView_;
  VehiclesResponse items_;
  Seconds pause_ = firstPause;
  bool isPausing_ = false;
  std::shared_ptr<PagedVehicles> successor_;  ///< while a request is in flight
};

extern template class PagedVehicles<BaseViewController>;
extern template class PagedVehicles<PageViewController>;

}  // namespace fleetor
