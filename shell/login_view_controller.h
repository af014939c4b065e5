#pragma once

#include <memory>

#include "fleet/pinned_vehicles.h"
#include "shell/base/base_view_controller.h"

namespace fleetor {

/// Signs the user in with name and password. On success the top level is rebuilt without this screen. After a
/// failure the texts stay and the focus returns to its field; refused ones are marked until one of them
/// changes. A request in flight keeps the screen alive.
class LoginViewController final : public BaseViewController, public TextFieldDelegate {
 public:
  LoginViewController(Environment& environment, std::shared_ptr<PinnedVehicles> pins);

  TextField& loginTextField() { return loginTextField_; }
  TextField& passwordTextField() { return passwordTextField_; }
  Label& refusalLabel() { return refusalLabel_; }  ///< why the fields are marked; empty while they are not
  LoadingButton& loginButton() { return loginButton_; }  ///< loading: signing in, further taps are ignored

  void viewDidLoad() override;
  void onLoginClick(Component& sender);
  bool textFieldShouldReturn(TextField& textField) override;
  void textFieldDidChange(TextField& textField) override;

 private:
  void setInvalid(bool invalid);

  std::shared_ptr<PinnedVehicles> pins_;
  TextField loginTextField_;
  TextField passwordTextField_;
  Label refusalLabel_;
  LoadingButton loginButton_;
  Label capsLockLabel_;  ///< for as long as the device says so
};

}  // namespace fleetor
