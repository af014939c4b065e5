#include "ui/containers/navigation_controller.h"

#include <utility>

#include "ui/appearance.h"

namespace fleetor {

std::shared_ptr<NavigationController> NavigationController::initWithRootViewController(
    Environment& environment, std::shared_ptr<ViewController> root) {
  std::shared_ptr<NavigationController> navigation(new NavigationController(environment));
  navigation->setRoot(std::move(root));
  return navigation;
}

NavigationController::NavigationController(Environment& environment)
    : ViewController(environment), navigationBar_(environment.appearance.navigationBar().translucent) {}

void NavigationController::setRoot(std::shared_ptr<ViewController> root) {
  adopt(root);
  stack_ = {std::move(root)};
}

void NavigationController::pushViewController(std::shared_ptr<ViewController> controller, bool animated) {
  const auto self = shared_from_this();
  completeTransitions();
  const auto covered = stack_.back();
  adopt(controller);
  stack_.push_back(std::move(controller));
  exchange(TransitionKind::push, duration::navigation, {covered}, {stack_.back()}, animated);
}

std::shared_ptr<ViewController> NavigationController::popViewControllerAnimated(bool animated) {
  const auto self = shared_from_this();
  completeTransitions();
  if (stack_.size() < 2) return nullptr;
  auto popped = stack_.back();
  stack_.pop_back();
  exchange(TransitionKind::pop, duration::navigation, {popped}, {stack_.back()}, animated,
           [this, popped] { disown(popped); });
  return popped;
}

bool NavigationController::endDrag(const Drag& drag, double width) {
  return drag.direction(width / 3) > 0 && popViewControllerAnimated(true);
}

bool NavigationController::handleBack() {
  const auto top = stack_.back();
  if (top->handleBack()) return true;
  if (stack_.size() < 2 && !presentingViewController()) return false;
  return top->navigationItem().tapLeftButton() || popViewControllerAnimated(true);
}

}  // namespace fleetor
