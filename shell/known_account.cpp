#include "shell/known_account.h"

namespace fleetor {

const std::string& KnownAccount::name() {
  forgetOthers();
  return name_;
}

void KnownAccount::take(const User& user) {
  forgetOthers();
  name_ = user.name.empty() ? user.companyName.str() : user.name.str();
  changed.emit();
}

void KnownAccount::forgetOthers() {
  if (!session_.hasEnded()) return;
  name_.clear();
  session_ = {};
}

}  // namespace fleetor
