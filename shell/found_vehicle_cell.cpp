#include "shell/found_vehicle_cell.h"

#include <utility>

namespace fleetor {

FoundVehicleCell::FoundVehicleCell(std::string reuseIdentifier, Words words)
    : VehicleTableViewCell(std::move(reuseIdentifier)), words_(std::move(words)) {
  outlet("pinButton", pinButton_);
}

void FoundVehicleCell::show(const Vehicle& vehicle, const SearchWords& sought, bool pinned,
                            std::function<void()> togglePin) {
  VehicleTableViewCell::show(vehicle, true);
  textLabel().setMarks(sought.inName(vehicle.name.view()));
  detailTextLabel().setMarks(sought.inRegistration(vehicle.registration.view()));
  pinButton_.setImage(pinned ? "RowPinned" : "RowPin");
  pinButton_.setAccessibleName(pinned ? words_.unpin : words_.pin);
  pinButton_.setAction([togglePin = std::move(togglePin)](Component&) { togglePin(); });
  pinButton_.setSelected(pinned);
  changed.emit();
}

std::string FoundVehicleCell::accessibleName() const {
  const std::string name = VehicleTableViewCell::accessibleName();
  return pinButton_.selected() ? name + ", " + words_.pinned : name;
}

}  // namespace fleetor
