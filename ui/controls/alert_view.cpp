#include "ui/controls/alert_view.h"

#include <algorithm>
#include <utility>

#include "ui/containers/window.h"

namespace fleetor {

std::shared_ptr<AlertView> AlertView::initWithTitle(Environment& environment, std::string title,
                                                    std::string message,
                                                    std::weak_ptr<AlertViewDelegate> delegate,
                                                    std::string cancelButtonTitle,
                                                    std::vector<std::string> otherButtonTitles) {
  std::shared_ptr<AlertView> alert(new AlertView(environment));
  alert->title_ = std::move(title);
  alert->message_ = std::move(message);
  alert->delegate_ = std::move(delegate);
  alert->buttonTitles_ = std::move(otherButtonTitles);
  alert->buttonTitles_.insert(alert->buttonTitles_.begin(), std::move(cancelButtonTitle));
  alert->setAccessibleName(alert->title_);
  return alert;
}

void AlertView::show() {
  Window* window = environment_.window;
  if (!window || std::ranges::find(window->alerts_, shared_from_this()) != window->alerts_.end()) return;
  window->alerts_.push_back(shared_from_this());
  window->changed.emit();
}

void AlertView::tapButton(int index) {
  const auto self = shared_from_this();
  Window* window = environment_.window;
  if (!window || std::erase(window->alerts_, self) == 0) return;
  window->changed.emit();
  if (const auto delegate = delegate_.lock()) delegate->alertViewClickedButtonAtIndex(*this, index);
}

}  // namespace fleetor
