#pragma once

#include <cstdint>
#include <map>
#include <utility>

#include "model/account_records.h"
#include "service/session.h"

namespace fleetor {

/// The standing data that this session has last received of each vehicle. Another session begins with none.
/// Main thread only.
class KnownInfo {
 public:
  /// Null while none is known; valid until the next call.
  const Info* of(std::int64_t vehicleId) {
    forgetOthers();
    const auto found = known_.find(vehicleId);
    return found == known_.end() ? nullptr : &found->second;
  }

  void keep(std::int64_t vehicleId, Info info) {
    forgetOthers();
    known_.insert_or_assign(vehicleId, std::move(info));
  }

  /// What another session has left.
  void forgetOthers() {
    if (!session_.hasEnded()) return;
    known_.clear();
    session_ = {};
  }

 private:
  Session session_;
  std::map<std::int64_t, Info> known_;
};

}  // namespace fleetor
