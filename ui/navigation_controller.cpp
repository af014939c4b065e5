#include "ui/navigation_controller.h"

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
  return popTo(stack_.size() - 1, animated).front();
}

std::vector<std::shared_ptr<ViewController>> NavigationController::popToRootViewControllerAnimated(
    bool animated) {
  const auto self = shared_from_this();
  completeTransitions();
  return stack_.size() < 2 ? Controllers{} : popTo(1, animated);
}

ViewController::Controllers NavigationController::popTo(std::size_t size, bool animated) {
  const auto boundary = stack_.begin() + static_cast<std::ptrdiff_t>(size);
  Controllers popped(boundary, stack_.end());
  stack_.erase(boundary, stack_.end());
  exchange(TransitionKind::pop, duration::navigation, {popped.back()}, {stack_.back()}, animated,
           [this, popped] {
             for (const auto& controller : popped)
               disown(controller);
           });
  return popped;
}

}  // namespace fleetor
