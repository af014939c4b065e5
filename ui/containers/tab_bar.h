#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ui/component.h"
#include "ui/geometry.h"

namespace fleetor {

class TabBar;

/// The images keep their own colours.
class TabBarItem : public Component {
 public:
  const std::string& title() const { return title_; }
  void setTitle(std::string title) { assign(title_, std::move(title)); }

  const std::string& image() const { return image_; }
  void setImage(std::string name) { assign(image_, std::move(name)); }

  const std::string& selectedImage() const { return selectedImage_; }
  void setSelectedImage(std::string name) { assign(selectedImage_, std::move(name)); }

  /// Why the item has a mark, in the user's language; empty: it has none.
  const std::string& mark() const { return mark_; }
  void setMark(std::string reason) { assign(mark_, std::move(reason)); }

  std::string accessibleName() const override { return title_ + (mark_.empty() ? "" : ", ") + mark_; }

 private:
  std::string title_;
  std::string image_;
  std::string selectedImage_;
  std::string mark_;
};

class TabBarDelegate {
 public:
  virtual ~TabBarDelegate() = default;

  /// The user tapped that item. It is selected now and may have been before.
  virtual void tabBarDidSelectItem(TabBar& tabBar, TabBarItem& item) = 0;
};

class TabBar : public Component {
 public:
  const std::vector<std::shared_ptr<TabBarItem>>& items() const { return items_; }
  void setItems(std::vector<std::shared_ptr<TabBarItem>> items);

  /// Index of the item among the bar's items, or -1.
  int indexOfItem(const TabBarItem* item) const;

  /// Null while nothing is selected. Setting it does not call the delegate.
  TabBarItem* selectedItem() const { return selected_.get(); }
  void setSelectedItem(const std::shared_ptr<TabBarItem>& item) { assign(selected_, item); }

  /// The user taps an item.
  void tap(int index);

  const std::optional<Color>& barTintColor() const { return barTintColor_; }
  void setBarTintColor(const Color& color) { assign(barTintColor_, std::optional<Color>(color)); }
  bool translucent() const { return translucent_; }
  void setTranslucent(bool translucent) { assign(translucent_, translucent); }

  /// Weak: must outlive the bar or be reset.
  void setDelegate(TabBarDelegate* delegate) { delegate_ = delegate; }

 private:
  std::vector<std::shared_ptr<TabBarItem>> items_;
  std::shared_ptr<TabBarItem> selected_;
  std::optional<Color> barTintColor_;
  bool translucent_ = true;
  TabBarDelegate* delegate_ = nullptr;
};

}  // namespace fleetor
