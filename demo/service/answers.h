#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "demo/town/civil_time.h"
#include "demo/town/fleet.h"
#include "demo/town/movements.h"

namespace fleetor::demo {

// The service's answers as JSON text, each an envelope of "total", "error" and what was asked for.

std::string errorAnswer(int code, std::string_view description);
std::string plainAnswer();
std::string tokenAnswer(std::string_view token);
std::string userAnswer(const Account& account);
std::string vehiclesAnswer(const Account& account, std::size_t offset, std::size_t limit);
std::string liveAnswer(const Movements& movements, const FleetVehicle& vehicle, Instant now);
std::string infoAnswer(const Movements& movements, const FleetVehicle& vehicle, Instant now);
// A point at least every ten seconds of a drive, and one for each stop.
std::string mapAnswer(const Movements& movements, const FleetVehicle& vehicle, Day day, Instant now);
std::string routeAnswer(const Movements& movements, const FleetVehicle& vehicle, Day day, Instant now);

}  // namespace fleetor::demo
