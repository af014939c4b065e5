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

/// When the row begins and ends; a time that is not understood follows from the duration.
struct Span {
  std::optional<ServiceTime> from;
  std::optional<ServiceTime> to;
  std::optional<seconds> duration;

  explicit Span(const RouteItem& row, ServiceDay day)
      : from(readTime(row.timeFrom, day)),
        to(readTime(row.timeTo, day)),
        duration(readDuration(row.duration)) {
    if (!from && to && duration) from = *to - *duration;
    if (!to && from && duration) to = *from + *duration;
  }
  bool isWithin(ServiceDay day) const {
    return (!from || *from >= day) && (!to || *to <= day + std::chrono::days(1));
  }
  bool isOutside(ServiceDay day) const {
    return (to && *to < day) || (from && *from >= day + std::chrono::days(1));
  }
};

/// What of the row lies within the day: its own duration, or from its times; none when one of the two ends is
/// not known, or when its times and its duration contradict each other.
std::optional<seconds> lengthOf(const Span& row, ServiceDay day) {
  const auto& [from, to, duration] = row;
  if (!from || !to || *to < *from) return std::nullopt;
  if (duration && std::chrono::abs(*duration - (*to - *from)) > widestDifference) return std::nullopt;
  if (row.isWithin(day)) return duration ? *duration : *to - *from;
  return std::min<ServiceTime>(*to, day + std::chrono::days(1)) - std::max<ServiceTime>(*from, day);
}

std::optional<seconds> secondOfDay(const Text& text, ServiceDay day) {
  const auto time = readTime(text, day);
  return time && *time >= day && *time <= day + std::chrono::days(1) ? std::optional(*time - day)
                                                                     : std::nullopt;
}

/// How much of a distance lies on which side of midnight is not known.
std::optional<double> kilometresOf(const std::vector<RouteItem>& rows, ServiceDay day) {
  double sum = 0;
  for (const RouteItem& row : rows) {
    const auto kilometres = readKilometres(row.distance);
    if (!kilometres || *kilometres < 0) return std::nullopt;
    if (*kilometres > 0 && !Span(row, day).isWithin(day)) return std::nullopt;
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
  if (std::ranges::any_of(rows, [&](const RouteItem& row) { return Span(row, *day).isOutside(*day); }))
    return totals;
  totals.kilometres = kilometresOf(rows, *day);

  int trips = 0, stops = 0;
  std::optional<seconds> driving(0), standing(0), firstStart, lastArrival;
  for (const RouteItem& row : rows) {
    const DayStage::Kind kind = DayStage::fromItem(row, dayText).kind;
    if (kind == DayStage::Kind::unknown) return totals;
    const bool isTrip = kind == DayStage::Kind::driving;
    const auto length = lengthOf(Span(row, *day), *day);
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
