#pragma once

#include <memory>
#include <utility>

#include "ui/alert_view.h"

namespace fleetor {

/// Button of the confirmation that signs the user out; any other leaves everything as it was.
inline constexpr int logoutConfirmed = 1;

/// Asks whether the user wants to sign out. The delegate hears the answer.
inline void showLogoutConfirmation(Environment& environment, std::weak_ptr<AlertViewDelegate> delegate) {
  const auto localized = [&](const char* key) { return environment.device.localizedString(key); };
  AlertView::initWithTitle(environment, localized("Confirmation"),
                           localized("Are you sure you want to log out?"), std::move(delegate),
                           localized("Cancel"), {localized("Log out")})
      ->show();
}

}  // namespace fleetor
