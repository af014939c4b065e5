#include "model/vehicle_records.h"

namespace fleetor {

std::string Vehicle::fullName() const {
  if (registration.empty()) return name.str();
  if (name.empty()) return registration.str();
  return name.str() + "\n" + registration.str();
}

Coordinate Location::coordinate() const {
  return {doubleValue(lat), doubleValue(lon)};
}

std::string MapEntry::subtitle() const {
  if (duration.empty()) return dateTime.str();
  return dateTime.str() + " (" + duration.str() + ")";
}

}  // namespace fleetor
