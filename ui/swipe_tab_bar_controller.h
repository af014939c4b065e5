#pragma once

#include <memory>
#include <vector>

#include "ui/view_controller.h"

namespace fleetor {

class SwipeTabBarController;

class SwipeTabBarControllerDelegate {
 public:
  virtual ~SwipeTabBarControllerDelegate() = default;

  /// The user's swipe came to rest on page `index`; `fromIndex` may be the same page. The pages have been
  /// told already.
  virtual void swipeTabBarControllerDidScrollToIndexFromIndex(SwipeTabBarController& controller, int index,
                                                              int fromIndex) = 0;
};

/// Pages side by side of which one shows. It appears and disappears with the pager and whenever it is
/// changed.
class SwipeTabBarController : public ViewController {
 public:
  explicit SwipeTabBarController(Environment& environment) : ViewController(environment) {}

  const std::vector<std::shared_ptr<ViewController>>& viewControllers() const { return pages_; }

  /// Installs the pages and shows the first. All of them lie ready side by side, so the views of all load
  /// now.
  void setViewControllers(std::vector<std::shared_ptr<ViewController>> pages);

  /// 0 while there are no pages.
  int selectedIndex() const { return selectedIndex_; }

  /// By the program: the delegate does not hear of it. An index without a page is ignored.
  void setSelectedIndexAnimated(int index, bool animated);

  /// By the user: the page changes, then the delegate hears of it. An index without a page is ignored.
  void scrollToIndex(int index);

  /// Weak: must outlive the pager or be taken back.
  void setDelegate(SwipeTabBarControllerDelegate* delegate) { delegate_ = delegate; }
  SwipeTabBarControllerDelegate* delegate() const { return delegate_; }

 protected:
  Controllers visibleChildViewControllers() const override;

 private:
  Controllers pages_;
  int selectedIndex_ = 0;
  SwipeTabBarControllerDelegate* delegate_ = nullptr;
};

}  // namespace fleetor
