#pragma once

#include "shell/sheet_page.h"

namespace fleetor {

class AccountViewController final : public SheetPage {
 public:
  explicit AccountViewController(Environment& environment) : SheetPage(environment, "Account") {}
};

}  // namespace fleetor
