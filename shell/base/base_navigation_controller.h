#pragma once

#include <memory>
#include <utility>

#include "ui/containers/navigation_controller.h"

namespace fleetor {

/// Holds every navigation stack of the client; light status bar texts over the dark bar.
class BaseNavigationController final : public NavigationController {
 public:
  static std::shared_ptr<BaseNavigationController> initWithRootViewController(
      Environment& environment, std::shared_ptr<ViewController> root) {
    std::shared_ptr<BaseNavigationController> navigation(new BaseNavigationController(environment));
    navigation->setRoot(std::move(root));
    return navigation;
  }

  StatusBarStyle preferredStatusBarStyle() const override { return StatusBarStyle::lightContent; }

 private:
  explicit BaseNavigationController(Environment& environment) : NavigationController(environment) {}
};

}  // namespace fleetor
