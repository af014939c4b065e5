#pragma once

#include <memory>
#include <string>

#include "platform/queues.h"
#include "ui/application.h"
#include "ui/containers/view_controller.h"
#include "ui/controls/controls.h"
#include "ui/controls/text_field.h"
#include "ui/controls/view.h"
#include "ui/notification_center.h"

namespace fleetor {

/// What every screen of the client can do. Main thread only, except for the two operations that change
/// threads. A screen leaves the notification centre by itself when it is destroyed.
class BaseViewController : public ViewController {
 public:
  explicit BaseViewController(Environment& environment) : ViewController(environment) {}
  ~BaseViewController() override;

  /// True while a request of this screen is in flight; each completion clears it.
  bool isLoading() const { return loading_; }
  void setLoading(bool loading) { loading_ = loading; }

  /// Whether the screen lifts its content above the keyboard. Loading the screen switches it off, so it is
  /// switched on after that and before the screen appears.
  bool isHandlingKeyboard() const { return handleKeyboard_; }
  void setHandleKeyboard(bool handle) { handleKeyboard_ = handle; }

  /// Distance between the bottom of the scrolling content and the bottom of the screen. Set before loading.
  void setScrollViewBottomConstraint(std::weak_ptr<LayoutConstraint> constraint) {
    scrollViewBottomConstraint_ = std::move(constraint);
  }
  double scrollViewBottomConstant() const {
    return scrollViewBottomConstant_;
  }  ///< its resting value, points

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void viewWillDisappear(bool animated) override;
  StatusBarStyle preferredStatusBarStyle() const override { return StatusBarStyle::lightContent; }

  /// Any thread. The task never runs inline, even from the main thread.
  void runOnMainThread(Task task);
  void runInBackground(Task task);

  void showErrorToast(const std::string& message);
  void showSuccessToast(const std::string& message);

  ApplicationDelegate& appDelegate() const;

  /// Gives the field a keyboard toolbar with a Done button, unless it has one already.
  void accessoryViewForTextField(TextField& textField);
  void hideKeyboard(Component& sender);

 protected:
  /// The text in the user's language for an English one; the English one without a translation. What follows
  /// a "|" is not shown: it separates texts that are the same in English ("About|vehicle").
  std::string localized(const std::string& key) const;

  /// Subscribes this screen; all its subscriptions end together.
  void addObserver(const std::string& name, NotificationCenter::Handler handler);
  void removeFromNotificationCenter();

  /// Keeps the screen alive until a later call: `const auto self = sharedFrom(this);`
  template <class Screen>
  static std::shared_ptr<Screen> sharedFrom(Screen* screen) {
    return std::static_pointer_cast<Screen>(screen->shared_from_this());
  }

 private:
  void keyboardWillShown(const KeyboardInfo& info);
  void keyboardWillHide(const KeyboardInfo& info);

  bool loading_ = false;
  bool handleKeyboard_ = false;
  std::weak_ptr<LayoutConstraint> scrollViewBottomConstraint_;
  double scrollViewBottomConstant_ = 0;
};

}  // namespace fleetor
