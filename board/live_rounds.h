#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "platform/clock.h"
#include "platform/queues.h"
#include "ui/wake_up.h"

namespace fleetor {

/// In which order, and when, several vehicles are asked for their state: one at a time, round and round, a
/// vehicle no sooner than 15 seconds after its answer, and no more than two requests a second. A vehicle that
/// fails is asked again after 30 seconds, then 60, up to 5 minutes. While nothing can be reached, all of them
/// wait for 15 seconds, then 30, up to a minute. Main thread only.
class LiveRounds {
 public:
  static constexpr Seconds every{15};
  static constexpr Seconds apart{0.5};

  enum class Outcome { received, failed, unreachable };

  /// Sends the request for that vehicle; `ended` is called once, later.
  using Ask = std::function<void(std::int64_t vehicleId)>;

  LiveRounds(Queues& queues, const Clock& clock, Ask ask);

  /// New ones are asked first, in this order, but none before the uptime that `dueOf` gives for it; the
  /// others keep their times.
  using DueOf = std::function<Seconds(std::int64_t vehicleId)>;
  void setVehicles(const std::vector<std::int64_t>& ids, const DueOf& dueOf = {});

  /// Nothing is asked while it does not run.
  void setRunning(bool running);
  bool isRunning() const { return running_; }

  /// The one request in flight has ended.
  void ended(Outcome outcome);

 private:
  struct Place {
    std::int64_t id = 0;
    Seconds due{};
    int failures = 0;  ///< since its last answer
  };

  static Seconds pause(int doublings, Seconds longest);
  void next();

  const Clock& clock_;
  Ask ask_;
  WakeUp wakeUp_;
  std::vector<Place> places_;
  std::optional<std::int64_t> asked_;  ///< the request in flight
  Seconds nextRequest_{};
  Seconds reachableFrom_{};
  int unreachable_ = 0;  ///< since anything was reached
  bool running_ = false;
};

}  // namespace fleetor
