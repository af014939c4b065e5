#pragma once

#include "shell/sheet_page.h"

namespace fleetor {

class AboutViewController final : public SheetPage {
 public:
  explicit AboutViewController(Environment& environment) : SheetPage(environment, "About") {}
};

}  // namespace fleetor
