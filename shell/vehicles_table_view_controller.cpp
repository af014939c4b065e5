#include "shell/vehicles_table_view_controller.h"

#include <algorithm>
#include <utility>

#include "board/board_view_controller.h"
#include "service/api.h"
#include "shell/base/base_navigation_controller.h"
#include "shell/beside_rear.h"
#include "shell/logout_confirmation.h"
#include "ui/storyboard.h"

namespace fleetor {

namespace {
constexpr Seconds patience{3};  ///< before what is kept is shown
}

VehiclesTableViewController::VehiclesTableViewController(Environment& environment,
                                                         std::shared_ptr<HeldVehicles> held,
                                                         std::shared_ptr<LastReadings> readings,
                                                         KeptFleet* kept)
    : PagedVehicles(environment),
      held_(std::move(held)),
      readings_(std::move(readings)),
      rows_(environment, readings_),
      kept_(kept),
      offline_(environment, readings_, [this](const Vehicle& vehicle) { open(vehicle); }) {
  offline_.addOutletsTo(*this);
  outlet("failureLabel", failureLabel_);
  outlet("reloadButton", reloadButton_);
  outlet("noVehiclesImageView", noVehiclesImageView_);
  outlet("fleetButton", fleetButton_);
  fleetButton_.setImage("BtnFleet");
  fleetButton_.setTitle(localized("Fleet"));
  fleetButton_.setEnabled(false);
  fleetButton_.setAction([this](Component& sender) { showFleet(sender); });
  reloadButton_.setTitle(localized("Load again"));
  reloadButton_.setAction([this](Component&) { loadAgain(); });
}

void VehiclesTableViewController::viewDidLoad() {
  PagedVehicles::viewDidLoad();
  showMenuButton();
  setTitle(localized("My Vehicles"));
  using Self = VehiclesTableViewController;
  findButton_ = barButton("NavFind", "Find a vehicle", &Self::showFind);
  outlet("findButton", *findButton_);
  navigationItem().setRightBarButtonItem(findButton_);
  if (!environment().device.isPad()) return;
  navigationItem().setLeftBarButtonItem(barButton("BtnLogout", "Log out", &Self::logout));
  navigationItem().setRightBarButtonItems({barButton("BtnAccount", "Account", &Self::showAccount),
                                           barButton("BtnAbout", "About", &Self::showAbout), findButton_});
  fleetButton_.setEnabled(true);
  reloaded_ = itemsTableView().reloaded.connect([this] { markOpenVehicle(); });
}

void VehiclesTableViewController::viewDidAppear(bool animated) {
  PagedVehicles::viewDidAppear(animated);
  rows_.setShown(true);
  offline_.setVisible(true);
  if (!kept_ || std::exchange(hasAppeared_, true) || answered_) return;
  environment().queues.mainAfter(patience, [weak = std::weak_ptr(sharedFrom(this))] {
    if (const auto self = weak.lock()) self->loadKept();
  });
}

void VehiclesTableViewController::viewDidDisappear(bool animated) {
  PagedVehicles::viewDidDisappear(animated);
  rows_.setShown(false);
  offline_.setVisible(false);
}

void VehiclesTableViewController::loadKept() {
  if (!kept_ || !waitsForAnswer() || offline_.list()) return;
  kept_->load([weak = std::weak_ptr(sharedFrom(this))](auto list) {
    const auto self = weak.lock();
    if (self && self->waitsForAnswer()) self->showKept(list);
  });
}

void VehiclesTableViewController::showKept(const OfflineList::List& list) {
  for (const auto& [vehicle, live, arrived] : list->entries)
    if (live) readings_->addEarlier({live, arrived});
  offline_.show(list);
}

std::shared_ptr<TableViewCell> VehiclesTableViewController::tableViewCellForRowAtIndexPath(
    TableView& tableView, IndexPath path) {
  auto cell = PagedVehicles::tableViewCellForRowAtIndexPath(tableView, path);
  if (const auto row = std::dynamic_pointer_cast<VehicleTableViewCell>(cell))
    rows_.follow(row, vehicleAtIndexPath(path).vehicleId);
  return cell;
}

void VehiclesTableViewController::markOpenVehicle() {
  const auto* reveal = revealViewController();
  const auto* stack =
      reveal ? dynamic_cast<NavigationController*>(reveal->frontViewController().get()) : nullptr;
  const auto* pager =
      stack ? dynamic_cast<VehicleViewController*>(stack->topViewController().get()) : nullptr;
  std::optional<IndexPath> row;
  if (pager && items().vehicles) {
    const auto& vehicles = *items().vehicles;
    const auto open = std::ranges::find(vehicles, pager->vehicle().vehicleId, &Vehicle::vehicleId);
    if (open != vehicles.end()) row = {0, static_cast<int>(open - vehicles.begin())};
  }
  itemsTableView().selectRowAtIndexPath(row);
}

void VehiclesTableViewController::pageFailed(bool answered) {
  failed_ = true;
  if (answered)
    noteAnswer();
  else
    loadKept();
  failureLabel_.setText(localized("The list of vehicles is incomplete"));
}

void VehiclesTableViewController::showIfEmpty() {
  if (tableViewNumberOfRowsInSection(itemsTableView(), 0) == 0)
    noVehiclesImageView_.setImage(failed_ ? "ListFailed" : "ListEmpty");
}

void VehiclesTableViewController::pageEnded() {
  if (session_.hasEnded()) return;
  showIfEmpty();
  if (!failed_) noteAnswer();
  if (!failed_ && items().vehicles) {
    const auto& all = *items().vehicles;
    VehiclesResponse news;
    news.total = items().total;
    news.vehicles.emplace(all.begin() + static_cast<std::ptrdiff_t>(handedOn_), all.end());
    held_->take(news, std::exchange(handedOn_, all.size()));
  }
  if (fleet_) fleet_->follow(items(), failed_);
}

void VehiclesTableViewController::noteAnswer() {
  answered_ = true;
  offline_.show(nullptr);
}

void VehiclesTableViewController::showFind(Component&) {
  if (!fleet_)
    fleet_ = std::make_shared<SearchedFleet>(
        environment().device.language(),
        [weak = std::weak_ptr(sharedFrom(this))](std::size_t offset, SearchedFleet::Taken taken) {
          const auto self = weak.lock();
          return self && self->requestPage(offset, std::move(taken));
        });
  fleet_->follow(items(), failed_);
  const auto find = storyboard()->instantiate<FindViewController>("FindVC");
  find->setFleet(fleet_);
  find->setDelegate(sharedFrom(this));
  find->setModalPresentationStyle(ModalPresentationStyle::formSheet);
  presentViewController(find, true);
}

// Opens behind the search, which uncovers it.
void VehiclesTableViewController::findViewControllerDidChooseVehicle(FindViewController&,
                                                                     const Vehicle& vehicle) {
  open(vehicle);
  if (environment().device.isPad()) itemsTableView().reloadData();  // drops the mark of what was open before
}

void VehiclesTableViewController::open(const Vehicle& vehicle) {
  if (!environment().device.isPad()) {
    performSegueWithIdentifier("DetailSegue", vehicle);
    return;
  }
  openBesideList(vehicle);
}

void VehiclesTableViewController::loadAgain() {
  auto* reveal = revealViewController();
  if (!reveal) return;
  const auto list = stackOf("VehiclesVC");
  if (environment().device.isPad())
    reveal->setRearViewControllerAnimated(list, true);
  else
    reveal->setFrontViewControllerAnimated(list, true);
}

void VehiclesTableViewController::prepareForSegue(Segue& segue, const std::any& sender) {
  const auto pager = std::dynamic_pointer_cast<VehicleViewController>(segue.destinationViewController);
  if (const auto* found = std::any_cast<Vehicle>(&sender); pager && found)
    pager->setVehicle(*found);
  else if (const auto selected = itemsTableView().indexPathForSelectedRow(); pager && selected)
    pager->setVehicle(vehicleAtIndexPath(*selected));
}

void VehiclesTableViewController::tableViewDidSelectRowAtIndexPath(TableView&, IndexPath path) {
  if (!environment().device.isPad()) {
    performSegueWithIdentifier("DetailSegue");
    return;
  }
  openBesideList(vehicleAtIndexPath(path));
}

void VehiclesTableViewController::openBesideList(const Vehicle& vehicle) {
  const auto pager = storyboard()->instantiate<VehicleViewController>("VehicleVC");
  pager->setVehicle(vehicle);
  show(pager);
}

void VehiclesTableViewController::continueFrom(VehiclesTableViewController& before) {
  PagedVehicles::continueFrom(before);
  answered_ = before.answered_;
  offline_.show(before.offline_.list());
  if (before.failed_) pageFailed(before.answered_);
  showIfEmpty();
}

void VehiclesTableViewController::show(const std::shared_ptr<VehicleViewController>& pager) {
  if (!environment().device.isPad()) return navigationController()->pushViewController(pager, false);
  putBesideList(BaseNavigationController::initWithRootViewController(environment(), pager));
}

void VehiclesTableViewController::putBesideList(const std::shared_ptr<NavigationController>& stack) {
  auto* reveal = revealViewController();
  if (!reveal) return;
  reveal->setFrontViewControllerAnimated(stack, false);
  placeFrontBesideRear(*reveal);
  besideChanged_ = stack->changed.connect([this] { markOpenVehicle(); });
  markOpenVehicle();
}

void VehiclesTableViewController::showFleet(Component&) {
  showFleet();
}

void VehiclesTableViewController::showFleet() {
  auto* const reveal = revealViewController();
  if (!reveal) return;
  const auto* const front = dynamic_cast<NavigationController*>(reveal->frontViewController().get());
  if (front && dynamic_cast<BoardViewController*>(front->topViewController().get())) return;
  const auto fleet = stackOf("BoardVC");
  if (environment().device.isPad())
    putBesideList(fleet);
  else
    reveal->setFrontViewControllerAnimated(fleet, false);
}

void VehiclesTableViewController::logout(Component&) {
  showLogoutConfirmation(environment(), sharedFrom(this));
}

void VehiclesTableViewController::alertViewClickedButtonAtIndex(AlertView&, int index) {
  if (index == logoutConfirmed) API::logoutUser();
}

void VehiclesTableViewController::showAccount(Component&) {
  presentFormSheet("AccountVC");
}

void VehiclesTableViewController::showAbout(Component&) {
  presentFormSheet("AboutVC");
}

std::shared_ptr<BarButtonItem> VehiclesTableViewController::barButton(const std::string& image,
                                                                      const std::string& name,
                                                                      ButtonAction action) {
  auto button = BarButtonItem::initWithImage(image, true,
                                             [this, action](Component& sender) { (this->*action)(sender); });
  button->setAccessibleName(localized(name));
  return button;
}

void VehiclesTableViewController::presentFormSheet(const std::string& storyboardIdentifier) {
  const auto sheet = stackOf(storyboardIdentifier);
  sheet->setModalPresentationStyle(ModalPresentationStyle::formSheet);
  presentViewController(sheet, true);
}

std::shared_ptr<NavigationController> VehiclesTableViewController::stackOf(
    const std::string& storyboardIdentifier) {
  return BaseNavigationController::initWithRootViewController(
      environment(), storyboard()->instantiateViewControllerWithIdentifier(storyboardIdentifier));
}

}  // namespace fleetor
