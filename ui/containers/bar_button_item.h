#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ui/controls/controls.h"
#include "ui/environment.h"

namespace fleetor {

enum class SystemItem { none, done, cancel, flexibleSpace };

/// A button of a navigation bar or toolbar.
class BarButtonItem : public Button {
 public:
  /// `renderingOriginal`: the image keeps its own colours instead of taking the bar's tint.
  static std::shared_ptr<BarButtonItem> initWithImage(const std::string& image, bool renderingOriginal,
                                                      Action action);

  /// A standard button, with its title in the user's language.
  static std::shared_ptr<BarButtonItem> initWithBarButtonSystemItem(Environment& environment, SystemItem kind,
                                                                    Action action);

  SystemItem systemItem() const { return systemItem_; }
  bool renderingOriginal() const { return renderingOriginal_; }

 private:
  SystemItem systemItem_ = SystemItem::none;
  bool renderingOriginal_ = false;
};

using BarButtonItems = std::vector<std::shared_ptr<BarButtonItem>>;

/// What a screen shows in the navigation bar above it. Without a left button, a screen that is not the first
/// of its stack gets the bar's back button.
class NavigationItem : public Component {
 public:
  const BarButtonItems& leftBarButtonItems() const { return left_; }
  void setLeftBarButtonItem(std::shared_ptr<BarButtonItem> item) { setLeftBarButtonItems({std::move(item)}); }
  void setLeftBarButtonItems(BarButtonItems items) { assign(left_, std::move(items)); }

  /// Taps the first left button. False: there is no left button.
  bool tapLeftButton();

  const BarButtonItems& rightBarButtonItems() const { return right_; }
  void setRightBarButtonItem(std::shared_ptr<BarButtonItem> item) {
    setRightBarButtonItems({std::move(item)});
  }
  void setRightBarButtonItems(BarButtonItems items) { assign(right_, std::move(items)); }

 private:
  BarButtonItems left_;
  BarButtonItems right_;
};

/// A row of buttons, such as the one above a keyboard.
class Toolbar : public Component {
 public:
  Toolbar(const Rect& frame, BarButtonItems items) : frame_(frame), items_(std::move(items)) {}

  const Rect& frame() const { return frame_; }
  const BarButtonItems& items() const { return items_; }

 private:
  Rect frame_;
  BarButtonItems items_;
};

}  // namespace fleetor
