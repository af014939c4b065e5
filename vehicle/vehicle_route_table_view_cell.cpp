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

std::string VehicleRouteTableViewCell::copiedText() const {
  std::string text;
  for (const Label* label :
       {&statusLabel_, &timeLabel_, &durationLabel_, &distanceLabel_, &fromLabel_, &toLabel_})
    if (!label->text().empty()) text += (text.empty() ? "" : "\n") + label->text();
  return text;
}

}  // namespace fleetor
