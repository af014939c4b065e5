#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "demo/town/fleet.h"
#include "demo/town/movements.h"

namespace fleetor::demo {

// A number with so many digits after the point; never "-0".
std::string decimals(double value, int digits);

// What the tracking unit reports besides the position, as texts ready to show.
struct Instruments {
  std::string speed;  // km/h
  std::string power;  // volts
  std::string satellites;
  std::string direction;  // whole degrees
  std::string fuel;
  std::string fuelUnit;  // none: the vehicle has no tank
  std::string rpm;
  std::string odometer;
  std::string temperature;  // degrees Celsius
  std::array<std::pair<std::string_view, bool>, 9> lights;
};

Instruments readInstruments(const FleetVehicle& vehicle, const Whereabouts& where, Instant now);

// When the workshop expects the vehicle.
struct Schedule {
  std::string oil;
  std::string technical;
  std::string distance;
  std::string unitExpires;
};

Schedule serviceSchedule(const FleetVehicle& vehicle, const Whereabouts& where, Instant now);

}  // namespace fleetor::demo
