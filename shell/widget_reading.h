#pragma once

#include <string>

#include "model/vehicle_records.h"
#include "platform/settings.h"
#include "ui/notification_center.h"

namespace fleetor {

/// Posted when the user has chosen the widget's vehicle, after the choice is stored. The object is the
/// Vehicle.
inline constexpr const char* kFleetorNotificationWidgetVehicle = "kFleetorNotificationWidgetVehicle";

/// Keeps in the shared settings, under "WidgetReading", what the widget shows beside the choice itself, as
/// texts that are always replaced together: "vehicle" (the id that the others belong to) and "name" as soon
/// as a vehicle is chosen; "dateTime", "speed" (km/h) and "street" with each live answer for that vehicle. A
/// widget shows them only when "vehicle" is what "WidgetVehicle" says. Main thread only.
class WidgetReading {
 public:
  /// What is handed in outlives this object.
  WidgetReading(NotificationCenter& notifications, Settings& sharedSettings);
  ~WidgetReading();
  WidgetReading(const WidgetReading&) = delete;
  WidgetReading& operator=(const WidgetReading&) = delete;

  /// Call when the choice may have gone: a reading does not outlive it.
  void forgetUnlessChosen();

 private:
  bool isChosen(const std::string& vehicle) const;
  void choose(const Vehicle& vehicle);
  void take(const Live& live);

  NotificationCenter& notifications_;
  Settings& sharedSettings_;
};

}  // namespace fleetor
