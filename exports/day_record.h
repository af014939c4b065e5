#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "day/day_points.h"
#include "model/vehicle_records.h"

namespace fleetor {

/// What a day's file is made of. Texts are as the service sends them.
struct DayRecord {
  Vehicle vehicle;
  std::uint32_t colour = 0;                 ///< of the vehicle's line, 0xRRGGBB
  std::string day;                          ///< "yyyy-MM-dd"
  std::shared_ptr<const DayPoints> points;  ///< null: not loaded
  std::vector<RouteItem> trips;
  std::vector<std::pair<std::string, std::string>> totals;  ///< caption, in the user's language, and value
};

/// A name for the day's file without its ending: the vehicle's name and the day, without what file systems
/// forbid, at most 100 bytes.
std::string fileNameOf(const DayRecord& record);

/// "2026-11-20 07:03:12, 0:12:00": what is known of when the vehicle stood there.
std::string timeTextOf(const DayStop& stop);

/// The address of a point.
const std::string& addressOf(const DayPoints& points, std::size_t point);

}  // namespace fleetor
