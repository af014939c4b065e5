#include "shell/sheet_page.h"

namespace fleetor {

void SheetPage::viewDidLoad() {
  PageViewController::viewDidLoad();
  showMenuButton();
  setTitle(localized(titleKey_));
  if (environment().device.isPad())
    navigationItem().setLeftBarButtonItem(BarButtonItem::initWithBarButtonSystemItem(
        environment(), SystemItem::cancel, [this](Component& sender) { close(sender); }));
}

void SheetPage::close(Component&) {
  dismissViewControllerAnimated(true);
}

}  // namespace fleetor
