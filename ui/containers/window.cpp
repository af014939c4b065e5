#include "ui/containers/window.h"

#include <algorithm>
#include <utility>

namespace fleetor {

Window::Window(Environment& environment)
    : environment_(environment),
      size_{environment.device.screenWidth(), environment.device.screenHeight()},
      keyboard_(environment) {
  environment_.window = this;
}

Window::~Window() {
  environment_.window = nullptr;
}

void Window::setRootViewController(std::shared_ptr<ViewController> root) {
  if (ViewController* top = topViewController()) top->completeTransitions();
  if (root == root_) return;
  const auto old = std::exchange(root_, std::move(root));
  // The screens may set another root while they appear and disappear.
  const auto shown = root_;
  const auto picker = std::exchange(datePicker_, nullptr);  // alive until its adapter has dropped it
  const auto sheet = std::exchange(actionSheet_, nullptr);
  alerts_.clear();

  // Topmost first. What a form sheet left visible disappears, too.
  ViewController::Controllers leaving;
  if (old) {
    leaving = old->presentedChain();
    leaving.push_back(old);
  }
  for (const auto& controller : leaving)
    controller->beginAppearanceTransition(false, false);
  if (shown && shown == root_) {
    shown->view_.setFrame({0, 0, size_.width, size_.height});
    shown->beginAppearanceTransition(true, false);
  }
  changed.emit();
  for (const auto& controller : leaving)
    controller->endAppearanceTransition();
  if (old) old->releasePresented();
  if (shown) shown->endAppearanceTransition();
}

ViewController* Window::topViewController() const {
  ViewController* top = root_.get();
  while (top && top->presentedViewController())
    top = top->presentedViewController().get();
  return top;
}

bool Window::goBack() {
  if (!alerts_.empty()) {
    const auto alert = alerts_.back();
    alert->tapButton(0);
    return true;
  }
  if (const auto sheet = actionSheet_) {
    sheet->cancel();
    return true;
  }
  if (const auto picker = datePicker_) {
    picker->cancel();
    return true;
  }
  ViewController* top = topViewController();
  if (!top) return false;
  const auto alive = top->shared_from_this();
  return alive->handleBack();
}

void Window::setSize(const Size& size) {
  if (!assign(size_, size) || !root_) return;
  root_->resize({0, 0, size.width, size.height});
}

void Window::showToast(const std::string& text, double seconds, bool rounded) {
  const auto same = std::ranges::find(toasts_, text, [](const auto& toast) { return toast->text(); });
  if (same == toasts_.end()) toasts_.push_back(std::make_shared<Toast>(text, seconds, rounded));
  if (toasts_.front()->text() == text) timeToast();
}

void Window::timeToast() {
  toastTimer_ = std::make_shared<bool>();
  const Seconds length = duration::toastFadeIn + Seconds(toasts_.front()->seconds());
  environment_.queues.mainAfter(length, [this, timer = std::weak_ptr(toastTimer_)] {
    if (timer.expired()) return;  // the window is destroyed, or the toast was shown again
    toasts_.pop_front();
    if (toasts_.empty())
      changed.emit();
    else
      timeToast();
  });
  changed.emit();
}

}  // namespace fleetor
