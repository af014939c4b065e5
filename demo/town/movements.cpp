#include "demo/town/movements.h"

#include <algorithm>
#include <array>

#include "demo/town/random.h"

namespace fleetor::demo {
namespace {

constexpr std::int64_t minuteSeconds = 60;
constexpr std::int64_t hourSeconds = 60 * minuteSeconds;
// Shorter than the shortest day of the year in which the clocks go forward.
constexpr std::int64_t workingSeconds = 22 * hourSeconds + 50 * minuteSeconds;
constexpr std::size_t customerCount = 9;
// Odometers are counted from 2026-01-01.
constexpr Day firstFleetDay = 20454;

bool worksOn(const FleetVehicle& vehicle, Day day, Random& random) {
  const int weekday = weekdayOf(day);
  const double chance = weekday < 5 ? 0.96 : weekday == 5 ? 0.45 : 0.2;
  return random.chance(chance) || vehicle.duty == Duty::roundTheClock;
}

}  // namespace

Instant Movements::workBegins(const FleetVehicle& vehicle, Day day) const {
  const std::int64_t spread = static_cast<std::int64_t>(hashOf(vehicle.seed, 21) % 5400);
  return beginningOf(day) + (vehicle.duty == Duty::nightShift ? 13 * hourSeconds : 3 * hourSeconds) + spread;
}

Movements::WorkPlan Movements::planWork(const FleetVehicle& vehicle, Day day) const {
  const auto places = static_cast<std::uint32_t>(town_.places().size());
  Random own(hashOf(vehicle.seed, 22));
  WorkPlan plan;
  plan.home = own.below(places);
  std::array<std::uint32_t, customerCount> customers;
  for (std::uint32_t& customer : customers)
    customer = own.below(places);

  Random random(hashOf(vehicle.seed, 23, day));
  if (!worksOn(vehicle, day, random)) return plan;

  const VehicleKind& kind = *vehicle.kind;
  const bool always = vehicle.duty == Duty::roundTheClock;
  const std::int64_t shift = always ? workingSeconds : 11 * hourSeconds;
  plan.start =
      static_cast<std::int64_t>(always ? random.between(120, 900) : random.between(1.7, 5.5) * hourSeconds);
  const auto estimate = [&](std::uint32_t from, std::uint32_t to) {
    const double free = town_.drivingSeconds(from, to);
    const double slow = town_.drivingMetres(from, to) / kind.topSpeed;
    return static_cast<std::int64_t>(60 + 1.5 * std::max(free, slow));
  };

  const int span = kind.maxTrips - kind.minTrips + 1;
  const int wanted =
      always ? 1000 : kind.minTrips + static_cast<int>(random.below(static_cast<std::uint32_t>(span)));
  std::uint32_t here = plan.home;
  std::int64_t clock = plan.start;
  for (int i = 0; i < wanted; ++i) {
    const std::uint32_t next = customers[random.below(customerCount)];
    const double dwell = always ? random.between(kind.minDwell, kind.minDwell * 1.8)
                                : random.between(kind.minDwell, kind.maxDwell);
    if (next == here || next == plan.home) continue;
    const std::int64_t after = clock + estimate(here, next) + static_cast<std::int64_t>(dwell);
    if (after + estimate(next, plan.home) > std::min(plan.start + shift, workingSeconds)) break;
    plan.errands.push_back({here, next, static_cast<std::int64_t>(dwell)});
    here = next;
    clock = after;
  }
  if (here != plan.home) plan.errands.push_back({here, plan.home, 0});
  return plan;
}

double Movements::metresBefore(const FleetVehicle& vehicle, Day day) const {
  std::pair<Day, double> anchor{firstFleetDay, 0};
  {
    const std::lock_guard lock(mutex_);
    if (const auto known = odometers_.find(vehicle.id); known != odometers_.end()) anchor = known->second;
  }
  const auto metresOf = [&](Day worked) {
    double metres = 0;
    for (const Errand& errand : planWork(vehicle, worked).errands)
      metres += town_.drivingMetres(errand.from, errand.to);
    return metres;
  };
  // Days before the first one count backwards, from the kilometres that the vehicle came with.
  for (; anchor.first < day; ++anchor.first)
    anchor.second += metresOf(anchor.first);
  for (; anchor.first > day; --anchor.first)
    anchor.second -= metresOf(anchor.first - 1);
  const std::lock_guard lock(mutex_);
  odometers_[vehicle.id] = anchor;
  return anchor.second;
}

Movements::Stages Movements::workStages(const FleetVehicle& vehicle, Day day) const {
  constexpr std::size_t keptDays = 256;
  const std::pair<std::int64_t, Day> key{vehicle.id, day};
  {
    const std::lock_guard lock(mutex_);
    if (const auto known = cache_.find(key); known != cache_.end()) return known->second;
  }

  const WorkPlan plan = planWork(vehicle, day);
  const Instant begin = workBegins(vehicle, day);
  const Instant end = workBegins(vehicle, day + 1);
  std::vector<std::shared_ptr<const Drive>> drives;
  std::int64_t busy = plan.start;
  for (const Errand& errand : plan.errands) {
    drives.push_back(std::make_shared<Drive>(town_, town_.route(errand.from, errand.to), *vehicle.kind,
                                             hashOf(vehicle.seed, 24, day, drives.size())));
    busy += drives.back()->seconds() + errand.dwell;
  }
  // Who is out round the clock spreads the time that traffic left over its stops.
  std::int64_t rest = 0;
  if (vehicle.duty == Duty::roundTheClock && drives.size() > 1)
    rest = std::max<std::int64_t>(0, workingSeconds - busy) / static_cast<std::int64_t>(drives.size() - 1);

  std::vector<Stage> stages;
  double odometer = metresBefore(vehicle, day);
  Instant clock = begin;
  const auto park = [&](Instant until, std::uint32_t place) {
    if (until > clock) stages.push_back({clock, until, nullptr, place, place, odometer, 0});
    clock = std::max(clock, until);
  };
  park(begin + plan.start, plan.home);
  for (std::size_t i = 0; i < drives.size(); ++i) {
    const Errand& errand = plan.errands[i];
    stages.push_back({clock, clock + drives[i]->seconds(), drives[i], errand.from, errand.to, odometer, 0});
    clock += drives[i]->seconds();
    odometer += drives[i]->metres();
    if (i + 1 < drives.size()) park(clock + errand.dwell + rest, errand.to);
  }
  park(end, plan.home);

  auto result = std::make_shared<const std::vector<Stage>>(std::move(stages));
  const std::lock_guard lock(mutex_);
  if (cache_.size() >= keptDays) cache_.clear();
  cache_[key] = result;
  return result;
}

std::vector<Stage> Movements::dayStages(const FleetVehicle& vehicle, Day day, Instant now) const {
  const Instant begin = beginningOf(day);
  const Instant end = std::min(beginningOf(day + 1) - 1, now);
  std::vector<Stage> result;
  if (end < begin) return result;
  for (const Day worked : {day - 1, day}) {
    const Stages stages = workStages(vehicle, worked);  // another request may push them out of the cache
    for (Stage stage : *stages) {
      if (stage.end <= begin || stage.begin > end) continue;
      if (stage.begin < begin) {
        if (stage.drive) {
          stage.secondsDriven = begin - stage.begin;
          stage.odometerMetres += stage.drive->at(static_cast<double>(stage.secondsDriven)).metres;
        }
        stage.begin = begin;
      }
      stage.end = std::min(stage.end, end);
      // The night at home, which two working days share, is one stop.
      if (!result.empty() && !result.back().drive && !stage.drive)
        result.back().end = stage.end;
      else
        result.push_back(std::move(stage));
    }
  }
  return result;
}

Whereabouts Movements::inStage(const Stage& stage, Instant instant) const {
  Whereabouts where;
  where.stageOdometerMetres = stage.odometerMetres;
  where.odometerMetres = stage.odometerMetres;
  where.place = stage.to;
  instant = std::clamp(instant, stage.begin, stage.end);
  if (!stage.drive) {
    where.motion.at = town_.streets().junctions()[town_.places()[stage.to].junction].at;
    where.motion.heading = static_cast<double>(hashOf(stage.to, 31) % 360);
    return where;
  }
  where.driving = true;
  const double begun = stage.drive->at(static_cast<double>(stage.secondsDriven)).metres;
  where.motion = stage.drive->at(static_cast<double>(stage.secondsDriven + instant - stage.begin));
  where.odometerMetres += where.motion.metres - begun;
  where.stageOdometerMetres -= begun;
  return where;
}

Whereabouts Movements::at(const FleetVehicle& vehicle, Instant instant) const {
  const std::vector<Stage> stages = dayStages(vehicle, dayOf(instant), instant);
  // A moment at which one stage ends and the next begins belongs to the later one.
  return inStage(stages.back(), instant);
}

}  // namespace fleetor::demo
