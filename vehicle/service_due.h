#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/account_records.h"
#include "model/vehicle_records.h"

namespace fleetor {

/// What is due of a vehicle, in words in the user's language, each in one line.
struct ServiceDue {
  std::vector<std::string> overdue;
  std::vector<std::string> soon;  ///< within 30 days or 1,000 km; without any, the nearest day that is known

  bool isUrgent = false;  ///< something is overdue or soon
};

/// Compares the days and the distance of the services with the day and the odometer of the latest reading:
/// the device's own day may be another one than the service's. What is not understood on either side is not
/// stated; neither is a distance service more than 5,000 km ago or 50,000 km ahead, for that text means
/// something else than a reading of the odometer.
ServiceDue serviceDue(const Info& info, const Live& live, const Localizer& localized);

}  // namespace fleetor
