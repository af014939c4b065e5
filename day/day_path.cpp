#include "day/day_path.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "map/great_circle.h"

namespace fleetor {

namespace {

constexpr double standingRadius = 25;     // metres: a receiver at rest scatters by some of them
constexpr double shortestPause = 60;      // seconds: a red light is none
constexpr double shortestSpeedStep = 10;  // seconds: over less, the points' scatter would show as speed

constexpr double metresOfDegree = 111195.08;

/// Of the distance on a plane that touches the Earth at that latitude.
double squaredMetres(Coordinate from, Coordinate to, double cosineOfLatitude) {
  const double east = (to.longitude - from.longitude) * metresOfDegree * cosineOfLatitude;
  const double north = (to.latitude - from.latitude) * metresOfDegree;
  return east * east + north * north;
}

double cosineOf(double degrees) {
  return std::cos(degrees * std::numbers::pi / 180);
}

/// In an eighth of the time of the great circle for neighbours, a centimetre off at most.
double metresBetween(Coordinate from, Coordinate to) {
  constexpr double near = 5000;  // metres
  const double squared = squaredMetres(from, to, cosineOf((from.latitude + to.latitude) / 2));
  return squared < near * near ? std::sqrt(squared) : distanceInMetres(from, to);
}

/// The points, those without a position straight between the ones that have one.
std::vector<Coordinate> placedWay(const DayPoints& day) {
  std::vector<Coordinate> way = day.coordinates;
  std::optional<std::size_t> before;
  for (std::size_t i = 0; i < way.size();) {
    if (day.isPlaced(i)) {
      before = i++;
      continue;
    }
    std::size_t next = i;
    while (next < way.size() && !day.isPlaced(next))
      ++next;
    const Coordinate after = next < way.size() ? way[next] : before ? way[*before] : Coordinate{};
    const Coordinate from = before ? way[*before] : after;
    const double begin = day.seconds[before.value_or(i)];
    const double span = day.seconds[std::min(next, way.size() - 1)] - begin;
    for (; i < next; ++i) {
      const double share = span > 0 ? (day.seconds[i] - begin) / span : 0;
      way[i] = {from.latitude + (after.latitude - from.latitude) * share,
                from.longitude + std::remainder(after.longitude - from.longitude, 360) * share};
    }
  }
  return way;
}

}  // namespace

DayPath::DayPath(std::shared_ptr<const DayPoints> day) : day_(std::move(day)) {
  if (!day_->unplaced.empty()) way_ = placedWay(*day_);
  findPauses();
  measure();
}

void DayPath::findPauses() {
  const auto& coordinates = way();
  const auto& seconds = day_->seconds;
  const auto add = [this](float begin, float end, bool isGap) {
    if (!pauses_.empty() && pauses_.back().end == begin && pauses_.back().isGap == isGap)
      pauses_.back().end = end;
    else
      pauses_.push_back({begin, end, isGap});
  };
  std::size_t anchor = 0;
  double cosine = cosineOf(coordinates[0].latitude);
  const auto endStay = [&](std::size_t last) {
    if (seconds[last] - seconds[anchor] >= shortestPause) add(seconds[anchor], seconds[last], false);
  };
  for (std::size_t i = 1; i < seconds.size(); ++i) {
    const bool isLong = seconds[i] - seconds[i - 1] > DayPoints::longestGap;
    if (!isLong &&
        squaredMetres(coordinates[anchor], coordinates[i], cosine) <= standingRadius * standingRadius)
      continue;
    endStay(i - 1);
    if (isLong) {
      const auto [stoodUntil, isGap] = day_->stepFrom(i - 1);
      if (stoodUntil > seconds[i - 1]) add(seconds[i - 1], stoodUntil, false);
      if (isGap) add(stoodUntil, seconds[i], true);
    }
    anchor = i;
    cosine = cosineOf(coordinates[i].latitude);
  }
  endStay(seconds.size() - 1);
}

void DayPath::measure() {
  const auto& coordinates = way();
  double metres = 0;
  auto pause = pauses_.begin();
  measured_.reserve(day_->seconds.size());
  measured_.push_back(0);
  for (std::size_t i = 1; i < day_->seconds.size(); ++i) {
    while (pause != pauses_.end() && pause->end < day_->seconds[i])
      ++pause;
    const bool stands = pause != pauses_.end() && !pause->isGap && pause->begin <= day_->seconds[i - 1];
    if (!stands) metres += metresBetween(coordinates[i - 1], coordinates[i]);
    measured_.push_back(static_cast<float>(metres / 1000));
  }
}

DayPath::Step DayPath::stepAt(double moment) const {
  const auto& seconds = day_->seconds;
  const auto later = std::ranges::upper_bound(seconds, moment);
  if (later == seconds.begin()) return {0, 0};
  if (later == seconds.end()) return {seconds.size() - 1, 0};
  const auto next = static_cast<std::size_t>(later - seconds.begin());
  const bool isLong = seconds[next] - seconds[next - 1] > DayPoints::longestGap;
  const double until = isLong ? day_->stepFrom(next - 1).stoodUntil : seconds[next - 1];
  // Where it stands all the way, it drifts to the next point.
  const double before = until < seconds[next] ? until : seconds[next - 1];
  return {next - 1, std::max(0.0, moment - before) / (seconds[next] - before)};
}

const DayPause* DayPath::pauseAt(double moment) const {
  const auto pause = std::ranges::lower_bound(pauses_, moment, {}, &DayPause::end);
  return pause != pauses_.end() && pause->begin <= moment ? &*pause : nullptr;
}

double DayPath::valueAt(const std::vector<float>& column, const Step& step) {
  const double here = column[step.from];
  return step.share > 0 ? here + (column[step.from + 1] - here) * step.share : here;
}

double DayPath::kilometresAt(double moment) const {
  return valueAt(hasSentDistance() ? day_->kilometres : measured_, stepAt(moment));
}

std::optional<double> DayPath::averageSpeedBetween(double from, double to) const {
  from = std::max(from, begin());
  to = std::min(to, end());
  const DayPause* const pause = pauseAt((from + to) / 2);
  if (to <= from || (pause && pause->isGap)) return std::nullopt;
  return (valueAt(measured_, stepAt(to)) - valueAt(measured_, stepAt(from))) / (to - from) * 3600;
}

// The service's distances are often given in whole tenths of a kilometre: too coarse for a speed.
std::optional<double> DayPath::averageSpeedAt(const Step& step) const {
  const auto& seconds = day_->seconds;
  const auto lies = [&](std::size_t from) {
    return seconds[from + 1] - seconds[from] <= DayPoints::longestGap;
  };
  if (step.from + 1 == seconds.size() || !lies(step.from)) return std::nullopt;
  std::size_t first = step.from;
  std::size_t last = step.from + 1;
  while (seconds[last] - seconds[first] < shortestSpeedStep) {
    const bool onward = last + 1 < seconds.size() && lies(last);
    const bool back = first > 0 && lies(first - 1);
    if (!onward && !back) break;
    if (back) --first;
    if (onward) ++last;
  }
  return averageSpeedBetween(seconds[first], seconds[last]);
}

double DayPath::courseAt(std::size_t from) const {
  const auto& coordinates = way();
  from = std::min(from, coordinates.size() - 2);
  while (from > 0 && coordinates[from] == coordinates[from + 1])
    --from;
  const WorldPoint a = project(coordinates[from]);
  const WorldPoint b = project(coordinates[from + 1]);
  const double degrees = std::atan2(std::remainder(b.x - a.x, 1), a.y - b.y) * 180 / std::numbers::pi;
  return degrees < 0 ? degrees + 360 : degrees;
}

DayPlace DayPath::at(double moment) const {
  const Step step = stepAt(moment);
  DayPlace found;
  found.passed = static_cast<double>(step.from) + step.share;
  found.place = project(way()[step.from]);
  found.isPlaced = day_->isPlaced(step.from) && (step.share == 0 || day_->isPlaced(step.from + 1));
  if (step.share > 0) {
    const WorldPoint next = project(way()[step.from + 1]);
    found.place.x += std::remainder(next.x - found.place.x, 1) * step.share;
    found.place.y += (next.y - found.place.y) * step.share;
  }
  found.pause = pauseAt(moment);
  // What a receiver at rest reports as movement is none.
  const std::size_t moved =
      found.pause && !found.pause->isGap ? stepAt(found.pause->begin).from : step.from + 1;
  found.course = courseAt(moved > 0 ? moved - 1 : 0);
  found.kilometres = kilometresAt(moment);
  if (!found.pause) found.averageSpeed = averageSpeedAt(step);
  const std::size_t nearer = step.from + (step.share > 0.5 ? 1 : 0);
  if (nearer < day_->addresses.size()) found.address = day_->addresses[nearer];
  return found;
}

double DayPath::momentOfPoint(double from, int steps) const {
  const auto& seconds = day_->seconds;
  double moment = std::clamp(from, begin(), end());
  for (; steps > 0 && moment < end(); --steps)
    moment = *std::ranges::upper_bound(seconds, moment);
  for (; steps < 0 && moment > begin(); ++steps)
    moment = *(std::ranges::lower_bound(seconds, moment) - 1);
  return moment;
}

}  // namespace fleetor
