#pragma once

#include <string>

#include "exports/day_record.h"
#include "exports/export_words.h"

namespace fleetor::test {

/// A day of three points with a stop in the middle. Every text is `text`.
inline DayRecord dayOfTests(const std::string& text) {
  DayRecord record;
  record.vehicle.name = text;
  record.vehicle.registration = "KR 1";
  record.day = "2026-11-20";
  record.colour = 0x1e90ff;
  DayPoints points;
  points.coordinates = {{50.06, 19.94}, {50.07, 19.95}, {50.08, -0.5}};
  points.seconds = {25392, 25500.5f, 86399};
  for (const char* const time : {"2026-11-20T07:03:12", "2026-11-20T07:05:00", "today, late"})
    points.times.add(time);
  points.kilometres = {0, 1.25f, 9.5f};
  points.addresses = {0, 1, 0};
  points.addressTexts = {"Depot", text};
  points.stops = {{1, "2026-11-20 07:05:00", "0:10:00", 600}};
  record.points = std::make_shared<const DayPoints>(std::move(points));
  RouteItem trip;
  trip.status = "Driving";
  trip.timeFrom = "2026-11-20 07:03:12";
  trip.timeTo = "2026-11-20T07:05:00";
  trip.duration = "0:01:48";
  trip.distance = "-1.2";
  trip.from = "Depot";
  trip.to = text;
  record.trips = {trip};
  record.totals = {{"Distance", "1.2 km"}};
  return record;
}

inline ExportWords englishWords() {
  return ExportWords::of([](const std::string& key) { return key; });
}

}  // namespace fleetor::test
