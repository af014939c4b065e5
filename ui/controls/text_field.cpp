#include "ui/controls/text_field.h"

#include <utility>

#include "ui/containers/transition.h"
#include "ui/containers/window.h"
#include "ui/notification_center.h"

namespace fleetor {

TextField::~TextField() {
  if (Keyboard* board = keyboard()) board->forget(*this);
}

Keyboard* TextField::keyboard() const {
  return environment_.window ? &environment_.window->keyboard() : nullptr;
}

void TextField::setText(std::string text) {
  if (assign(text_, std::move(text)) && delegate_) delegate_->textFieldDidChange(*this);
}

bool TextField::isFirstResponder() const {
  const Keyboard* board = keyboard();
  return board && board->firstResponder() == this;
}

void TextField::becomeFirstResponder() {
  if (Keyboard* board = keyboard()) board->setFirstResponder(this);
}

void TextField::resignFirstResponder() {
  if (isFirstResponder()) keyboard()->setFirstResponder(nullptr);
}

void Keyboard::setFirstResponder(TextField* field) {
  if (field == firstResponder_) return;
  TextField* before = std::exchange(firstResponder_, field);
  if (before) before->changed.emit();
  if (firstResponder_ != field) return;
  if (field) field->changed.emit();
  if (!before) announce(UIKeyboardWillShowNotification, height_);
  if (!field) announce(UIKeyboardWillHideNotification, 0);
  changed.emit();
}

void Keyboard::forget(const TextField& field) {
  if (firstResponder_ != &field) return;
  firstResponder_ = nullptr;
  announce(UIKeyboardWillHideNotification, 0);
  changed.emit();
}

void Keyboard::setHeight(double points) {
  if (assign(height_, points) && visible()) announce(UIKeyboardWillShowNotification, height_);
}

void Keyboard::announce(const char* name, double height) {
  const Size size = environment_.window->size();
  environment_.notificationCenter.postNotificationName(
      name, KeyboardInfo{{0, size.height - height, size.width, height}, duration::keyboard.count()});
}

}  // namespace fleetor
