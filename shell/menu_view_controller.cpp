#include "shell/menu_view_controller.h"

#include <utility>

#include "service/api.h"
#include "shell/base/base_navigation_controller.h"
#include "shell/logout_confirmation.h"
#include "ui/containers/sw_reveal_view_controller.h"
#include "ui/storyboard.h"

namespace fleetor {

MenuViewController::MenuViewController(Environment& environment, std::shared_ptr<KnownAccount> known)
    : BaseViewController(environment), known_(std::move(known)) {
  setTitle(localized("Menu"));
  outlet("accountLabel", accountLabel_);
  accountChanged_ = known_->changed.connect([this] { accountLabel_.setText(known_->name()); });
  accountLabel_.setText(known_->name());
  addEntry(vehiclesButton_, "vehiclesButton", "BtnVehicles", "My Vehicles",
           &MenuViewController::showVehicles);
  addEntry(fleetButton_, "fleetButton", "BtnFleet", "Fleet", &MenuViewController::showFleet);
  addEntry(accountButton_, "accountButton", "BtnAccount", "Account", &MenuViewController::showAccount);
  addEntry(aboutButton_, "aboutButton", "BtnAbout", "About", &MenuViewController::showAbout);
  addEntry(logoutButton_, "logoutButton", "BtnLogout", "Log out", &MenuViewController::logout);
}

void MenuViewController::addEntry(Button& button, const char* outletName, const char* image,
                                  const char* titleKey, Entry action) {
  outlet(outletName, button);
  button.setImage(image);
  button.setTitle(localized(titleKey));
  button.setAction([this, action](Component& sender) { (this->*action)(sender); });
}

void MenuViewController::viewDidLoad() {
  BaseViewController::viewDidLoad();
  markFront();
}

void MenuViewController::viewWillAppear(bool animated) {
  BaseViewController::viewWillAppear(animated);
  setFrontTakesTouches(false);
  markFront();
}

void MenuViewController::viewWillDisappear(bool animated) {
  BaseViewController::viewWillDisappear(animated);
  setFrontTakesTouches(true);
}

void MenuViewController::setFrontTakesTouches(bool takes) {
  const auto* reveal = revealViewController();
  if (environment().device.isPad() || !reveal || !reveal->frontViewController()) return;
  reveal->frontViewController()->view().setUserInteractionEnabled(takes);
}

void MenuViewController::markFront() {
  const auto* reveal = revealViewController();
  const auto* front =
      reveal ? dynamic_cast<NavigationController*>(reveal->frontViewController().get()) : nullptr;
  const std::string shown = front ? front->viewControllers().front()->storyboardIdentifier() : "";
  vehiclesButton_.setSelected(shown == "VehiclesVC");
  fleetButton_.setSelected(shown == "BoardVC");
  accountButton_.setSelected(shown == "AccountVC");
  aboutButton_.setSelected(shown == "AboutVC");
}

void MenuViewController::showVehicles(Component&) {
  showControllerWithStoryboardId("VehiclesVC");
}

void MenuViewController::showFleet(Component&) {
  showControllerWithStoryboardId("BoardVC");
}

void MenuViewController::showAccount(Component&) {
  showControllerWithStoryboardId("AccountVC");
}

void MenuViewController::showAbout(Component&) {
  showControllerWithStoryboardId("AboutVC");
}

void MenuViewController::showControllerWithStoryboardId(const std::string& identifier) {
  auto* reveal = revealViewController();
  if (!reveal) return;
  const auto front = BaseNavigationController::initWithRootViewController(
      environment(), storyboard()->instantiateViewControllerWithIdentifier(identifier));
  if (!environment().device.isPad()) {
    reveal->pushFrontViewControllerAnimated(front, true);
    markFront();
    return;
  }
  reveal->setFrontViewControllerAnimated(front, true);
  const Rect menu = view().frame();
  Rect frame = front->view().frame();
  frame.width = reveal->view().frame().width - menu.width;
  frame.height = menu.height;
  front->view().setFrame(frame);
}

void MenuViewController::logout(Component&) {
  showLogoutConfirmation(environment(), sharedFrom(this));
}

void MenuViewController::alertViewClickedButtonAtIndex(AlertView&, int index) {
  if (index == logoutConfirmed) API::logoutUser();
}

}  // namespace fleetor
