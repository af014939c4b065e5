#pragma once

#include <memory>
#include <vector>

#include "ui/view_controller.h"

namespace fleetor {

/// The bar over a navigation stack; its look otherwise is the shared one (Appearance).
class NavigationBar : public Component {
 public:
  explicit NavigationBar(bool translucent) : translucent_(translucent) {}

  bool translucent() const { return translucent_; }
  void setTranslucent(bool translucent) { assign(translucent_, translucent); }

 private:
  bool translucent_;
};

/// A stack of screens of which the top one shows. Never empty: the root cannot be popped.
class NavigationController : public ViewController {
 public:
  static std::shared_ptr<NavigationController> initWithRootViewController(
      Environment& environment, std::shared_ptr<ViewController> root);

  /// Bottom first.
  const std::vector<std::shared_ptr<ViewController>>& viewControllers() const { return stack_; }
  const std::shared_ptr<ViewController>& topViewController() const { return stack_.back(); }

  void pushViewController(std::shared_ptr<ViewController> controller, bool animated);

  /// The screen that was taken off, or none when only the root was there. It stays in the tree until the
  /// transition is over.
  std::shared_ptr<ViewController> popViewControllerAnimated(bool animated);

  /// In the top screen, or to the one below; a presented stack ends at the left button of its root.
  bool goBack() override;

  NavigationBar& navigationBar() { return navigationBar_; }

  StatusBarStyle preferredStatusBarStyle() const override {
    return topViewController()->preferredStatusBarStyle();
  }

 protected:
  /// For subclasses, whose makers set the root right after construction.
  explicit NavigationController(Environment& environment);
  void setRoot(std::shared_ptr<ViewController> root);
  Controllers visibleChildViewControllers() const override { return {stack_.back()}; }

 private:
  Controllers stack_;
  NavigationBar navigationBar_;
};

}  // namespace fleetor
