#include "ui/containers/tab_bar.h"

#include <utility>

namespace fleetor {

void TabBar::setItems(std::vector<std::shared_ptr<TabBarItem>> items) {
  items_ = std::move(items);
  if (indexOfItem(selected_.get()) < 0) selected_ = nullptr;
  changed.emit();
}

int TabBar::indexOfItem(const TabBarItem* item) const {
  for (std::size_t i = 0; i < items_.size(); ++i)
    if (items_[i].get() == item) return static_cast<int>(i);
  return -1;
}

void TabBar::tap(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= items_.size()) return;
  const auto item = items_[static_cast<std::size_t>(index)];
  setSelectedItem(item);
  if (delegate_) delegate_->tabBarDidSelectItem(*this, *item);
}

}  // namespace fleetor
