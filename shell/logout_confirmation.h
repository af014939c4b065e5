#pragma once

#include <memory>
#include <utility>

#include "ui/controls/alert_view.h"

namespace fleetor {

/// Index of the button that confirms.
inline constexpr int logoutConfirmed = 1;

/// Asks whether the user wants to sign out. The delegate receives the answer.
inline void showLogoutConfirmation(Environment& environment, std::weak_ptr<AlertViewDelegate> delegate) {
  const auto localized = [&](const char* key) { return environment.device.localizedString(key); };
  AlertView::initWithTitle(environment, localized("Confirmation"),
                           localized("Are you sure you want to log out?"), std::move(delegate),
                           localized("Cancel"), {localized("Log out")})
      ->show();
}

}  // namespace fleetor
