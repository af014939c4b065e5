#include "ui/controls/action_sheet_date_picker.h"

#include <utility>

#include "ui/containers/window.h"

namespace fleetor {

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
