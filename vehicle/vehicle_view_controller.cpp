#include "vehicle/vehicle_view_controller.h"

#include <any>
#include <string>
#include <utility>

#include "service/api.h"
#include "service/envelopes.h"
#include "ui/appearance.h"
#include "ui/storyboard.h"
#include "vehicle/map_detail_view_controller.h"
#include "vehicle/notifications.h"

namespace fleetor {

namespace {

constexpr Seconds pollInterval{15.0 / FLEETOR_PACE};
constexpr Color barColor{0.67, 0.76, 0.8, 1.0};
constexpr Color selectedTitleColor{0.23, 0.29, 0.35, 1.0};

struct PageEntry {
  const char* storyboardIdentifier;
  const char* image;
  const char* title;
};

constexpr std::array<PageEntry, VehicleViewController::pageCount> pageTable{{
    {"InfoDetailVC", "TabInfo", "Info"},
    {"LiveDetailVC", "TabLive", "Live"},
    {"MapDetailVC", "TabMap", "Map"},
    {"RouteDetailVC", "TabRoute", "Trips"},
    {"AboutDetailVC", "TabAbout", "About|vehicle"},
}};

constexpr int mapPage = 2;
constexpr int tripsPage = 3;

}  // namespace

VehicleViewController::VehicleViewController(Environment& environment, std::shared_ptr<PinnedVehicles> pins,
                                             std::shared_ptr<LastReadings> readings)
    : PageViewController(environment), pins_(std::move(pins)), readings_(std::move(readings)) {
  outlet("pagesTabBar", pagesTabBar_);
  std::vector<std::shared_ptr<TabBarItem>> items;
  for (const auto& page : pageTable) {
    items.push_back(std::make_shared<TabBarItem>());
    items.back()->setTitle(localized(page.title));
  }
  pagesTabBar_.setItems(std::move(items));
  pagesTabBar_.setDelegate(this);
}

void VehicleViewController::viewDidLoad() {
  PageViewController::viewDidLoad();
  setTitle(vehicle_.name.str());
  if (!environment().device.isPad()) showBackButton();
  auto dateButton =
      BarButtonItem::initWithImage("NavDate", true, [this](Component& sender) { showDatePicker(sender); });
  dateButton->setAccessibleName(localized("Choose date"));
  pinButton_ = BarButtonItem::initWithImage("NavPin", true, [this](Component&) {
    pins_->setPinned(vehicle_.vehicleId, !pins_->contains(vehicle_.vehicleId));
  });
  pinsChanged_ = pins_->changed.connect([this] { showWhetherPinned(); });
  showWhetherPinned();
  navigationItem().setRightBarButtonItems({dateButton, pinButton_});
  if (!days_) days_ = std::make_shared<DayChoice>(environment());
  tripOpened_ = days_->tripOpened.connect([this](const OpenedTrip&) {
    pagesTabBar_.tap(mapPage);
    cameFromCard_ = true;
  });
  tripLeft_ = days_->tripLeft.connect([this] { pagesTabBar_.tap(tripsPage); });
  stopOpened_ = days_->stopOpened.connect([this](const std::string&, float) { pagesTabBar_.tap(tripsPage); });
  makePages();
  styleTabBar();
  addObserver(UIApplicationDidEnterBackgroundNotification,
              [this](const Notification&) { didEnterBackground(); });
  addObserver(UIApplicationWillEnterForegroundNotification,
              [this](const Notification&) { wilEnterForeground(); });
}

// The page is chosen before it requests anything: the first one requests nothing when it is selected.
void VehicleViewController::continueFrom(VehicleViewController& before) {
  before.isReplaced_ = true;
  vehicle_ = before.vehicle_;
  days_ = std::make_shared<DayChoice>(environment(), before.date());
  watch_ = before.watch_;
  loadViewIfNeeded();
  for (std::size_t i = 0; i < pageCount; ++i)
    pages_[i]->continueFrom(*before.pages_[i]);
  pagesTabBar_.tap(before.swipeTabBarController_->selectedIndex());
  cameFromCard_ = before.cameFromCard_;
}

void VehicleViewController::showWhetherPinned() {
  const bool pinned = pins_->contains(vehicle_.vehicleId);
  pinButton_->setImage(pinned ? "NavPinned" : "NavPin");
  pinButton_->setAccessibleName(localized(pinned ? "Unpin" : "Pin"));
}

void VehicleViewController::makePages() {
  if (!watch_) {
    watch_ = std::make_shared<VehicleWatch>(environment().clock);
    if (const auto* const earlier = readings_->earlierOf(vehicle_.vehicleId)) watch_->setEarlier(*earlier);
  }
  std::vector<std::shared_ptr<ViewController>> installed;
  for (std::size_t i = 0; i < pageCount; ++i) {
    pages_[i] = storyboard()->instantiate<DetailPageViewController>(pageTable[i].storyboardIdentifier);
    pages_[i]->setVehicle(vehicle_);
    pages_[i]->setDayChoice(days_);
    pages_[i]->setWatch(watch_);
    pages_[i]->setAccessibleName(localized(pageTable[i].title));
    marks_[i] = pages_[i]->marked.connect(
        [item = pagesTabBar_.items()[i]](const std::string& reason) { item->setMark(reason); });
    if (auto* const map = dynamic_cast<MapDetailViewController*>(pages_[i].get()))
      dayChanged_ = map->dayChanged.connect([this, map] {
        if (map->dayPoints()) watch_->received(*map->dayPoints());
      });
    installed.push_back(pages_[i]);
  }
  swipeTabBarController_ = std::dynamic_pointer_cast<SwipeTabBarController>(childViewControllers().back());
  swipeTabBarController_->setViewControllers(std::move(installed));
  pagesTabBar_.setSelectedItem(pagesTabBar_.items().front());
  pages_[static_cast<std::size_t>(swipeTabBarController_->selectedIndex())]->tabSelected();
}

void VehicleViewController::styleTabBar() {
  for (std::size_t i = 0; i < pageCount; ++i) {
    const std::string image = pageTable[i].image;
    pagesTabBar_.items()[i]->setImage(image);
    pagesTabBar_.items()[i]->setSelectedImage(image + "Selected");
  }
  environment().appearance.setTabBarItem({whiteColor, selectedTitleColor});
  pagesTabBar_.setBarTintColor(barColor);
  pagesTabBar_.setTranslucent(false);
}

void VehicleViewController::viewWillAppear(bool animated) {
  PageViewController::viewWillAppear(animated);
  swipeTabBarController_->setDelegate(this);
}

void VehicleViewController::viewDidAppear(bool animated) {
  PageViewController::viewDidAppear(animated);
  refreshFlag_ = true;
  loadItems();
}

void VehicleViewController::viewWillDisappear(bool animated) {
  PageViewController::viewWillDisappear(animated);
  swipeTabBarController_->setDelegate(nullptr);
}

void VehicleViewController::viewDidDisappear(bool animated) {
  PageViewController::viewDidDisappear(animated);
  refreshFlag_ = false;
}

void VehicleViewController::loadItems() {
  if (isLoading() || session_.hasEnded() || isReplaced_) return;
  setLoading(true);
  const auto self = sharedFrom(this);
  API::getWithPath("/live", {{"vehid", vehicle_.vehicleId}}, modelClass<LiveResponse>, {},
                   [self](auto response, auto kind, long, auto& error) {
                     if (self->refreshFlag_) {
                       std::any object;
                       if (kind == ResponseKindSuccess) {
                         const std::shared_ptr<const Live> live(response, &*response->live);
                         if (live->vehicle().vehicleId == self->vehicle_.vehicleId) {
                           self->watch_->received(live);
                           for (const auto& page : self->pages_) {
                             page->receivedRecord(live);
                             page->receivedPosition(live->coordinate());
                           }
                         }
                         object = live;
                       } else if (error) {
                         object = *error;
                       }
                       self->environment().notificationCenter.postNotificationName(kFleetorNotificationLive,
                                                                                   object);
                       self->environment().queues.mainAfter(pollInterval, [self] { self->loadItems(); });
                     }
                     self->setLoading(false);
                   });
}

void VehicleViewController::swipeTabBarControllerDidScrollToIndexFromIndex(SwipeTabBarController&, int index,
                                                                           int fromIndex) {
  if (index == fromIndex) return;
  cameFromCard_ = false;
  if (pagesTabBar_.indexOfItem(pagesTabBar_.selectedItem()) == index) return;
  const auto page = static_cast<std::size_t>(index);
  pages_[page]->tabSelected();
  pagesTabBar_.setSelectedItem(pagesTabBar_.items()[page]);
}

void VehicleViewController::tabBarDidSelectItem(TabBar&, TabBarItem& item) {
  const int index = pagesTabBar_.indexOfItem(&item);
  if (index == swipeTabBarController_->selectedIndex()) return;
  cameFromCard_ = false;
  pages_[static_cast<std::size_t>(index)]->tabSelected();
  swipeTabBarController_->setSelectedIndexAnimated(index, false);
}

bool VehicleViewController::handleBack() {
  if (!cameFromCard_) return PageViewController::handleBack();
  days_->tripLeft.emit();
  return true;
}

void VehicleViewController::didEnterBackground() {
  refreshFlag_ = false;
  for (const auto& page : pages_)
    page->clearTabSelected();
}

void VehicleViewController::wilEnterForeground() {
  // A pending poll keeps a screen that was left alive for a while; a new loop would never end.
  if (!parentViewController() && appearanceState() == AppearanceState::disappeared) return;
  refreshFlag_ = true;
  loadItems();
  pages_[static_cast<std::size_t>(swipeTabBarController_->selectedIndex())]->tabSelected();
}

void VehicleViewController::showDatePicker(Component& sender) {
  days_->showPicker(sender);
}

}  // namespace fleetor
