#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "demo/town/civil_time.h"
#include "demo/town/drive.h"
#include "demo/town/fleet.h"
#include "demo/town/town.h"

namespace fleetor::demo {

// A drive or a stop between two moments.
struct Stage {
  Instant begin = 0;
  Instant end = 0;
  std::shared_ptr<const Drive> drive;  // none: parked at `to`
  std::uint32_t from = 0;              // places
  std::uint32_t to = 0;
  // What the vehicle has driven since the fleet's first day when the stage begins.
  double odometerMetres = 0;
  // The part of the drive that lies before `begin`, when the stage was cut at midnight.
  std::int64_t secondsDriven = 0;
};

// Where a vehicle is and what it does at one moment.
struct Whereabouts {
  Motion motion;
  bool driving = false;
  double odometerMetres = 0;
  // The odometer when the present drive or stop began.
  double stageOdometerMetres = 0;
  std::uint32_t place = 0;  // where it is parked, when it is
};

// What every vehicle does at any time. Each working day of a vehicle is planned on its own from the vehicle's
// seed and the day: it begins and ends at the vehicle's home, hours away from the vehicle's busy time, so
// that calendar days are cut out of at most two working days and always fit each other. Safe from any thread.
class Movements {
 public:
  explicit Movements(const Town& town) : town_(town) {}

  // The calendar day in order and without gaps, up to its last second or to `now`, whichever is first; empty
  // for a day that has not begun.
  std::vector<Stage> dayStages(const FleetVehicle& vehicle, Day day, Instant now) const;
  Whereabouts at(const FleetVehicle& vehicle, Instant instant) const;

  // The moment inside a stage; `instant` is held to it.
  Whereabouts inStage(const Stage& stage, Instant instant) const;
  const Town& town() const { return town_; }

 private:
  using Stages = std::shared_ptr<const std::vector<Stage>>;

  struct Errand {
    std::uint32_t from = 0;
    std::uint32_t to = 0;
    std::int64_t dwell = 0;
  };
  struct WorkPlan {
    std::uint32_t home = 0;
    std::int64_t start = 0;  // seconds after the working day's beginning
    std::vector<Errand> errands;
  };

  WorkPlan planWork(const FleetVehicle& vehicle, Day workingDay) const;
  Instant workBegins(const FleetVehicle& vehicle, Day workingDay) const;
  double metresBefore(const FleetVehicle& vehicle, Day workingDay) const;
  Stages workStages(const FleetVehicle& vehicle, Day workingDay) const;

  const Town& town_;
  mutable std::mutex mutex_;
  mutable std::map<std::int64_t, std::pair<Day, double>> odometers_;
  mutable std::map<std::pair<std::int64_t, Day>, Stages> cache_;
};

}  // namespace fleetor::demo
