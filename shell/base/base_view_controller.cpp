#include "shell/base/base_view_controller.h"

#include <utility>

#include "ui/containers/navigation_controller.h"
#include "ui/containers/window.h"

namespace fleetor {

namespace {

constexpr double toastSeconds = 3;
constexpr double defaultKeyboardSeconds = 0.25;

Seconds keyboardSeconds(const KeyboardInfo& info) {
  return Seconds(info.duration == 0 ? defaultKeyboardSeconds : info.duration);
}

}  // namespace

BaseViewController::~BaseViewController() {
  removeFromNotificationCenter();
}

void BaseViewController::viewDidLoad() {
  ViewController::viewDidLoad();
  // Newer systems get this from the appearance that all bars share.
  if (environment().device.systemVersion() < 8.0)
    if (auto* navigation = navigationController()) navigation->navigationBar().setTranslucent(false);
  handleKeyboard_ = false;
  const auto constraint = scrollViewBottomConstraint_.lock();
  scrollViewBottomConstant_ = constraint ? constraint->constant() : 0;
}

void BaseViewController::viewDidAppear(bool animated) {
  ViewController::viewDidAppear(animated);
  if (!handleKeyboard_) return;
  addObserver(UIKeyboardWillShowNotification, [this](const Notification& notification) {
    if (const auto* info = std::any_cast<KeyboardInfo>(&notification.object)) keyboardWillShown(*info);
  });
  addObserver(UIKeyboardWillHideNotification, [this](const Notification& notification) {
    if (const auto* info = std::any_cast<KeyboardInfo>(&notification.object)) keyboardWillHide(*info);
  });
}

void BaseViewController::viewWillDisappear(bool animated) {
  ViewController::viewWillDisappear(animated);
  if (handleKeyboard_) removeFromNotificationCenter();
}

void BaseViewController::runOnMainThread(Task task) {
  environment().queues.main(std::move(task));
}

void BaseViewController::runInBackground(Task task) {
  environment().queues.global(std::move(task));
}

void BaseViewController::showErrorToast(const std::string& message) {
  environment().window->showToast(message, toastSeconds, false);
}

// Same appearance as an error; callers still state which of the two they mean.
void BaseViewController::showSuccessToast(const std::string& message) {
  environment().window->showToast(message, toastSeconds, false);
}

ApplicationDelegate& BaseViewController::appDelegate() const {
  return environment().application->delegate();
}

void BaseViewController::accessoryViewForTextField(TextField& textField) {
  if (textField.inputAccessoryView()) return;
  auto space = BarButtonItem::initWithBarButtonSystemItem(environment(), SystemItem::flexibleSpace, {});
  auto done = BarButtonItem::initWithBarButtonSystemItem(environment(), SystemItem::done,
                                                         [this](Component& sender) { hideKeyboard(sender); });
  textField.setInputAccessoryView(
      std::make_shared<Toolbar>(Rect{0, 0, 320, 44}, BarButtonItems{std::move(space), std::move(done)}));
}

void BaseViewController::hideKeyboard(Component&) {
  endEditing();
}

std::string BaseViewController::localized(const std::string& key) const {
  const std::string text = environment().device.localizedString(key);
  return text == key ? text.substr(0, text.find('|')) : text;
}

void BaseViewController::addObserver(const std::string& name, NotificationCenter::Handler handler) {
  environment().notificationCenter.addObserver(this, name, std::move(handler));
}

void BaseViewController::removeFromNotificationCenter() {
  environment().notificationCenter.removeObserver(this);
}

void BaseViewController::keyboardWillShown(const KeyboardInfo& info) {
  const auto constraint = scrollViewBottomConstraint_.lock();
  if (!constraint || constraint->constant() != scrollViewBottomConstant_) return;
  constraint->setConstant(info.frameEnd.height);
  view().animateLayout(keyboardSeconds(info));
}

void BaseViewController::keyboardWillHide(const KeyboardInfo& info) {
  const auto constraint = scrollViewBottomConstraint_.lock();
  if (!constraint || constraint->constant() == scrollViewBottomConstant_) return;
  constraint->setConstant(scrollViewBottomConstant_);
  view().animateLayout(keyboardSeconds(info));
}

}  // namespace fleetor
