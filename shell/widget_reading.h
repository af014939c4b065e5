#pragma once

#include <string>

#include "model/vehicle_records.h"
#include "platform/settings.h"
#include "ui/notification_center.h"

namespace fleetor {

/// Posted when the user has chosen the widget's vehicle, after the choice is stored. The object is the
/// Vehicle.
inline constexpr const char* kFleetorNotificationWidgetVehicle = "kFleetorNotificationWidgetVehicle";

/// Stores what the widget shows in the shared settings, under "WidgetReading", as texts that are always
/// replaced together: "vehicle" (the id of the vehicle) and "name" as soon as a vehicle is chosen;
/// "dateTime", "speed" (km/h) and "street" with each live answer for that vehicle. A widget shows them only
/// if "vehicle" equals "WidgetVehicle". Main thread only.
class WidgetReading {
 public:
  /// What is handed in outlives this object.
  WidgetReading(NotificationCenter& notifications, Settings& sharedSettings);
  ~WidgetReading();
  WidgetReading(const WidgetReading&) = delete;
  WidgetReading& operator=(const WidgetReading&) = delete;

  /// Removes the reading if its vehicle is not the chosen one any more.
  void forgetUnlessChosen();

 private:
  bool isChosen(const std::string& vehicle) const;
  void choose(const Vehicle& vehicle);
  void take(const Live& live);

  NotificationCenter& notifications_;
  Settings& sharedSettings_;
};

}  // namespace fleetor
