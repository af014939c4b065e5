#include "demo/town/instruments.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "demo/town/random.h"

namespace fleetor::demo {
namespace {

double odometerKm(const FleetVehicle& vehicle, double metres) {
  // Every vehicle came used; enough for the years before the fleet's first day, too.
  return std::max(0.0, 120000 + static_cast<double>(hashOf(vehicle.seed, 41) % 60000) + metres / 1000);
}

// The tank empties with the kilometres; when a stop finds a filling due, it is filled there. So a drive goes
// on with what it began with, and the level does not depend on the question.
double fuelShare(const FleetVehicle& vehicle, const Whereabouts& where) {
  constexpr double full = 0.96;
  constexpr double reserve = 0.14;
  const double range = vehicle.kind->rangeKm;
  const double now = odometerKm(vehicle, where.odometerMetres);
  const double filled = std::floor(odometerKm(vehicle, where.stageOdometerMetres) / range) * range;
  return std::max(0.02, full - (full - reserve) * (now - filled) / range);
}

double outsideTemperature(const FleetVehicle& vehicle, Instant now) {
  const double hours = static_cast<double>(now - beginningOf(dayOf(now))) / 3600;
  const double year = static_cast<double>(dayOf(now) % 365) / 365;
  const double season = 10 - 9 * std::cos(2 * std::numbers::pi * (year - 0.05));
  const double daily = 4 * std::sin(2 * std::numbers::pi * (hours - 9) / 24);
  const double own = static_cast<double>(hashOf(vehicle.seed, dayOf(now)) % 50) / 10 - 2.5;
  return season + daily + own;
}

double engineSpeed(const VehicleKind& kind, const Whereabouts& where) {
  if (!where.driving || kind.topRpm <= 0) return 0;
  // Five gears; in each the engine climbs from a third of its range to its upper part.
  const double share = std::min(1.0, where.motion.speed / kind.topSpeed) * 5;
  if (share < 0.02) return kind.idleRpm;
  const double inGear = share - std::floor(share);
  const double low = share < 1 ? 0.05 : 0.35;
  return kind.idleRpm + (kind.topRpm - kind.idleRpm) * (low + (0.85 - low) * inGear);
}

}  // namespace

std::string decimals(double value, int digits) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", digits, value);
  const std::string_view view = text;
  const bool zero = view.find_first_not_of("-0.") == std::string_view::npos;
  return zero && text[0] == '-' ? std::string(view.substr(1)) : std::string(view);
}

Instruments readInstruments(const FleetVehicle& vehicle, const Whereabouts& where, Instant now) {
  const VehicleKind& kind = *vehicle.kind;
  Random flicker(hashOf(vehicle.seed, 42, now / 15));
  Instruments read;
  read.speed = decimals(where.motion.speed * 3.6, 0);
  const double volts = where.driving ? kind.boardVolts : kind.boardVolts * 0.905;
  read.power = decimals(volts + flicker.between(-0.1, 0.1), 1);
  read.satellites = std::to_string(8 + flicker.below(6));
  read.direction = std::to_string(static_cast<int>(std::lround(where.motion.heading)) % 360);
  if (kind.tankLitres > 0) {
    read.fuel = decimals(kind.tankLitres * fuelShare(vehicle, where), 0);
    read.fuelUnit = "l";
  } else {
    read.fuel = "-";
  }
  read.rpm = decimals(std::round(engineSpeed(kind, where) / 10) * 10, 0);
  read.odometer = decimals(odometerKm(vehicle, where.odometerMetres), 1) + " km";
  read.temperature = decimals(outsideTemperature(vehicle, now), 0);
  const bool ignition = where.driving && kind.topRpm > 0;
  const bool doors = !where.driving && flicker.chance(0.1);
  read.lights = {{{"z1", ignition},
                  {"z3", where.motion.speed > 0.3},
                  {"z4", doors},
                  {"z6", false},
                  {"z8", true},
                  {"z14", where.driving},
                  {"z23", false},
                  {"z28", flicker.chance(0.05)},
                  {"z33", kind.tankLitres > 0}}};
  return read;
}

Schedule serviceSchedule(const FleetVehicle& vehicle, const Whereabouts& where, Instant now) {
  // Each appointment comes round at its own interval, so that the next one always lies ahead.
  const auto nextDay = [&](std::uint64_t what, Day interval) {
    const Day phase = static_cast<Day>(hashOf(vehicle.seed, what) % static_cast<std::uint64_t>(interval));
    const Day today = dayOf(now);
    return today + interval - (today + phase) % interval;
  };
  constexpr double serviceKm = 15000;
  const double km = odometerKm(vehicle, where.odometerMetres);
  const double phase = static_cast<double>(hashOf(vehicle.seed, 45) % 15000);
  Schedule schedule;
  schedule.oil = dayText(nextDay(43, 365));
  schedule.technical = dayText(nextDay(44, 730));
  schedule.distance = decimals((std::floor((km + phase) / serviceKm) + 1) * serviceKm - phase, 0) + " km";
  schedule.unitExpires = dayText(nextDay(46, 1095));
  return schedule;
}

}  // namespace fleetor::demo
