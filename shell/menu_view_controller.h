#pragma once

#include "shell/base/base_view_controller.h"

namespace fleetor {

/// The side menu of a phone.
class MenuViewController final : public BaseViewController {
 public:
  using BaseViewController::BaseViewController;
};

}  // namespace fleetor
