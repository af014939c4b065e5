#pragma once

#include <memory>
#include <string>

#include "ui/containers/bar_button_item.h"
#include "ui/environment.h"

namespace fleetor {

class Keyboard;
class TextField;

class TextFieldDelegate {
 public:
  virtual ~TextFieldDelegate() = default;

  /// The user pressed the return key in that field.
  virtual bool textFieldShouldReturn(TextField& textField) = 0;

  /// The text has changed.
  virtual void textFieldDidChange(TextField& /*textField*/) {}
};

/// One line of text that the user can edit. At most one field of the window has the input focus (is the first
/// responder); the keyboard is visible meanwhile.
class TextField : public Component {
 public:
  explicit TextField(Environment& environment) : environment_(environment) {}
  ~TextField() override;

  const std::string& text() const { return text_; }
  void setText(std::string text);  ///< by the screen and by the user's typing

  const std::string& placeholder() const { return placeholder_; }
  void setPlaceholder(std::string text) { assign(placeholder_, std::move(text)); }

  bool secureTextEntry() const { return secureTextEntry_; }  ///< shown as dots, not used for suggestions
  void setSecureTextEntry(bool secure) { assign(secureTextEntry_, secure); }

  bool invalid() const { return invalid_; }  ///< what was typed has been refused
  void setInvalid(bool invalid) { assign(invalid_, invalid); }

  /// Weak: must outlive the field or be reset.
  void setDelegate(TextFieldDelegate* delegate) { delegate_ = delegate; }

  const std::shared_ptr<Toolbar>& inputAccessoryView() const { return inputAccessoryView_; }
  void setInputAccessoryView(std::shared_ptr<Toolbar> view) { assign(inputAccessoryView_, std::move(view)); }

  bool isFirstResponder() const;
  void becomeFirstResponder();
  void resignFirstResponder();

  /// The user presses the return key.
  void pressReturn() {
    if (delegate_) delegate_->textFieldShouldReturn(*this);
  }

  std::string accessibleName() const override {
    return Component::accessibleName().empty() ? placeholder_ : Component::accessibleName();
  }

 private:
  Keyboard* keyboard() const;

  Environment& environment_;
  std::string text_;
  std::string placeholder_;
  bool secureTextEntry_ = false;
  bool invalid_ = false;
  TextFieldDelegate* delegate_ = nullptr;
  std::shared_ptr<Toolbar> inputAccessoryView_;
};

/// The on-screen keyboard of the window. It opens when a field takes the focus, stays while the focus moves
/// from field to field, and closes when no field has it. A notification announces both.
class Keyboard : public Component {
 public:
  explicit Keyboard(Environment& environment) : environment_(environment) {}

  TextField* firstResponder() const { return firstResponder_; }
  bool visible() const { return firstResponder_ != nullptr; }

  /// Null closes the keyboard.
  void setFirstResponder(TextField* field);

  /// The field is being destroyed.
  void forget(const TextField& field);

  /// Height in points that the visible keyboard covers; 0 with a hardware keyboard. A change while it is
  /// visible is announced like an opening.
  double height() const { return height_; }
  void setHeight(double points);

 private:
  void announce(const char* name, double height);

  Environment& environment_;
  TextField* firstResponder_ = nullptr;
  double height_ = 0;
};

}  // namespace fleetor
