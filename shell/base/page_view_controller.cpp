#include "shell/base/page_view_controller.h"

#include "ui/containers/navigation_controller.h"
#include "ui/containers/sw_reveal_view_controller.h"

namespace fleetor {

namespace {
constexpr double menuDragBorder = 120.0;
}

void PageViewController::viewDidLoad() {
  BaseViewController::viewDidLoad();
  auto* reveal = revealViewController();
  if (environment().device.isPad() || !reveal) return;
  reveal->tapGestureRecognizer();
  const auto* navigation = navigationController();
  if (navigation && navigation->viewControllers().size() == 1) reveal->panGestureRecognizer();
  reveal->setDraggableBorderWidth(menuDragBorder);
}

void PageViewController::showMenuButton() {
  if (environment().device.isPad()) return;
  auto button =
      BarButtonItem::initWithImage("NavMenu", true, [this](Component& sender) { showMenu(sender); });
  button->setAccessibleName(localized("Menu"));
  navigationItem().setLeftBarButtonItem(button);
}

void PageViewController::showBackButton() {
  auto button = BarButtonItem::initWithImage("NavBack", true, [this](Component& sender) { goBack(sender); });
  button->setAccessibleName(localized("Back"));
  navigationItem().setLeftBarButtonItem(button);
}

void PageViewController::showMenu(Component&) {
  if (auto* reveal = revealViewController()) reveal->revealToggleAnimated(true);
}

void PageViewController::goBack(Component&) {
  if (auto* navigation = navigationController()) navigation->popViewControllerAnimated(true);
}

}  // namespace fleetor
