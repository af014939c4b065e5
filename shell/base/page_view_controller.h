#pragma once

#include "shell/base/base_view_controller.h"

namespace fleetor {

/// A screen inside the side-menu container, with a menu or a back button in its navigation bar.
class PageViewController : public BaseViewController {
 public:
  using BaseViewController::BaseViewController;

  void viewDidLoad() override;

  void showMenuButton();  ///< on a phone; does nothing on a tablet, which has no menu
  void showBackButton();

 private:
  void showMenu(Component& sender);
  void goBack(Component& sender);
};

}  // namespace fleetor
