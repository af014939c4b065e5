#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "ui/background_watch.h"
#include "ui/environment.h"
#include "ui/wake_up.h"
#include "vehicle/vehicle_table_view_cell.h"
#include "vehicle/watch/last_readings.h"

namespace fleetor {

/// Keeps what was last received of each vehicle, and how old that is, in the vehicle's row: "52km/h · 25 s".
/// Nothing is updated while the list is hidden, nothing has been received, or the program is in the
/// background. Main thread only.
class RowReadings {
 public:
  RowReadings(Environment& environment, std::shared_ptr<LastReadings> readings);

  void setShown(bool shown);

  /// That row has been filled for that vehicle.
  void follow(const std::shared_ptr<VehicleTableViewCell>& row, std::int64_t vehicleId);

 private:
  bool isWatched() const { return shown_ && !background_.inBackground(); }
  void update();
  void fill(Label& label, std::int64_t vehicleId);

  Environment& environment_;
  std::shared_ptr<LastReadings> readings_;
  std::map<std::weak_ptr<VehicleTableViewCell>, std::int64_t, std::owner_less<>> rows_;
  WakeUp ages_;
  bool shown_ = false;
  BackgroundWatch background_;
  Connection received_;
};

}  // namespace fleetor
