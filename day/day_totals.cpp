#include "day/day_totals.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "day/day_timeline.h"
#include "values/quantities.h"
#include "values/times.h"

namespace fleetor {

namespace {

using std::chrono::seconds;

constexpr seconds widestDifference{60};  // between a duration and its times, which may be to the minute

/// What of the row lies within the day: its own duration, or from its times; none when one of the two ends is
/// not known, or when its times and its duration contradict each other.
std::optional<seconds> lengthOf(const RouteItem& row, ServiceDay day) {
  const ServiceDay nextDay = day + std::chrono::days(1);
  const auto duration = readDuration(row.duration);
  auto from = readTime(row.timeFrom, day), to = readTime(row.timeTo, day);
  if (!from && to && duration) from = *to - *duration;
  if (!to && from && duration) to = *from + *duration;
  if (!from || !to || *to < *from) return std::nullopt;
  if (duration && std::chrono::abs(*duration - (*to - *from)) > widestDifference) return std::nullopt;
  if (*from >= day && *to <= nextDay) return duration ? *duration : *to - *from;
  const auto begin = std::max<ServiceTime>(*from, day), end = std::min<ServiceTime>(*to, nextDay);
  return std::max(end - begin, seconds(0));
}

std::optional<seconds> secondOfDay(const Text& text, ServiceDay day) {
  const auto time = readTime(text, day);
  return time && *time >= day && *time <= day + std::chrono::days(1) ? std::optional(*time - day)
                                                                     : std::nullopt;
}

std::optional<double> kilometresOf(const std::vector<RouteItem>& rows) {
  double sum = 0;
  for (const RouteItem& row : rows) {
    const auto kilometres = readKilometres(row.distance);
    if (!kilometres || *kilometres < 0) return std::nullopt;
    sum += *kilometres;
  }
  return sum;
}

}  // namespace

DayTotals DayTotals::fromAnswer(const RouteResponse& answer, std::string_view dayText) {
  DayTotals totals;
  const auto day = readDay(dayText);
  if (!day || !answer.route || answer.route->empty()) return totals;
  const std::vector<RouteItem>& rows = *answer.route;
  if (answer.total != static_cast<std::int64_t>(rows.size())) return totals;
  totals.kilometres = kilometresOf(rows);

  int trips = 0, stops = 0;
  std::optional<seconds> driving(0), standing(0), firstStart, lastArrival;
  for (const RouteItem& row : rows) {
    const DayStage::Kind kind = DayStage::fromItem(row, dayText).kind;
    if (kind == DayStage::Kind::unknown) return totals;
    const bool isTrip = kind == DayStage::Kind::driving;
    const auto length = lengthOf(row, *day);
    auto& sum = isTrip ? driving : standing;
    sum = sum && length ? std::optional(*sum + *length) : std::nullopt;
    ++(isTrip ? trips : stops);
    if (!isTrip) continue;
    if (trips == 1) firstStart = length ? secondOfDay(row.timeFrom, *day) : std::nullopt;
    lastArrival = length ? secondOfDay(row.timeTo, *day) : std::nullopt;
  }
  totals.trips = trips;
  totals.stops = stops;
  totals.driving = driving;
  totals.standing = standing;
  if (DayTimeline::fromRows(rows, dayText).isEmpty()) return totals;
  if (firstStart > seconds(0)) totals.firstStart = firstStart;
  if (DayStage::fromItem(rows.back(), dayText).kind == DayStage::Kind::parking)
    totals.lastArrival = lastArrival;
  return totals;
}

}  // namespace fleetor
