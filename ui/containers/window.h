#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "ui/containers/view_controller.h"
#include "ui/controls/action_sheet.h"
#include "ui/controls/action_sheet_date_picker.h"
#include "ui/controls/alert_view.h"
#include "ui/controls/progress_overlay.h"
#include "ui/controls/text_field.h"
#include "ui/controls/toast.h"

namespace fleetor {

/// The one window. `changed` reports a new root, toast, alert, picker, sheet or size. Main thread only.
class Window : public Component {
 public:
  explicit Window(Environment& environment);
  ~Window() override;

  const std::shared_ptr<ViewController>& rootViewController() const { return root_; }

  /// The old root and everything presented over it disappear, the new one appears, not animated. The old
  /// screens, the date picker, the sheet and the alerts are released without an answer.
  void setRootViewController(std::shared_ptr<ViewController> root);

  /// The screen on top: the last one presented, or the root.
  ViewController* topViewController() const;

  /// Points; at first the device's screen.
  const Size& size() const { return size_; }
  void setSize(const Size& size);

  /// The user wants to go back: cancels the alert, the sheet or the date picker, or goes one step back in the
  /// screen on top. False: there is nothing to go back from.
  bool goBack();

  Keyboard& keyboard() { return keyboard_; }

  /// Shows toasts one after the other. A text that shows already starts its time again; one that waits is not
  /// queued twice.
  void showToast(const std::string& text, double seconds, bool rounded);
  const Toast* toast() const { return toasts_.empty() ? nullptr : toasts_.front().get(); }

  ProgressOverlay& progressOverlay() { return progressOverlay_; }

  /// Oldest first; the last one is on top and the only one to answer.
  const std::vector<std::shared_ptr<AlertView>>& alerts() const { return alerts_; }
  const std::shared_ptr<ActionSheetDatePicker>& datePicker() const { return datePicker_; }
  const std::shared_ptr<ActionSheet>& actionSheet() const { return actionSheet_; }

 private:
  friend class ActionSheet;
  friend class AlertView;
  friend class ActionSheetDatePicker;

  void timeToast();  ///< starts the time of the front one

  Environment& environment_;
  Size size_;
  Keyboard keyboard_;
  ProgressOverlay progressOverlay_;
  std::shared_ptr<ViewController> root_;
  std::deque<std::shared_ptr<Toast>> toasts_;
  std::vector<std::shared_ptr<AlertView>> alerts_;
  std::shared_ptr<ActionSheetDatePicker> datePicker_;
  std::shared_ptr<ActionSheet> actionSheet_;
  std::shared_ptr<bool> toastTimer_;  ///< alive while its delayed call is the valid one
};

}  // namespace fleetor
