#include "ui/window.h"

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
  // What the screens do while they hear of this may put yet another root in place.
  const auto shown = root_;
  const auto picker = std::exchange(datePicker_, nullptr);  // alive until whoever draws it knows that it goes
  alerts_.clear();

  // Topmost first: what a form sheet left visible below it goes too.
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
  if (const auto picker = datePicker_) {
    picker->cancel();
    return true;
  }
  ViewController* top = topViewController();
  if (!top) return false;
  const auto alive = top->shared_from_this();
  return alive->goBack();
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
    if (timer.expired()) return;  // the window is gone, or the toast's time has begun anew
    toasts_.pop_front();
    if (toasts_.empty())
      changed.emit();
    else
      timeToast();
  });
  changed.emit();
}

std::shared_ptr<AlertView> AlertView::initWithTitle(Environment& environment, std::string title,
                                                    std::string message,
                                                    std::weak_ptr<AlertViewDelegate> delegate,
                                                    std::string cancelButtonTitle,
                                                    std::vector<std::string> otherButtonTitles) {
  std::shared_ptr<AlertView> alert(new AlertView(environment));
  alert->title_ = std::move(title);
  alert->message_ = std::move(message);
  alert->delegate_ = std::move(delegate);
  alert->buttonTitles_ = std::move(otherButtonTitles);
  alert->buttonTitles_.insert(alert->buttonTitles_.begin(), std::move(cancelButtonTitle));
  alert->setAccessibleName(alert->title_);
  return alert;
}

void AlertView::show() {
  Window* window = environment_.window;
  if (!window || std::ranges::find(window->alerts_, shared_from_this()) != window->alerts_.end()) return;
  window->alerts_.push_back(shared_from_this());
  window->changed.emit();
}

void AlertView::tapButton(int index) {
  const auto self = shared_from_this();
  Window* window = environment_.window;
  if (!window || std::erase(window->alerts_, self) == 0) return;
  window->changed.emit();
  if (const auto delegate = delegate_.lock()) delegate->alertViewClickedButtonAtIndex(*this, index);
}

std::shared_ptr<ActionSheetDatePicker> ActionSheetDatePicker::showPickerWithTitle(
    Environment& environment, std::string title, DatePickerMode mode, Date selectedDate, DoneBlock doneBlock,
    CancelBlock cancelBlock, Component& origin) {
  std::shared_ptr<ActionSheetDatePicker> picker(new ActionSheetDatePicker(environment));
  picker->title_ = std::move(title);
  picker->mode_ = mode;
  picker->selectedDate_ = selectedDate;
  picker->doneBlock_ = std::move(doneBlock);
  picker->cancelBlock_ = std::move(cancelBlock);
  picker->origin_ = &origin;
  picker->originDestroyed_ = origin.destroyed.connect([shown = picker.get()] { shown->origin_ = nullptr; });
  picker->setAccessibleName(picker->title_);
  if (Window* window = environment.window) {
    window->datePicker_ = picker;
    window->changed.emit();
  }
  return picker;
}

bool ActionSheetDatePicker::dismiss() {
  Window* window = environment_.window;
  if (!window || window->datePicker_.get() != this) return false;
  window->datePicker_ = nullptr;
  window->changed.emit();
  return true;
}

void ActionSheetDatePicker::done() {
  const auto self = shared_from_this();
  if (dismiss() && doneBlock_) doneBlock_(selectedDate_);
}

void ActionSheetDatePicker::cancel() {
  const auto self = shared_from_this();
  if (dismiss() && cancelBlock_) cancelBlock_();
}

}  // namespace fleetor
