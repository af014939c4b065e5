#include "day/day_points.h"

#include <algorithm>
#include <chrono>
#include <unordered_map>

#include "map/great_circle.h"
#include "values/quantities.h"
#include "values/times.h"

namespace fleetor {

namespace {

// More than that are metres, or another number that is no distance.
constexpr double mostTimesLine = 10;
constexpr double mostBeyondLine = 100;  // km; of a long way that has points at its ends only
constexpr double samePlace = 200;       // metres

/// One value for each point, none below the one before it. Empty as soon as one is not understood.
template <class Read>
std::vector<float> risingColumn(const std::vector<MapEntry>& entries, Read read) {
  std::vector<float> column;
  column.reserve(entries.size());
  std::optional<double> before;
  for (const MapEntry& entry : entries) {
    const std::optional<double> value = read(entry);
    if (!value || (before && *value < *before)) return {};
    before = value;
    column.push_back(static_cast<float>(*value));
  }
  return column;
}

std::vector<float> secondsOf(const std::vector<MapEntry>& entries, std::string_view dayText) {
  const auto day = readDay(dayText);
  if (!day) return {};
  return risingColumn(entries, [&](const MapEntry& entry) -> std::optional<double> {
    const auto time = readTime(entry.dateTime, *day);
    if (!time || *time < *day || *time > *day + std::chrono::days(1)) return std::nullopt;
    return static_cast<double>((*time - *day).count());
  });
}

std::vector<float> kilometresOf(const std::vector<MapEntry>& entries, const DayPoints& points) {
  const double first = entries.empty() ? 0 : readKilometres(entries.front().totdist).value_or(0);
  auto column = risingColumn(entries, [&](const MapEntry& entry) -> std::optional<double> {
    const auto kilometres = readKilometres(entry.totdist);
    return kilometres ? std::optional(*kilometres - first) : std::nullopt;
  });
  double drawn = 0;
  const Coordinate* before = nullptr;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (!points.isPlaced(i)) continue;
    if (before) drawn += distanceInMetres(*before, points.coordinates[i]) / 1000;
    before = &points.coordinates[i];
  }
  if (!column.empty() && column.back() > mostTimesLine * drawn + mostBeyondLine) column.clear();
  return column;
}

DayStop stopAt(std::size_t index, const MapEntry& entry) {
  DayStop stop{static_cast<std::uint32_t>(index), entry.dateTime.str(), entry.duration.str(), {}};
  if (const auto parked = readDuration(entry.duration)) stop.parked = static_cast<float>(parked->count());
  return stop;
}

}  // namespace

DayPoints DayPoints::fromAnswer(const MapResponse& answer, std::string_view day) {
  DayPoints points;
  points.day = day;
  if (!answer.map) return points;
  const std::vector<MapEntry>& entries = *answer.map;
  points.coordinates.reserve(entries.size());
  points.addresses.reserve(entries.size());
  std::unordered_map<std::string_view, std::uint32_t> known;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const MapEntry& entry = entries[i];
    points.coordinates.push_back(entry.coordinate());
    // The line reads a decimal comma as the end of the number: that is another place than the one meant.
    if (readCoordinate(entry.location.lat, entry.location.lon) != points.coordinates.back())
      points.unplaced.push_back(static_cast<std::uint32_t>(i));
    const auto [address, isNew] =
        known.try_emplace(entry.street, static_cast<std::uint32_t>(points.addressTexts.size()));
    if (isNew) points.addressTexts.push_back(entry.street.str());
    points.addresses.push_back(address->second);
    points.times.add(entry.dateTime);
    if (entry.isParking()) points.stops.push_back(stopAt(i, entry));
  }
  points.seconds = secondsOf(entries, day);
  points.kilometres = kilometresOf(entries, points);
  return points;
}

DayStep DayPoints::stepFrom(std::size_t point) const {
  const float now = seconds[point];
  const float next = seconds[point + 1];
  float until = now;
  const auto stop = std::ranges::lower_bound(stops, point, {}, &DayStop::index);
  if (stop != stops.end() && stop->index == point) {
    until = std::min(now + stop->parked.value_or(next - now), next);
    if (until == next && next - now > longestGap) {
      const bool isKnown = isPlaced(point) && isPlaced(point + 1);
      const bool isFar = isKnown && distanceInMetres(coordinates[point], coordinates[point + 1]) > samePlace;
      if (isFar || (!isKnown && !stop->parked)) until = now;
    }
  }
  return {until, next - until > longestGap};
}

std::vector<std::uint32_t> DayPoints::gaps() const {
  std::vector<std::uint32_t> found;
  for (std::uint32_t i = 0; i + 1 < seconds.size(); ++i)
    if (seconds[i + 1] - seconds[i] > longestGap && stepFrom(i).isGap) found.push_back(i);
  return found;
}

}  // namespace fleetor
