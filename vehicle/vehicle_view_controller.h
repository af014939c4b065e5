#pragma once

#include <array>
#include <memory>

#include "fleet/pinned_vehicles.h"
#include "model/vehicle_records.h"
#include "service/session.h"
#include "shell/base/page_view_controller.h"
#include "ui/containers/swipe_tab_bar_controller.h"
#include "ui/containers/tab_bar.h"
#include "vehicle/day_choice.h"
#include "vehicle/detail_page_view_controller.h"
#include "vehicle/watch/last_readings.h"

namespace fleetor {

/// The vehicle pager: five pages about one vehicle over a tab bar. It owns the one polling loop and the
/// chosen day and reports both to the pages by notifications (vehicle/notifications.h).
///
/// The loop polls 15 seconds after each answer while the screen is visible and the program is in the
/// foreground. A poll in flight and a pending one keep the screen alive and are never cancelled. So a quick
/// return runs two loops side by side; only the loading flag keeps their requests from overlapping. Once the
/// session has ended, neither does anything.
class VehicleViewController final : public PageViewController,
                                    public SwipeTabBarControllerDelegate,
                                    public TabBarDelegate {
 public:
  static constexpr std::size_t pageCount = 5;

  VehicleViewController(Environment& environment, std::shared_ptr<PinnedVehicles> pins,
                        std::shared_ptr<LastReadings> readings);

  bool refreshFlag() const { return refreshFlag_; }

  /// Set before the pager loads.
  const Vehicle& vehicle() const { return vehicle_; }
  void setVehicle(Vehicle vehicle) { vehicle_ = std::move(vehicle); }

  /// Takes the place of another pager, which does nothing from then on: with its vehicle, its day, its page
  /// and what has been seen of the vehicle. Loads this pager; called before it appears.
  void continueFrom(VehicleViewController& before);

  TabBar& pagesTabBar() { return pagesTabBar_; }
  Date date() const { return days_->date(); }  ///< the chosen day; not before loading

  /// The embedded pager, the last child; null before loading.
  const std::shared_ptr<SwipeTabBarController>& swipeTabBarController() const {
    return swipeTabBarController_;
  }

  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;
  void viewDidAppear(bool animated) override;
  void viewWillDisappear(bool animated) override;
  void viewDidDisappear(bool animated) override;

  /// From a trip on the map back to its card.
  bool handleBack() override;

  void swipeTabBarControllerDidScrollToIndexFromIndex(SwipeTabBarController& controller, int index,
                                                      int fromIndex) override;
  void tabBarDidSelectItem(TabBar& tabBar, TabBarItem& item) override;

  void showDatePicker(Component& sender);

  /// One poll, unless one is in flight, the session has ended, or another pager goes on.
  void loadItems();

 private:
  void didEnterBackground();
  void wilEnterForeground();
  void makePages();
  void showWhetherPinned();
  void styleTabBar();

  Session session_;  ///< that of the user who opened the vehicle
  bool refreshFlag_ = false;
  bool isReplaced_ = false;
  Vehicle vehicle_;
  std::shared_ptr<PinnedVehicles> pins_;
  std::shared_ptr<LastReadings> readings_;
  std::shared_ptr<BarButtonItem> pinButton_;
  Connection pinsChanged_;
  TabBar pagesTabBar_;
  std::shared_ptr<DayChoice> days_;
  Connection tripOpened_;
  Connection tripLeft_;
  Connection stopOpened_;
  bool cameFromCard_ = false;  ///< the map shows since a card of Trips was tapped
  std::shared_ptr<SwipeTabBarController> swipeTabBarController_;
  std::shared_ptr<VehicleWatch> watch_;
  Connection dayChanged_;
  std::array<std::shared_ptr<DetailPageViewController>, pageCount> pages_;
  std::array<Connection, pageCount> marks_;
};

}  // namespace fleetor
