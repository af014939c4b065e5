#include "shell/login_view_controller.h"

#include <utility>

#include "service/api.h"
#include "service/envelopes.h"
#include "service/session.h"
#include "ui/containers/window.h"

namespace fleetor {

namespace {
constexpr long wrongCredentials = 400;
}

LoginViewController::LoginViewController(Environment& environment, std::shared_ptr<PinnedVehicles> pins)
    : BaseViewController(environment),
      pins_(std::move(pins)),
      loginTextField_(environment),
      passwordTextField_(environment) {
  outlet("loginTextField", loginTextField_);
  outlet("passwordTextField", passwordTextField_);
  outlet("refusalLabel", refusalLabel_);
  outlet("loginButton", loginButton_);
  outlet("capsLockLabel", capsLockLabel_);
  capsLockLabel_.setText(localized("Caps Lock is on"));
  loginTextField_.setPlaceholder(localized("User name"));
  loginTextField_.setDelegate(this);
  passwordTextField_.setPlaceholder(localized("Password"));
  passwordTextField_.setSecureTextEntry(true);
  passwordTextField_.setDelegate(this);
  loginButton_.setTitle(localized("Sign in"));
  loginButton_.setAction([this](Component& sender) { onLoginClick(sender); });
}

void LoginViewController::viewDidLoad() {
  BaseViewController::viewDidLoad();
  loginButton_.setCornerRadius(5.0);
}

bool LoginViewController::textFieldShouldReturn(TextField& textField) {
  if (&textField == &loginTextField_)
    passwordTextField_.becomeFirstResponder();
  else
    onLoginClick(textField);
  return true;
}

void LoginViewController::textFieldDidChange(TextField&) {
  setInvalid(false);
}

void LoginViewController::setInvalid(bool invalid) {
  loginTextField_.setInvalid(invalid);
  passwordTextField_.setInvalid(invalid);
  refusalLabel_.setText(invalid ? localized("User name or password is wrong") : "");
}

void LoginViewController::onLoginClick(Component& sender) {
  if (loginButton_.loading()) return;
  const std::string user = loginTextField_.text();
  const std::string password = passwordTextField_.text();
  if (user.empty()) {
    loginTextField_.becomeFirstResponder();
    return;
  }
  if (password.empty()) {
    passwordTextField_.becomeFirstResponder();
    return;
  }
  TextField* const edited = environment().window->keyboard().firstResponder();
  hideKeyboard(sender);
  loginButton_.setLoading(true);

  const std::string uid = environment().device.identifierForVendor();
  const auto self = sharedFrom(this);
  API::postWithPath("/token?grant_type=password", {{"username", user}, {"password", password}, {"uid", uid}},
                    modelClass<TokenResponse>, {wrongCredentials},
                    [self, user, edited, session = Session()](auto response, auto kind, long status, auto&) {
                      const bool failed = kind != ResponseKindSuccess && !session.hasEnded();
                      if (kind == ResponseKindSuccess) {
                        self->pins_->chooseAccount(user);
                        API::loginUserWithToken(response->token->accessToken());
                      } else if (failed && kind == ResponseKindHTTP && status == wrongCredentials) {
                        self->setInvalid(true);
                        self->showErrorToast(self->localized(
                            "Unable to sign in - please verify your logon credentials and try again"));
                      }
                      self->loginButton_.setLoading(false);
                      if (failed && edited && !self->environment().window->keyboard().visible())
                        edited->becomeFirstResponder();
                    });
}

}  // namespace fleetor
