#pragma once

#include <optional>
#include <string_view>

#include "platform/coordinate.h"

namespace fleetor {

// Numbers as the service writes them. A text that is not wholly understood, that can be read in two ways, or
// that is longer than 40 bytes is refused. Blanks around it are ignored. Any thread.

/// A number and what stands behind it.
struct Quantity {
  double value = 0;
  std::string_view unit;  ///< without blanks around it; points into the text that was read
};

/// "12", "-3.5", "12,3", "120 345", "1.234,5": a point or a comma is the decimal separator, groups of three
/// digits may be kept apart by blanks or by the other of the two. "12.345" is refused: the point may keep
/// thousands apart. Exponents are refused.
std::optional<double> readNumber(std::string_view text);

/// A number with a unit behind it, or without one: "13.8 V", "21", "120 345 km".
std::optional<Quantity> readQuantity(std::string_view text);

/// Kilometres: "12.3", "12,3 km", "340 m". A number without a unit means kilometres.
std::optional<double> readKilometres(std::string_view text);

/// Decimal degrees within -90 to 90 and -180 to 180, with a point or a comma. 0, 0 is refused: receivers
/// report it while they have no position.
std::optional<Coordinate> readCoordinate(std::string_view latitude, std::string_view longitude);

}  // namespace fleetor
