#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "demo/town/vehicle_kind.h"

namespace fleetor::demo {

// When a vehicle is out.
enum class Duty { dayShift, nightShift, roundTheClock };

struct FleetVehicle {
  std::int64_t id = 0;
  std::string name;
  std::string registration;  // may be empty
  std::string colour;        // "#rrggbb"
  std::string driver;
  std::string driverPhone;
  std::string engine;
  const VehicleKind* kind = nullptr;
  Duty duty = Duty::dayShift;
  std::uint64_t seed = 0;
};

// A customer of the service with vehicles of its own.
struct Account {
  std::string user;
  std::string password;
  std::string name;
  std::string company;
  std::string status;
  std::string sms;
  std::string address1;
  std::string address2;
  std::string vat;
  std::string phone;
  std::string mail;
  std::string expirationDate;
  std::vector<FleetVehicle> vehicles;

  // Nothing when the account has no such vehicle. Found at once whatever the fleet's size: identifiers are
  // consecutive.
  const FleetVehicle* vehicle(std::int64_t id) const;
};

// The user table. The first account is "demo" with as many vehicles as asked for.
std::vector<Account> makeAccounts(std::uint64_t seed, int demoVehicles);

}  // namespace fleetor::demo
