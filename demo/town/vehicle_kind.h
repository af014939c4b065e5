#pragma once

#include <array>
#include <string_view>

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
  double tankLitres = 0;  // 0: no engine of its own
  double rangeKm = 0;     // between two fillings
  double boardVolts = 0;
  int minTrips = 0;
  int maxTrips = 0;
  double minDwell = 0;  // seconds at a stop
  double maxDwell = 0;
};

inline constexpr std::array<VehicleKind, 7> kVehicleKinds{{
    {"car", 38.0, 2.2, 2.4, 780, 3400, 50, 620, 14.1, 5, 12, 420, 3600},
    {"van", 33.0, 1.7, 2.0, 800, 3100, 75, 640, 14.0, 8, 20, 240, 1500},
    {"truck", 24.5, 0.9, 1.3, 620, 1900, 320, 900, 27.8, 4, 9, 900, 4200},
    {"bus", 22.0, 1.0, 1.2, 600, 2100, 260, 620, 27.6, 18, 30, 240, 720},
    {"motorcycle", 30.0, 3.0, 3.0, 1200, 6200, 17, 310, 13.8, 10, 24, 200, 1100},
    {"trailer", 24.0, 0.8, 1.2, 0, 0, 0, 0, 12.6, 2, 5, 2400, 9000},
    {"excavator", 7.0, 0.6, 1.0, 850, 2100, 240, 180, 26.9, 1, 3, 5400, 14400},
}};

}  // namespace fleetor::demo
