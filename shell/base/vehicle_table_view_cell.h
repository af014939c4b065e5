#pragma once

#include <string>

#include "ui/table_view_cell.h"

namespace fleetor {

/// The row of one vehicle: its picture ("photoImageView") and its name ("nameLabel").
class VehicleTableViewCell final : public TableViewCell {
 public:
  explicit VehicleTableViewCell(std::string reuseIdentifier);

  ImageView& photoImageView() { return photoImageView_; }
  Label& nameLabel() { return nameLabel_; }
  std::string accessibleName() const override { return nameLabel_.text(); }

 private:
  ImageView photoImageView_;
  Label nameLabel_;
};

}  // namespace fleetor
