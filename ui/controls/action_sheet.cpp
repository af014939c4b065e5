#include "ui/controls/action_sheet.h"

#include <utility>

#include "ui/containers/window.h"

namespace fleetor {

std::shared_ptr<ActionSheet> ActionSheet::show(Environment& environment, Content content) {
  std::shared_ptr<ActionSheet> sheet(new ActionSheet(environment));
  sheet->content_ = std::move(content);
  sheet->setAccessibleName(sheet->content_.title);
  if (Window* window = environment.window) {
    window->actionSheet_ = sheet;
    window->changed.emit();
  }
  return sheet;
}

bool ActionSheet::dismiss() {
  Window* window = environment_.window;
  if (!window || window->actionSheet_.get() != this) return false;
  window->actionSheet_ = nullptr;
  window->changed.emit();
  return true;
}

void ActionSheet::tapEntry(int index) {
  const auto self = shared_from_this();
  const auto chosen = static_cast<std::size_t>(index);
  if (chosen < content_.entries.size() && dismiss()) content_.entries[chosen].action();
}

void ActionSheet::cancel() {
  const auto self = shared_from_this();
  dismiss();
}

}  // namespace fleetor
