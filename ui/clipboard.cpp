#include "ui/clipboard.h"

#include "ui/containers/window.h"

namespace fleetor {

namespace {
constexpr double toastSeconds = 3;
}

void copyToClipboard(Environment& environment, const std::string& text) {
  environment.device.setClipboard(text);
  if (environment.window)
    environment.window->showToast(environment.device.localizedString("Copied"), toastSeconds, false);
}

}  // namespace fleetor
