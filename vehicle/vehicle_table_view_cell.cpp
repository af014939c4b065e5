#include "vehicle/vehicle_table_view_cell.h"

#include <utility>

namespace fleetor {

VehicleTableViewCell::VehicleTableViewCell(std::string reuseIdentifier)
    : TableViewCell(std::move(reuseIdentifier)) {
  outlet("photoImageView", photoImageView_);
  outlet("nameLabel", nameLabel_);
  outlet("readingLabel", readingLabel_);
}

void VehicleTableViewCell::show(const Vehicle& vehicle, bool withRegistration) {
  photoImageView_.setImage(vehicle.icon.str());
  nameLabel_.setText(withRegistration ? vehicle.fullName() : vehicle.name.str());
  textLabel().setText(vehicle.name.str());
  detailTextLabel().setText(withRegistration ? vehicle.registration.str() : "");
}

}  // namespace fleetor
