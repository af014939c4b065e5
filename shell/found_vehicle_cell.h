#pragma once

#include <utility>

#include "fleet/vehicle_search.h"
#include "vehicle/vehicle_table_view_cell.h"

namespace fleetor {

/// The row of a vehicle that was found, what was looked for marked.
class FoundVehicleCell final : public VehicleTableViewCell {
 public:
  using VehicleTableViewCell::VehicleTableViewCell;

  void show(const Vehicle& vehicle, const SearchWords& words) {
    VehicleTableViewCell::show(vehicle, true);
    textLabel().setMarks(words.inName(vehicle.name.view()));
    detailTextLabel().setMarks(words.inRegistration(vehicle.registration.view()));
  }
};

}  // namespace fleetor
