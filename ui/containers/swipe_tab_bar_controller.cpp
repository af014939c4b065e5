#include "ui/containers/swipe_tab_bar_controller.h"

#include <algorithm>
#include <utility>

namespace fleetor {

void SwipeTabBarController::setViewControllers(std::vector<std::shared_ptr<ViewController>> pages) {
  const auto self = shared_from_this();
  completeTransitions();
  const Controllers old = std::exchange(pages_, std::move(pages));
  const Controllers outgoing =
      old.empty() ? Controllers{} : Controllers{old[static_cast<std::size_t>(selectedIndex_)]};
  selectedIndex_ = 0;
  for (const auto& page : pages_) {
    adopt(page);
    page->loadViewIfNeeded();
  }
  exchange(TransitionKind::exchange, duration::page, outgoing, visibleChildViewControllers(), false,
           [this, old] {
             for (const auto& page : old)
               disown(page);
           });
}

void SwipeTabBarController::setSelectedIndexAnimated(int index, bool animated) {
  const auto self = shared_from_this();
  if (index < 0 || static_cast<std::size_t>(index) >= pages_.size()) return;
  completeTransitions();
  if (index == selectedIndex_) return;
  const Controllers outgoing = visibleChildViewControllers();
  selectedIndex_ = index;
  exchange(TransitionKind::exchange, duration::page, outgoing, visibleChildViewControllers(), animated);
}

void SwipeTabBarController::scrollToIndex(int index) {
  const auto self = shared_from_this();
  if (index < 0 || static_cast<std::size_t>(index) >= pages_.size()) return;
  const int from = selectedIndex_;
  setSelectedIndexAnimated(index, false);
  if (delegate_) delegate_->swipeTabBarControllerDidScrollToIndexFromIndex(*this, index, from);
}

void SwipeTabBarController::endDrag(const Drag& drag, double width) {
  const int last = static_cast<int>(pages_.size()) - 1;
  scrollToIndex(std::clamp(selectedIndex_ - drag.direction(width / 4), 0, std::max(last, 0)));
}

ViewController::Controllers SwipeTabBarController::visibleChildViewControllers() const {
  return pages_.empty() ? Controllers{} : Controllers{pages_[static_cast<std::size_t>(selectedIndex_)]};
}

}  // namespace fleetor
