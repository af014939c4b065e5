#pragma once

#include "shell/base/base_view_controller.h"

namespace fleetor {

/// Signs the user in with name and password. On success the whole top level is rebuilt and this screen goes;
/// after a failure what was typed stays, and the focus goes back to where it was. A request in flight keeps
/// the screen alive.
class LoginViewController final : public BaseViewController, public TextFieldDelegate {
 public:
  explicit LoginViewController(Environment& environment);

  TextField& loginTextField() { return loginTextField_; }
  TextField& passwordTextField() { return passwordTextField_; }
  LoadingButton& loginButton() { return loginButton_; }  ///< loading: signing in, further taps are ignored

  void viewDidLoad() override;
  void onLoginClick(Component& sender);
  bool textFieldShouldReturn(TextField& textField) override;

 private:
  TextField loginTextField_;
  TextField passwordTextField_;
  LoadingButton loginButton_;
};

}  // namespace fleetor
