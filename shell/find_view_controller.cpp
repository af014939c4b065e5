#include "shell/find_view_controller.h"

#include <algorithm>
#include <utility>

#include "platform/filled_text.h"
#include "shell/found_vehicle_cell.h"
#include "ui/controls/action_sheet.h"

namespace fleetor {

namespace {

constexpr double rowHeight = 68.0;

struct OrderEntry {
  VehicleOrder order;
  const char* title;  ///< English, not localised yet
};

constexpr OrderEntry orders[] = {{VehicleOrder::service, "As in the list"},
                                 {VehicleOrder::name, "By name"},
                                 {VehicleOrder::registration, "By registration"}};

}  // namespace

FindViewController::FindViewController(Environment& environment, std::shared_ptr<PinnedVehicles> pins,
                                       std::shared_ptr<ChosenOrder> order)
    : BaseViewController(environment),
      pins_(std::move(pins)),
      order_(std::move(order)),
      searchTextField_(environment),
      foundTableView_(environment) {
  setTitle(localized("Find a vehicle"));
  outlet("searchTextField", searchTextField_);
  outlet("clearButton", clearButton_);
  outlet("foundLabel", foundLabel_);
  outlet("emptyLabel", emptyLabel_);
  outlet("progressLabel", progressLabel_);
  outlet("progressButton", progressButton_);
  outlet("foundTableView", foundTableView_);
  searchTextField_.setPlaceholder(localized("Name or registration"));
  searchTextField_.setDelegate(this);
  clearButton_.setAccessibleName(localized("Clear"));
  clearButton_.setAction([this](Component&) {
    searchTextField_.setText("");
    searchTextField_.becomeFirstResponder();
  });
  progressButton_.setAction([this](Component&) { stopOrGoOn(); });
  foundTableView_.registerMaker("FoundCell", [this](const std::string& identifier) {
    return std::make_shared<FoundVehicleCell>(
        identifier, FoundVehicleCell::Words{localized("Pin"), localized("Unpin"), localized("Pinned")});
  });
  foundTableView_.setTableFooterView(true);
  foundTableView_.setDataSource(this);
  foundTableView_.setDelegate(this);
  const auto barButton = [this](const char* image, std::string name, void (FindViewController::*action)()) {
    auto button =
        BarButtonItem::initWithImage(image, true, [this, action](Component&) { (this->*action)(); });
    button->setAccessibleName(std::move(name));
    return button;
  };
  navigationItem().setLeftBarButtonItem(
      barButton("BtnClose", localized("Close"), &FindViewController::close));
  navigationItem().setRightBarButtonItem(
      barButton("NavSort", localized("Order"), &FindViewController::showOrders));
}

void FindViewController::viewDidLoad() {
  BaseViewController::viewDidLoad();
  fieldChanged_ = searchTextField_.changed.connect([this] {
    if (searchTextField_.text() != typed_) refresh();
  });
  fleetChanged_ = fleet_->changed.connect([this] { refresh(); });
  pinsChanged_ = pins_->changed.connect([this] { refresh(); });
  addObserver(UIApplicationDidEnterBackgroundNotification,
              [this](const Notification&) { fleet_->setShown(false); });
  addObserver(UIApplicationWillEnterForegroundNotification, [this](const Notification&) {
    fleet_->setShown(appearanceState() == AppearanceState::appeared);
  });
  refresh();
}

void FindViewController::viewDidAppear(bool animated) {
  BaseViewController::viewDidAppear(animated);
  searchTextField_.becomeFirstResponder();
  fleet_->setShown(true);
}

void FindViewController::viewWillDisappear(bool animated) {
  BaseViewController::viewWillDisappear(animated);
  fleet_->setShown(false);
}

void FindViewController::refresh() {
  typed_ = searchTextField_.text();
  words_ = SearchWords(typed_);
  found_ = fleet_->search().find(words_, order_->order());
  std::stable_partition(found_.begin(), found_.end(), [this](std::size_t i) {
    return pins_->contains(fleet_->search().vehicles()[i].vehicleId);
  });
  clearButton_.setEnabled(!typed_.empty());
  showResult();
  showProgress();
  foundTableView_.reloadData();
}

void FindViewController::showResult() {
  const bool none = found_.empty();
  foundLabel_.setText(
      none ? "" : filled(localized("Vehicles found: {count}"), "{count}", std::to_string(found_.size())));
  const bool held = !fleet_->search().vehicles().empty();
  const auto state = fleet_->state();
  if (!none || state == SearchedFleet::State::fetching || (!held && state != SearchedFleet::State::complete))
    emptyLabel_.setText("");
  else if (!held)
    emptyLabel_.setText(localized("No vehicles"));
  else
    emptyLabel_.setText(filled(localized("No vehicle matches “{words}”"), "{words}", typed_));
}

void FindViewController::showProgress() {
  const auto state = fleet_->state();
  std::string line = localized("Loading");
  if (fleet_->total())
    line = filled(filled(localized("{held} of {total} vehicles"), "{held}",
                         std::to_string(fleet_->search().vehicles().size())),
                  "{total}", std::to_string(*fleet_->total()));
  std::string button;
  if (state == SearchedFleet::State::complete) line = "";
  if (state == SearchedFleet::State::fetching) button = localized("Stop");
  if (state == SearchedFleet::State::stopped) button = localized("Continue");
  if (state == SearchedFleet::State::failed) {
    line = localized("The list of vehicles is incomplete");
    button = localized("Try again");
  }
  progressLabel_.setText(std::move(line));
  progressButton_.setEnabled(!button.empty());
  progressButton_.setTitle(std::move(button));
}

void FindViewController::stopOrGoOn() {
  if (fleet_->state() == SearchedFleet::State::fetching)
    fleet_->stop();
  else
    fleet_->resume();
}

void FindViewController::showOrders() {
  ActionSheet::Content content{localized("Order"), {}};
  for (const auto& [order, title] : orders) {
    const bool current = order == order_->order();
    if (current) content.message = localized(title);  // the picture of an entry is not read out
    content.entries.push_back({localized(title),
                               {},
                               current ? "RowChosen" : "RowNotChosen",
                               [self = sharedFrom(this), chosen = order] {
                                 self->order_->choose(chosen);
                                 self->refresh();
                               }});
  }
  ActionSheet::show(environment(), std::move(content));
}

void FindViewController::close() {
  endEditing();
  dismissViewControllerAnimated(true);
}

bool FindViewController::textFieldShouldReturn(TextField&) {
  if (found_.size() == 1) {
    foundTableView_.tap(0);
  } else if (!found_.empty()) {
    searchTextField_.resignFirstResponder();
    foundTableView_.scrollToRowAtIndexPath({0, 0});
  }
  return true;
}

const Vehicle& FindViewController::vehicleAt(int row) const {
  return fleet_->search().vehicles()[found_[static_cast<std::size_t>(row)]];
}

int FindViewController::tableViewNumberOfRowsInSection(TableView&, int) {
  return static_cast<int>(found_.size());
}

std::shared_ptr<TableViewCell> FindViewController::tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                                  IndexPath path) {
  auto cell =
      std::static_pointer_cast<FoundVehicleCell>(tableView.dequeueReusableCellWithIdentifier("FoundCell"));
  const Vehicle& vehicle = vehicleAt(path.row);
  cell->show(vehicle, words_, pins_->contains(vehicle.vehicleId),
             [pins = pins_, id = vehicle.vehicleId] { pins->setPinned(id, !pins->contains(id)); });
  return cell;
}

double FindViewController::tableViewHeightForRowAtIndexPath(TableView&, IndexPath) {
  return rowHeight;
}

void FindViewController::tableViewDidSelectRowAtIndexPath(TableView&, IndexPath path) {
  const auto self = sharedFrom(this);
  const Vehicle vehicle = vehicleAt(path.row);
  if (const auto delegate = delegate_.lock()) delegate->findViewControllerDidChooseVehicle(*this, vehicle);
  close();
}

}  // namespace fleetor
