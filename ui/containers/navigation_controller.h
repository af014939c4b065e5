#pragma once

#include <memory>
#include <vector>

#include "ui/containers/drag.h"
#include "ui/containers/view_controller.h"

namespace fleetor {

/// The bar over a navigation stack. What it does not set comes from the shared Appearance.
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

  /// The removed screen, or null when only the root was left. It stays in the tree until the transition is
  /// over.
  std::shared_ptr<ViewController> popViewControllerAnimated(bool animated);

  /// The user's drag of the top screen, which is `width` points wide, ends: whether that popped it.
  bool endDrag(const Drag& drag, double width);

  /// Goes back inside the top screen, or leaves it by its left button or by popping it. The root of a
  /// presented stack is left by its left button.
  bool handleBack() override;

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
