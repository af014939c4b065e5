#pragma once

#include <optional>
#include <string>

#include "model/vehicle_records.h"

namespace fleetor {

// What a record says of its vehicle. Any thread.

/// None while the speed is not known.
std::optional<bool> isDriving(const Live& live);

/// Degrees clockwise from north, 0 to 360; none where the text is not wholly understood.
std::optional<double> courseOf(const Live& live);

/// The vehicle's picture on a map: its icon for headings above 179 degrees, up to there the one whose name
/// has a "p" before it.
std::string markerImage(const Live& live);

}  // namespace fleetor
