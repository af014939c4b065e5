#pragma once

#include <memory>
#include <vector>

#include "ui/containers/drag.h"
#include "ui/containers/view_controller.h"

namespace fleetor {

class SwipeTabBarController;

class SwipeTabBarControllerDelegate {
 public:
  virtual ~SwipeTabBarControllerDelegate() = default;

  /// The user's swipe ended on page `index`; `fromIndex` may be the same page. The pages have appeared and
  /// disappeared already.
  virtual void swipeTabBarControllerDidScrollToIndexFromIndex(SwipeTabBarController& controller, int index,
                                                              int fromIndex) = 0;
};

/// Pages side by side, one of them visible. It appears and disappears with the pager and when the page
/// changes.
class SwipeTabBarController : public ViewController {
 public:
  explicit SwipeTabBarController(Environment& environment) : ViewController(environment) {}

  const std::vector<std::shared_ptr<ViewController>>& viewControllers() const { return pages_; }

  /// Installs the pages, loads the views of all and shows the first.
  void setViewControllers(std::vector<std::shared_ptr<ViewController>> pages);

  /// 0 while there are no pages.
  int selectedIndex() const { return selectedIndex_; }

  /// By the program: the delegate is not called. An index without a page is ignored.
  void setSelectedIndexAnimated(int index, bool animated);

  /// By the user: the page changes, then the delegate is called. An index without a page is ignored.
  void scrollToIndex(int index);

  /// By the user, whose drag of a page of `width` points ends: as `scrollToIndex`, for the page that follows
  /// in its direction, or the same one.
  void endDrag(const Drag& drag, double width);

  /// Weak: must outlive the pager or be reset.
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
