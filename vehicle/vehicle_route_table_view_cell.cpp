#include "vehicle/vehicle_route_table_view_cell.h"

#include <utility>

namespace fleetor {

VehicleRouteTableViewCell::VehicleRouteTableViewCell(std::string reuseIdentifier)
    : TableViewCell(std::move(reuseIdentifier)) {
  outlet("kindImageView", kindImageView_);
  outlet("clockLabel", clockLabel_);
  outlet("statusLabel", statusLabel_);
  outlet("timeLabel", timeLabel_);
  outlet("durationLabel", durationLabel_);
  outlet("distanceLabel", distanceLabel_);
  outlet("fromLabel", fromLabel_);
  outlet("toLabel", toLabel_);
}

}  // namespace fleetor
