#include "shell/main_storyboard.h"

#include <memory>

#include "board/board_view_controller.h"
#include "fleet/pinned_vehicles.h"
#include "shell/about_view_controller.h"
#include "shell/account_view_controller.h"
#include "shell/choose_vehicle_table_view_controller.h"
#include "shell/empty_view_controller.h"
#include "shell/find_view_controller.h"
#include "shell/launch_view_controller.h"
#include "shell/login_view_controller.h"
#include "shell/main_view_controller.h"
#include "shell/menu_view_controller.h"
#include "shell/terms_view_controller.h"
#include "shell/vehicles_table_view_controller.h"
#include "ui/background_watch.h"
#include "ui/containers/swipe_tab_bar_controller.h"
#include "vehicle/about_detail_view_controller.h"
#include "vehicle/info_detail_view_controller.h"
#include "vehicle/live_detail_view_controller.h"
#include "vehicle/map_detail_view_controller.h"
#include "vehicle/route_detail_view_controller.h"
#include "vehicle/vehicle_view_controller.h"

namespace fleetor {

namespace {

template <class Screen>
std::shared_ptr<ViewController> makeScreen(Environment& environment) {
  return std::make_shared<Screen>(environment);
}

/// Hands over to what is kept whatever the session receives.
class KeptLink {
 public:
  KeptLink(Environment& environment, KeptFleet& kept, HeldVehicles& held, LastReadings& readings)
      : vehicles_(
            held.changed.connect([&kept, &held] { kept.takeVehicles(held.vehicles(), held.isComplete()); })),
        readings_(readings.received.connect([&kept, &readings](std::int64_t id) {
          if (const auto* const entry = readings.of(id)) kept.takeReading(entry->live);
        })),
        background_(environment.notificationCenter, [this, &kept] {
          if (background_.inBackground()) kept.writeNow();
        }) {}

 private:
  Connection vehicles_;
  Connection readings_;
  BackgroundWatch background_;
};

}  // namespace

Storyboard makeMainStoryboard(Environment& environment, Settings& standardSettings, Settings& sharedSettings,
                              KeptFleet* kept) {
  const auto makeLaunch = [&standardSettings](Environment& of) -> std::shared_ptr<ViewController> {
    return std::make_shared<LaunchViewController>(of, standardSettings);
  };
  const auto makeMain = [&sharedSettings](Environment& of) -> std::shared_ptr<ViewController> {
    return std::make_shared<MainViewController>(of, sharedSettings);
  };
  const auto known = std::make_shared<KnownInfo>();
  const auto held = std::make_shared<HeldVehicles>();
  const auto readings = std::make_shared<LastReadings>(environment);
  const auto poll = std::make_shared<FleetPoll>(environment, readings);
  const auto makeAbout = [known](Environment& of) -> std::shared_ptr<ViewController> {
    return std::make_shared<AboutDetailViewController>(of, known);
  };
  const auto pins = std::make_shared<PinnedVehicles>(standardSettings, environment.device);
  const auto account = std::make_shared<KnownAccount>();
  const auto makeLogin = [pins, known, held, readings,
                          account](Environment& of) -> std::shared_ptr<ViewController> {
    // What is kept for a session is not kept until somebody asks for it in the next one.
    known->forgetOthers();
    held->forgetOthers();
    readings->forgetOthers();
    account->forgetOthers();
    return std::make_shared<LoginViewController>(of, pins);
  };
  const auto link = kept ? std::make_shared<KeptLink>(environment, *kept, *held, *readings) : nullptr;
  const auto makeList = [held, readings, kept, link](Environment& of) -> std::shared_ptr<ViewController> {
    if (kept) kept->begin();
    return std::make_shared<VehiclesTableViewController>(of, held, readings, kept);
  };
  const auto makeMenu = [account](Environment& of) -> std::shared_ptr<ViewController> {
    return std::make_shared<MenuViewController>(of, account);
  };
  const auto makeAccount = [account](Environment& of) -> std::shared_ptr<ViewController> {
    return std::make_shared<AccountViewController>(of, account);
  };
  const auto makeBoard = [pins, held, readings, poll](Environment& of) -> std::shared_ptr<ViewController> {
    return std::make_shared<BoardViewController>(of, pins, held, readings, poll);
  };
  const auto makePager = [pins, readings](Environment& of) -> std::shared_ptr<ViewController> {
    auto screen = std::make_shared<VehicleViewController>(of, pins, readings);
    screen->addChildViewController(std::make_shared<SwipeTabBarController>(of));
    return screen;
  };
  const auto makeFind =
      [pins, order = std::make_shared<ChosenOrder>()](Environment& of) -> std::shared_ptr<ViewController> {
    return std::make_shared<FindViewController>(of, pins, order);
  };
  return {environment,
          "Main",
          "LaunchVC",
          {{"LaunchVC", makeLaunch},
           {"TermsVC", makeScreen<TermsViewController>},
           {"LoginVC", makeLogin},
           {"MainVC", makeMain},
           {"MenuVC", makeMenu},
           {"EmptyVC", makeScreen<EmptyViewController>},
           {"VehiclesVC", makeList},
           {"BoardVC", makeBoard},
           {"FindVC", makeFind},
           {"ChooseVehicleVC", makeScreen<ChooseVehicleTableViewController>},
           {"AccountVC", makeAccount},
           {"AboutVC", makeScreen<AboutViewController>},
           {"VehicleVC", makePager},
           {"InfoDetailVC", makeScreen<InfoDetailViewController>},
           {"LiveDetailVC", makeScreen<LiveDetailViewController>},
           {"MapDetailVC", makeScreen<MapDetailViewController>},
           {"RouteDetailVC", makeScreen<RouteDetailViewController>},
           {"AboutDetailVC", makeAbout}},
          {{"TermsSegue", "LaunchVC", "TermsVC", SegueKind::modal},
           {"ChooseSegue", "MainVC", "ChooseVehicleVC", SegueKind::modal},
           {"DetailSegue", "VehiclesVC", "VehicleVC", SegueKind::push},
           {"BoardDetailSegue", "BoardVC", "VehicleVC", SegueKind::push}}};
}

}  // namespace fleetor
