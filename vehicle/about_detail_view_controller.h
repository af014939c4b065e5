#pragma once

#include "vehicle/detail_page_view_controller.h"

namespace fleetor {

class AboutDetailViewController final : public DetailPageViewController {
 public:
  using DetailPageViewController::DetailPageViewController;
};

}  // namespace fleetor
