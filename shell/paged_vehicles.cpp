#include "shell/paged_vehicles.h"

#include <algorithm>
#include <memory>

#include "service/api.h"
#include "shell/base/loading_cell.h"
#include "vehicle/vehicle_table_view_cell.h"

namespace fleetor {

namespace {
constexpr int vehiclesPerPage = 20;
constexpr double vehicleRowHeight = 68.0;
constexpr double loadingRowHeight = 60.0;
constexpr Seconds longestPause{300};
}  // namespace

template <class Base>
PagedVehicles<Base>::PagedVehicles(Environment& environment)
    : Base(environment), itemsTableView_(environment) {
  this->outlet("itemsTableView", itemsTableView_);
  itemsTableView_.registerMaker("VehicleCell", [](const std::string& identifier) {
    return std::make_shared<VehicleTableViewCell>(identifier);
  });
  registerLoadingCell(itemsTableView_, this->localized("Loading"));
  itemsTableView_.setDataSource(this);
  itemsTableView_.setDelegate(this);
}

template <class Base>
void PagedVehicles<Base>::viewDidLoad() {
  Base::viewDidLoad();
  itemsTableView_.setTableFooterView(true);
  items_ = VehiclesResponse::initForLoading();
}

template <class Base>
void PagedVehicles<Base>::viewDidAppear(bool animated) {
  Base::viewDidAppear(animated);
  itemsTableView_.reloadData();
}

template <class Base>
void PagedVehicles<Base>::continueFrom(PagedVehicles& before) {
  this->loadViewIfNeeded();
  items_ = before.items_;
  pause_ = before.pause_;
  if (!before.isLoading()) return;
  this->setLoading(true);
  if (before.isPausing_)
    endLoadingLater();
  else
    before.successor_ = this->sharedFrom(this);
}

template <class Base>
std::shared_ptr<PagedVehicles<Base>> PagedVehicles<Base>::current() {
  auto list = this->sharedFrom(this);
  while (list->successor_)
    list = std::shared_ptr(list->successor_);
  return list;
}

template <class Base>
void PagedVehicles<Base>::loadItems() {
  if (this->isLoading()) return;
  this->setLoading(true);
  API::getWithPath("/vehicles", {{"offset", numberOfVehicles()}, {"limit", vehiclesPerPage}},
                   modelClass<VehiclesResponse>, {},
                   [sender = this->sharedFrom(this)](auto response, auto kind, long status, auto&) {
                     const auto self = sender->current();
                     const int before = self->numberOfVehicles();
                     if (kind == ResponseKindSuccess) {
                       self->items_.nextResult(*response);
                     } else {
                       self->items_.onError();
                       self->pageFailed(status != 0);
                     }
                     if (self->numberOfVehicles() == before && !self->isComplete()) {
                       self->endLoadingLater();
                     } else {
                       self->pause_ = firstPause;
                       self->endLoading();
                     }
                   });
}

template <class Base>
void PagedVehicles<Base>::endLoading() {
  this->setLoading(false);
  isPausing_ = false;
  itemsTableView_.reloadData();
  pageEnded();
}

template <class Base>
bool PagedVehicles<Base>::requestPage(std::size_t offset, PageTaken taken) {
  if (this->isLoading()) return false;
  this->setLoading(true);
  const auto self = this->sharedFrom(this);
  API::getWithPath("/vehicles", {{"offset", static_cast<std::int64_t>(offset)}, {"limit", vehiclesPerPage}},
                   modelClass<VehiclesResponse>, {},
                   [self, taken = std::move(taken)](auto response, auto kind, long, auto&) {
                     const auto list = self->current();
                     list->setLoading(false);
                     list->itemsTableView_.reloadData();  // its loading row may have asked in vain
                     taken(kind == ResponseKindSuccess ? &*response : nullptr);
                   });
  return true;
}

template <class Base>
void PagedVehicles<Base>::endLoadingLater() {
  // The pause does not keep the screen alive.
  const std::weak_ptr<PagedVehicles> weak = this->sharedFrom(this);
  this->environment().queues.mainAfter(pause_, [weak] {
    if (const auto self = weak.lock()) self->endLoading();
  });
  isPausing_ = true;
  pause_ = std::min(2 * pause_, longestPause);
}

template <class Base>
int PagedVehicles<Base>::tableViewNumberOfRowsInSection(TableView&, int) {
  return numberOfVehicles() + (isComplete() ? 0 : 1);
}

template <class Base>
std::shared_ptr<TableViewCell> PagedVehicles<Base>::tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                                   IndexPath path) {
  if (!isVehicleRow(path)) {
    loadItems();
    return dequeueLoadingCell(tableView);
  }
  auto cell = std::static_pointer_cast<VehicleTableViewCell>(
      tableView.dequeueReusableCellWithIdentifier("VehicleCell"));
  cell->show(vehicleAtIndexPath(path), showsRegistration());
  return cell;
}

template <class Base>
double PagedVehicles<Base>::tableViewHeightForRowAtIndexPath(TableView&, IndexPath path) {
  return isVehicleRow(path) ? vehicleRowHeight : loadingRowHeight;
}

template <class Base>
const Vehicle& PagedVehicles<Base>::vehicleAtIndexPath(IndexPath path) const {
  return items_.vehicles->at(static_cast<std::size_t>(path.row));
}

template class PagedVehicles<BaseViewController>;
template class PagedVehicles<PageViewController>;

}  // namespace fleetor
