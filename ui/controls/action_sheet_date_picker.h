#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "ui/component.h"
#include "ui/environment.h"

namespace fleetor {

enum class DatePickerMode { date };

/// A sheet in which the user picks a day. The window owns it while it shows. Another picker or a new root
/// screen removes it without calling a block.
class ActionSheetDatePicker : public Component, public std::enable_shared_from_this<ActionSheetDatePicker> {
 public:
  using DoneBlock = std::function<void(Date selectedDate)>;
  using CancelBlock = std::function<void()>;

  /// Shows the picker, anchored at `origin`. Exactly one of the blocks is called when the user answers.
  static std::shared_ptr<ActionSheetDatePicker> showPickerWithTitle(Environment& environment,
                                                                    std::string title, DatePickerMode mode,
                                                                    Date selectedDate, DoneBlock doneBlock,
                                                                    CancelBlock cancelBlock,
                                                                    Component& origin);

  const std::string& title() const { return title_; }
  DatePickerMode mode() const { return mode_; }
  Component* origin() const { return origin_; }  ///< null once it is destroyed

  Date selectedDate() const { return selectedDate_; }
  void setSelectedDate(Date date) { assign(selectedDate_, date); }  ///< the user selects that date

  /// The user confirms or cancels: the picker closes, then the block is called.
  void done();
  void cancel();

 private:
  explicit ActionSheetDatePicker(Environment& environment) : environment_(environment) {}
  bool dismiss();

  Environment& environment_;
  std::string title_;
  DatePickerMode mode_ = DatePickerMode::date;
  Date selectedDate_{};
  DoneBlock doneBlock_;
  CancelBlock cancelBlock_;
  Component* origin_ = nullptr;
  Connection originDestroyed_;
};

}  // namespace fleetor
