#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "day/day_points.h"

// Points and rows of 20 November 2026.
namespace fleetor::test {

inline MapEntry point(std::string_view time, std::string_view kilometres = "0",
                      std::string_view street = "Mill Lane") {
  MapEntry entry;
  entry.location.lat = "50.5";
  entry.location.lon = "19.5";
  entry.dateTime = time;
  entry.totdist = kilometres;
  entry.street = street;
  return entry;
}

inline MapEntry parking(std::string_view time, std::string_view duration, std::string_view kilometres = "0") {
  MapEntry entry = point(time, kilometres, "Home");
  entry.label = "Parking";
  entry.duration = duration;
  return entry;
}

inline MapEntry pointAt(std::string_view time, std::string_view latitude, std::string_view longitude) {
  MapEntry entry = point(time);
  entry.location.lat = latitude;
  entry.location.lon = longitude;
  return entry;
}

inline DayPoints pointsOf(std::vector<MapEntry> entries) {
  MapResponse answer;
  answer.map = std::move(entries);
  return DayPoints::fromAnswer(answer, "2026-11-20");
}

inline RouteItem trip(std::string_view from, std::string_view to, std::string_view duration = "",
                      std::string_view distance = "12.5") {
  RouteItem row;
  row.status = "?";
  row.timeFrom = from;
  row.timeTo = to;
  row.duration = duration;
  row.distance = distance;
  row.from = "Home";
  row.to = "Mill Lane";
  return row;
}

inline RouteItem stay(std::string_view from, std::string_view to, std::string_view duration = "") {
  RouteItem row = trip(from, to, duration, "0");
  row.to = row.from;
  return row;
}

}  // namespace fleetor::test
