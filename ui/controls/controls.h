#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ui/component.h"
#include "ui/geometry.h"

namespace fleetor {

/// What a control calls when the user operates it; the argument is the control.
using Action = std::function<void(Component& sender)>;

/// A part of a text in UTF-8: from byte `begin` to before byte `end`.
struct TextRange {
  std::size_t begin = 0;
  std::size_t end = 0;

  friend bool operator==(const TextRange&, const TextRange&) = default;
};

class Label : public Component {
 public:
  const std::string& text() const { return text_; }
  void setText(std::string text) { assign(text_, std::move(text)); }

  /// Whether it is drawn in a weaker colour, because its text may no longer be true.
  bool faded() const { return faded_; }
  void setFaded(bool faded) { assign(faded_, faded); }

  /// Parts of the text that stand out, in order, without overlaps. Set them after the text.
  const std::vector<TextRange>& marks() const { return marks_; }
  void setMarks(std::vector<TextRange> marks) { assign(marks_, std::move(marks)); }

  std::string accessibleName() const override { return text_; }

 private:
  std::string text_;
  std::vector<TextRange> marks_;
  bool faded_ = false;
};

class ImageView : public Component {
 public:
  /// Name of the image resource. Nothing is shown without such a resource.
  const std::string& image() const { return image_; }
  void setImage(std::string name) { assign(image_, std::move(name)); }

  double rotation() const { return rotation_; }  ///< degrees, clockwise
  void setRotation(double degrees) { assign(rotation_, degrees); }

  /// Of the edge of the disc that the image lies on; none: the disc has no edge.
  const std::optional<Color>& ringColor() const { return ringColor_; }
  void setRingColor(std::optional<Color> color) { assign(ringColor_, color); }

 private:
  std::string image_;
  double rotation_ = 0;
  std::optional<Color> ringColor_;
};

class ActivityIndicator : public Component {
 public:
  bool isAnimating() const { return animating_; }  ///< hidden while it is not
  void startAnimating() { assign(animating_, true); }
  void stopAnimating() { assign(animating_, false); }

 private:
  bool animating_ = false;
};

class Button : public Component {
 public:
  const std::string& title() const { return title_; }
  void setTitle(std::string title) { assign(title_, std::move(title)); }

  const std::string& image() const { return image_; }
  void setImage(std::string name) { assign(image_, std::move(name)); }

  bool selected() const { return selected_; }
  void setSelected(bool selected) { assign(selected_, selected); }

  bool enabled() const { return enabled_; }
  void setEnabled(bool enabled) { assign(enabled_, enabled); }

  void setAction(Action action) { action_ = std::move(action); }

  /// The user taps the button. The action may destroy it.
  void tap() {
    if (!enabled_ || !action_) return;
    const Action action = action_;
    action(*this);
  }

  std::string accessibleName() const override {
    return title_.empty() ? Component::accessibleName() : title_;
  }

 private:
  std::string title_;
  std::string image_;
  bool selected_ = false;
  bool enabled_ = true;
  Action action_;
};

/// A button that shows a spinner in place of its title while it is loading. It still takes taps then.
class LoadingButton : public Button {
 public:
  bool loading() const { return loading_; }
  void setLoading(bool loading) { assign(loading_, loading); }

  double cornerRadius() const { return cornerRadius_; }  ///< points
  void setCornerRadius(double points) { assign(cornerRadius_, points); }

 private:
  bool loading_ = false;
  double cornerRadius_ = 0;
};

}  // namespace fleetor
