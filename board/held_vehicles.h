#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "service/envelopes.h"
#include "service/session.h"
#include "ui/signal.h"

namespace fleetor {

/// The vehicles of the account as far as this session has received them, from the first one on and in the
/// order of the service. Another session begins with none. Main thread only.
class HeldVehicles {
 public:
  const std::vector<Vehicle>& vehicles();
  bool isComplete();

  /// An answer that begins at that place of the list. One that leaves a gap is ignored.
  void take(const VehiclesResponse& page, std::size_t offset);

  void forgetOthers();  ///< what another session has left

  Signal<> changed;

 private:
  Session session_;
  std::vector<Vehicle> vehicles_;
  std::optional<std::int64_t> total_;
};

}  // namespace fleetor
