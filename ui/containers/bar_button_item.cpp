#include "ui/containers/bar_button_item.h"

#include <utility>

namespace fleetor {

std::shared_ptr<BarButtonItem> BarButtonItem::initWithImage(const std::string& image, bool renderingOriginal,
                                                            Action action) {
  auto item = std::make_shared<BarButtonItem>();
  item->setImage(image);
  item->renderingOriginal_ = renderingOriginal;
  item->setAction(std::move(action));
  return item;
}

std::shared_ptr<BarButtonItem> BarButtonItem::initWithBarButtonSystemItem(Environment& environment,
                                                                          SystemItem kind, Action action) {
  auto item = std::make_shared<BarButtonItem>();
  item->systemItem_ = kind;
  if (kind == SystemItem::done) item->setTitle(environment.device.localizedString("Done"));
  if (kind == SystemItem::cancel) item->setTitle(environment.device.localizedString("Cancel"));
  item->setAction(std::move(action));
  return item;
}

bool NavigationItem::tapLeftButton() {
  if (left_.empty()) return false;
  const auto button = left_.front();
  button->tap();
  return true;
}

}  // namespace fleetor
