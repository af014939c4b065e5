#pragma once

#include <string>

#include "model/vehicle_records.h"
#include "ui/table/table_view_cell.h"

namespace fleetor {

/// The row of one vehicle: its picture ("photoImageView") and its name, in full ("nameLabel") and as the two
/// lines that are drawn ("textLabel" and "detailTextLabel"). A list may add the latest reading
/// ("readingLabel").
class VehicleTableViewCell : public TableViewCell {
 public:
  explicit VehicleTableViewCell(std::string reuseIdentifier);

  /// The registration, if it is shown, is the second line.
  void show(const Vehicle& vehicle, bool withRegistration);

  ImageView& photoImageView() { return photoImageView_; }
  Label& nameLabel() { return nameLabel_; }
  Label& readingLabel() { return readingLabel_; }
  std::string accessibleName() const override { return nameLabel_.text(); }
  std::string copiedText() const override { return nameLabel_.text(); }

 private:
  ImageView photoImageView_;
  Label nameLabel_;
  Label readingLabel_;
};

}  // namespace fleetor
