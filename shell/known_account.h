#pragma once

#include <string>

#include "model/account_records.h"
#include "service/session.h"
#include "ui/signal.h"

namespace fleetor {

/// Whose account it is, once this session has received it. Another session begins without it. Main thread
/// only.
class KnownAccount {
 public:
  /// The account's name, or its company where it has none; empty while unknown.
  const std::string& name();

  void take(const User& user);
  void forgetOthers();  ///< what another session has left

  Signal<> changed;

 private:
  Session session_;
  std::string name_;
};

}  // namespace fleetor
