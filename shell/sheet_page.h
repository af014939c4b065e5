#pragma once

#include "shell/base/page_view_controller.h"

namespace fleetor {

/// A screen that the side menu opens on a phone and the vehicle list, as a form sheet, on a tablet: there it
/// carries a button to close it where the menu button would be.
class SheetPage : public PageViewController {
 public:
  SheetPage(Environment& environment, const char* titleKey)
      : PageViewController(environment), titleKey_(titleKey) {}

  void viewDidLoad() override;
  void close(Component& sender);

 private:
  const char* titleKey_;
};

}  // namespace fleetor
