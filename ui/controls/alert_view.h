#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ui/component.h"
#include "ui/environment.h"

namespace fleetor {

class AlertView;

class AlertViewDelegate {
 public:
  virtual ~AlertViewDelegate() = default;

  /// The user tapped that button, and the alert has closed. Index 0 is the cancel button.
  virtual void alertViewClickedButtonAtIndex(AlertView& alertView, int index) = 0;
};

/// A question that must be answered before anything else. The window owns it from `show` until a button is
/// tapped or a new root screen removes it without an answer.
class AlertView : public Component, public std::enable_shared_from_this<AlertView> {
 public:
  static std::shared_ptr<AlertView> initWithTitle(Environment& environment, std::string title,
                                                  std::string message,
                                                  std::weak_ptr<AlertViewDelegate> delegate,
                                                  std::string cancelButtonTitle,
                                                  std::vector<std::string> otherButtonTitles);

  const std::string& title() const { return title_; }
  const std::string& message() const { return message_; }
  const std::vector<std::string>& buttonTitles() const { return buttonTitles_; }  ///< cancel first

  void show();

  /// The user taps that button: the alert closes, then the delegate is called if it still exists.
  void tapButton(int index);

 private:
  explicit AlertView(Environment& environment) : environment_(environment) {}

  Environment& environment_;
  std::string title_;
  std::string message_;
  std::weak_ptr<AlertViewDelegate> delegate_;
  std::vector<std::string> buttonTitles_;
};

}  // namespace fleetor
