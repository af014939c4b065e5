#pragma once

#include <functional>
#include <string>

#include "fleet/vehicle_search.h"
#include "ui/controls/controls.h"
#include "vehicle/vehicle_table_view_cell.h"

namespace fleetor {

/// The row of a vehicle that was found: what was looked for is marked, and a button pins it.
class FoundVehicleCell final : public VehicleTableViewCell {
 public:
  /// In the user's language.
  struct Words {
    std::string pin;
    std::string unpin;
    std::string pinned;
  };

  FoundVehicleCell(std::string reuseIdentifier, Words words);

  void show(const Vehicle& vehicle, const SearchWords& sought, bool pinned, std::function<void()> togglePin);

  Button& pinButton() { return pinButton_; }
  std::string accessibleName() const override;

 private:
  Words words_;
  Button pinButton_;
};

}  // namespace fleetor
