#include "shell/app_delegate.h"

#include "board/board_view_controller.h"
#include "service/api.h"
#include "shell/base/base_navigation_controller.h"
#include "shell/beside_rear.h"
#include "shell/empty_view_controller.h"
#include "shell/login_view_controller.h"
#include "shell/main_view_controller.h"
#include "shell/menu_view_controller.h"
#include "shell/sheet_page.h"
#include "shell/vehicles_table_view_controller.h"
#include "ui/appearance.h"
#include "ui/containers/window.h"
#include "ui/storyboard.h"

namespace fleetor {

namespace {
constexpr const char* firstRunKey = "FirstRun";  // also the value
constexpr Color navigationBarColor{0.67, 0.76, 0.80, 1.0};
constexpr double listWidth = 300.0;
}  // namespace

bool AppDelegate::applicationDidFinishLaunchingWithOptions() {
  // The key store outlives an installation, and a new installation starts signed out. The token is removed
  // before the mark is set, so that an interrupted first start is repeated.
  if (!standardSettings_.object(firstRunKey)) {
    API::forgetStored();
    standardSettings_.setObject(std::string(firstRunKey), firstRunKey);
    standardSettings_.synchronize();
  }
  showChooser_ = false;
  API::setAPIBaseURLWithString(serviceURL_);
  API::configureRequest();
  setAppearance();
  return true;
}

void AppDelegate::setAppearance() {
  NavigationBarAppearance bar;
  bar.backgroundImageColor = navigationBarColor;
  bar.barTintColor = navigationBarColor;
  bar.tintColor = whiteColor;
  bar.titleColor = whiteColor;
  bar.backIndicatorImage = "NavBack";
  bar.backIndicatorTransitionMaskImage = "NavBack";
  bar.shadowImage = "NavShadow";
  bar.translucent = environment_.device.systemVersion() < 8.0;
  environment_.appearance.setNavigationBar(bar);
  environment_.appearance.setProgressOverlay({clearColor, whiteColor});
}

void AppDelegate::showMainOrLogin() {
  Window& window = environment_.application->window();
  if (API::isLogged())
    window.setRootViewController(makeTopLevel().container);
  else
    window.setRootViewController(
        environment_.application->storyboard().instantiate<LoginViewController>("LoginVC"));
}

AppDelegate::TopLevel AppDelegate::makeTopLevel() {
  Storyboard& storyboard = environment_.application->storyboard();
  const auto container = storyboard.instantiate<MainViewController>("MainVC");
  container->setShowChooser(showChooser_);
  showChooser_ = false;
  const auto list = storyboard.instantiate<VehiclesTableViewController>("VehiclesVC");
  const auto stack = BaseNavigationController::initWithRootViewController(environment_, list);
  if (environment_.device.isPad()) {
    container->setRearViewRevealWidth(listWidth);
    container->setRearViewControllerAnimated(stack, false);
    container->setFrontViewControllerAnimated(storyboard.instantiate<EmptyViewController>("EmptyVC"), false);
    placeFrontBesideRear(*container);
  } else {
    container->setFrontViewControllerAnimated(stack, false);
    container->setRearViewControllerAnimated(storyboard.instantiate<MenuViewController>("MenuVC"), false);
  }
  return {container, list};
}

void AppDelegate::changeOver() {
  Window& window = environment_.application->window();
  const auto before = std::dynamic_pointer_cast<MainViewController>(window.rootViewController());
  if (!before) return;
  const auto [container, list] = makeTopLevel();
  std::string page;
  bool hadFleet = false;
  bool hasVehicle = false;
  for (const auto& side : {before->rearViewController(), before->frontViewController()}) {
    const auto* const stack = dynamic_cast<NavigationController*>(side.get());
    if (!stack) continue;
    for (const auto& screen : stack->viewControllers()) {
      if (auto* const listBefore = dynamic_cast<VehiclesTableViewController*>(screen.get())) {
        list->continueFrom(*listBefore);
      } else if (auto* const pagerBefore = dynamic_cast<VehicleViewController*>(screen.get())) {
        const auto pager =
            environment_.application->storyboard().instantiate<VehicleViewController>("VehicleVC");
        pager->continueFrom(*pagerBefore);
        list->show(pager);
        hasVehicle = true;
      } else if (dynamic_cast<BoardViewController*>(screen.get())) {
        hadFleet = true;
      } else if (dynamic_cast<SheetPage*>(screen.get())) {
        page = screen->storyboardIdentifier();
      }
    }
  }
  if (hadFleet && !hasVehicle) list->showFleet();
  window.setRootViewController(container);
  if (!page.empty()) list->presentFormSheet(page);
}

bool AppDelegate::applicationOpenURLSourceApplicationAnnotation(const std::string& url, const std::string&) {
  if (!url.ends_with("vehicles")) return false;
  const auto& root = environment_.application->window().rootViewController();
  if (const auto container = std::dynamic_pointer_cast<MainViewController>(root)) {
    showChooser_ = false;
    container->performSegueWithIdentifier("ChooseSegue", static_cast<ApplicationDelegate*>(this));
  } else {
    showChooser_ = true;
  }
  return true;
}

}  // namespace fleetor
