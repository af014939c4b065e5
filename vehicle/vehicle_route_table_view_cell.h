#pragma once

#include <string>

#include "ui/table/table_view_cell.h"

namespace fleetor {

/// The row of one trip or stop. The page fills its labels. "kindImageView" is empty
/// where the values do not tell a trip from a stop, "clockLabel" where the time does not belong to the day.
class VehicleRouteTableViewCell final : public TableViewCell {
 public:
  explicit VehicleRouteTableViewCell(std::string reuseIdentifier);

  ImageView& kindImageView() { return kindImageView_; }
  Label& clockLabel() { return clockLabel_; }
  Label& statusLabel() { return statusLabel_; }
  Label& timeLabel() { return timeLabel_; }
  Label& durationLabel() { return durationLabel_; }
  Label& distanceLabel() { return distanceLabel_; }
  Label& fromLabel() { return fromLabel_; }
  Label& toLabel() { return toLabel_; }
  std::string copiedText() const override;  ///< a line for each label that has a text

 private:
  ImageView kindImageView_;
  Label clockLabel_;
  Label statusLabel_;
  Label timeLabel_;
  Label durationLabel_;
  Label distanceLabel_;
  Label fromLabel_;
  Label toLabel_;
};

}  // namespace fleetor
