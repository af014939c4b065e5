#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "board/live_rounds.h"
#include "service/session.h"
#include "ui/environment.h"
#include "ui/signal.h"
#include "vehicle/watch/last_readings.h"

namespace fleetor {

/// Asks for the state of the vehicles that a board shows, in turn; what comes goes into the last readings.
/// All boards share it, so that the pace is kept when one takes the place of another. Another session begins
/// anew. Main thread only.
///
/// A request in flight keeps this object alive.
class FleetPoll : public std::enable_shared_from_this<FleetPoll> {
 public:
  /// The environment outlives this object.
  FleetPoll(Environment& environment, std::shared_ptr<LastReadings> readings);

  /// These are asked for from now on, for that board, whichever one it was before.
  void watch(const void* board, const std::vector<std::int64_t>& ids);

  /// Nothing is asked for that board any more.
  void leave(const void* board);

  /// Whether the vehicle's last request has.
  bool hasFailed(std::int64_t vehicleId) const { return failed_.contains(vehicleId); }

  Signal<std::int64_t> failed;  ///< the vehicle's id

 private:
  void ask(std::int64_t vehicleId);

  Environment& environment_;
  std::shared_ptr<LastReadings> readings_;
  Session session_;
  std::optional<LiveRounds> rounds_;  ///< from the first board of the session on
  std::set<std::int64_t> failed_;
  const void* board_ = nullptr;  ///< for which it asks; only compared
};

}  // namespace fleetor
