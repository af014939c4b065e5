#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fleetor::demo {

// How vehicles of one kind move and what their instruments read. Metres and seconds; litres and
// kilometres where drivers count in them.
struct VehicleKind {
  std::string_view icon;
  double topSpeed = 0;      // m/s
  double acceleration = 0;  // m/s2
  double braking = 0;       // m/s2
  double idleRpm = 0;
  double topRpm = 0;
  double tankLitres = 0;  // 0: no engine
  double rangeKm = 0;     // between two fillings
  double boardVolts = 0;
  int minTrips = 0;
  int maxTrips = 0;
  double minDwell = 0;  // seconds at a stop
  double maxDwell = 0;
};

inline constexpr std::array<VehicleKind, 7> vehicleKinds{{
    {"car", 38.0, 2.2, 2.4, 780, 3400, 50, 620, 14.1, 5, 12, 420, 3600},
    {"van", 33.0, 1.7, 2.0, 800, 3100, 75, 640, 14.0, 8, 20, 240, 1500},
    {"truck", 24.5, 0.9, 1.3, 620, 1900, 320, 900, 27.8, 4, 9, 900, 4200},
    {"bus", 22.0, 1.0, 1.2, 600, 2100, 260, 620, 27.6, 18, 30, 240, 720},
    {"motorcycle", 30.0, 3.0, 3.0, 1200, 6200, 17, 310, 13.8, 10, 24, 200, 1100},
    {"trailer", 24.0, 0.8, 1.2, 0, 0, 0, 0, 12.6, 2, 5, 2400, 9000},
    {"excavator", 7.0, 0.6, 1.0, 850, 2100, 240, 180, 26.9, 1, 3, 5400, 14400},
}};

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

// A customer of the service, with vehicles.
struct Account {
  std::string user;  // and the password
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
