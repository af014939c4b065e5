#include "shell/base/vehicle_table_view_cell.h"

#include <utility>

namespace fleetor {

VehicleTableViewCell::VehicleTableViewCell(std::string reuseIdentifier)
    : TableViewCell(std::move(reuseIdentifier)) {
  outlet("photoImageView", photoImageView_);
  outlet("nameLabel", nameLabel_);
}

}  // namespace fleetor
