#include "day/day_stage.h"

#include <algorithm>

#include "values/quantities.h"
#include "values/times.h"

namespace fleetor {

namespace {

constexpr float slack = 5 * 60;          // seconds
constexpr float wholeDay = 24 * 3600;    // seconds; the points of a trip that lasts longer end there
constexpr std::size_t dayLength = 10;    // of "yyyy-MM-dd"
constexpr double shortestRoundTrip = 1;  // km; below, the position of a vehicle at rest may have wandered

DayStage::Kind kindOf(const RouteItem& item) {
  const auto kilometres = readKilometres(item.distance.view());
  if (!kilometres || *kilometres < 0 || item.from.empty() || item.to.empty()) return DayStage::Kind::unknown;
  const bool isOnePlace = item.from == item.to;
  if (isOnePlace && *kilometres > 0 && *kilometres < shortestRoundTrip) return DayStage::Kind::unknown;
  const bool isDriven = *kilometres > 0 || !isOnePlace;
  return isDriven ? DayStage::Kind::driving : DayStage::Kind::parking;
}

}  // namespace

DayStage DayStage::fromItem(const RouteItem& item, std::string_view day) {
  DayStage stage;
  stage.kind = kindOf(item);
  const auto midnight = readDay(day);
  if (!midnight) return stage;
  const auto begin = readTime(item.timeFrom.view(), *midnight);
  if (!begin || std::chrono::floor<std::chrono::days>(*begin) != *midnight) return stage;
  std::string_view clock = item.timeFrom.view();
  if (readDay(clock.substr(0, dayLength))) clock.remove_prefix(dayLength + 1);
  stage.clock = clock;

  const auto end = readTime(item.timeTo.view(), *midnight);
  if (!end || *end < *begin) return stage;
  stage.begin = static_cast<float>((*begin - *midnight).count());
  stage.end = static_cast<float>((*end - *midnight).count());
  return stage;
}

std::optional<DayStage::Range> DayStage::pointsOf(const DayPoints& points) const {
  if (!begin || !end) return std::nullopt;
  const auto& seconds = points.seconds;
  const auto first = std::ranges::lower_bound(seconds, *begin);
  const float last = std::min(*end, wholeDay);
  const auto behind = std::ranges::upper_bound(seconds, last);
  if (behind - first < 2 || *first > *begin + slack || *(behind - 1) < last - slack) return std::nullopt;
  return Range{first - seconds.begin(), behind - 1 - seconds.begin()};
}

}  // namespace fleetor
