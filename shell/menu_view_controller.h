#pragma once

#include <memory>
#include <string>

#include "shell/base/base_view_controller.h"
#include "shell/known_account.h"
#include "ui/controls/alert_view.h"

namespace fleetor {

/// The side menu of a phone: names the account once it is known, changes the front screen of its container
/// and signs the user out. While it shows, the front screen takes no touches.
class MenuViewController final : public BaseViewController, public AlertViewDelegate {
 public:
  MenuViewController(Environment& environment, std::shared_ptr<KnownAccount> known);

  Label& accountLabel() { return accountLabel_; }  ///< whose account it is; empty while unknown

  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;
  void viewWillDisappear(bool animated) override;

  void showVehicles(Component& sender);
  void showFleet(Component& sender);
  void showAccount(Component& sender);
  void showAbout(Component& sender);
  void logout(Component& sender);  ///< asks first

  void alertViewClickedButtonAtIndex(AlertView& alertView, int index) override;

 private:
  using Entry = void (MenuViewController::*)(Component&);
  void addEntry(Button& button, const char* outletName, const char* image, const char* titleKey,
                Entry action);

  /// Puts a new screen of that identifier in front, even if one of the same kind is there.
  void showControllerWithStoryboardId(const std::string& identifier);
  void setFrontTakesTouches(bool takes);
  void markFront();  ///< selects the entry whose screen that is

  std::shared_ptr<KnownAccount> known_;
  Connection accountChanged_;
  Label accountLabel_;
  Button vehiclesButton_;
  Button fleetButton_;
  Button accountButton_;
  Button aboutButton_;
  Button logoutButton_;
};

}  // namespace fleetor
