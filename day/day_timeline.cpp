#include "day/day_timeline.h"

#include <algorithm>
#include <chrono>
#include <optional>

#include "values/times.h"

namespace fleetor {

namespace {

constexpr float longestOverlap = 60;  // seconds; times to the minute overlap

/// Seconds since the midnight, held to the day.
std::optional<float> secondOfDay(std::string_view text, ServiceDay day) {
  const auto time = readTime(text, day);
  if (!time) return std::nullopt;
  return std::clamp(static_cast<float>((*time - day).count()), 0.0f, DayTimeline::length);
}

}  // namespace

DayTimeline DayTimeline::fromPoints(const DayPoints& points) {
  DayTimeline day;
  const auto count = static_cast<std::uint32_t>(points.seconds.size());
  for (std::uint32_t i = 0; i + 1 < count; ++i) {
    const auto [stoodUntil, isGap] = points.stepFrom(i);
    day.add({points.seconds[i], stoodUntil, DayStage::Kind::parking, i, i});
    day.add({stoodUntil, points.seconds[i + 1], isGap ? DayStage::Kind::unknown : DayStage::Kind::driving, i,
             i + 1});
  }
  if (!points.stops.empty() && points.stops.back().index + 1 == count) {
    const float begin = points.seconds.back();
    const float end = std::min(begin + points.stops.back().parked.value_or(0), length);
    day.add({begin, end, DayStage::Kind::parking, count - 1, count - 1});
  }
  if (!points.seconds.empty()) day.finish();
  return day;
}

DayTimeline DayTimeline::fromRows(std::span<const RouteItem> rows, std::string_view dayText) {
  DayTimeline day;
  const auto midnight = readDay(dayText);
  for (std::uint32_t i = 0; midnight && i < rows.size(); ++i) {
    const auto from = secondOfDay(rows[i].timeFrom, *midnight), to = secondOfDay(rows[i].timeTo, *midnight);
    if (!from || !to || *to < *from) continue;
    const float end = day.isEmpty() ? 0 : day.stretches.back().end;
    if (*from + longestOverlap < end) return {};
    day.add({std::max(*from, end), *to, DayStage::fromItem(rows[i], dayText).kind, i, i});
  }
  if (!day.isEmpty()) day.finish();
  return day;
}

void DayTimeline::add(DayStretch stretch) {
  if (stretch.end <= stretch.begin) return;
  const float end = isEmpty() ? 0 : stretches.back().end;
  if (stretch.begin > end)
    stretches.push_back({end, stretch.begin, DayStage::Kind::unknown, stretch.first, stretch.first});
  if (stretch.kind != DayStage::Kind::unknown) knownUntil = stretch.end;
  // Two rows never share a point.
  const bool continues = !isEmpty() && stretches.back().kind == stretch.kind &&
                         stretch.kind != DayStage::Kind::parking && stretches.back().last == stretch.first;
  if (!continues) return stretches.push_back(stretch);
  stretches.back().end = stretch.end;
  stretches.back().last = stretch.last;
}

void DayTimeline::finish() {
  const std::uint32_t last = isEmpty() ? 0 : stretches.back().last;
  add({isEmpty() ? 0 : stretches.back().end, length, DayStage::Kind::unknown, last, last});
}

}  // namespace fleetor
