#pragma once

#include <optional>
#include <string>

#include "model/vehicle_records.h"
#include "platform/coordinate.h"
#include "ui/environment.h"

namespace fleetor {

/// A place to take along, and what is known of it.
struct SharedPosition {
  Coordinate coordinate;
  std::string title;     ///< for instance the vehicle's name
  std::string subtitle;  ///< for instance the address and the time; may have several lines
};

/// Where the record places the vehicle; none unless both texts are wholly understood.
std::optional<Coordinate> positionOf(const Live& live);

/// Shows a sheet to copy the place, to open it in a map program or send it by mail where the system has a
/// program for that, and to show it as a QR code to another phone. Main thread only.
void showPositionSheet(Environment& environment, const SharedPosition& position);

}  // namespace fleetor
