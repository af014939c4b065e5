#include "vehicle/watch/vehicle_watch.h"

#include <chrono>

#include "day/day_points.h"
#include "map/great_circle.h"
#include "platform/number_text.h"
#include "values/quantities.h"
#include "values/times.h"

namespace fleetor {

namespace {

constexpr double drivingFrom = 1;  ///< km/h
constexpr double samePlace = 100;  ///< metres

struct ReadingTexts {
  Text Live::*value;
  Text Live::*unit;
  const char* fixedUnit;
};

constexpr ReadingTexts readingTexts[] = {
    {&Live::speed, nullptr, "km/h"},
    {&Live::rpm, nullptr, ""},
    {&Live::powerSupply, &Live::powerSupplyType, ""},
    {&Live::temp, nullptr, "°C"},
    {&Live::fuel, &Live::fuelType, ""},
};

}  // namespace

void VehicleWatch::received(const Live& live) {
  const Uptime now = clock_.uptime();
  const bool isGap = seen_ && now - *seen_ > std::chrono::seconds(ReadingSeries::gap);
  const auto speed = readNumber(live.speed.view());
  if (isGap || !speed) motion_.reset();
  if (const bool drives = speed && *speed >= drivingFrom; speed && (!motion_ || motion_->drives != drives))
    motion_ = Motion{drives, now, motion_.has_value(), {}};
  for (std::size_t i = 0; i < series_.size(); ++i) {
    const auto& [value, unit, fixedUnit] = readingTexts[i];
    if (const auto number = readNumber((live.*value).view()))
      series_[i].add(static_cast<std::int32_t>(now.count()), static_cast<float>(*number),
                     unit ? (live.*unit).str() : fixedUnit);
  }
  seen_ = now;
  last_ = live;
}

void VehicleWatch::received(const DayPoints& points, const std::string& day) {
  if (!motion_ || motion_->drives || motion_->seenToBegin || points.stops.empty()) return;
  const DayStop& stop = points.stops.back();
  const auto date = readDay(day);
  const auto reported = readTime(last_->dateTime().view());
  const auto since = date ? readTime(stop.time, *date) : std::nullopt;
  if (stop.index + 1 != points.size() || !since || !reported || *since > *reported ||
      std::chrono::floor<std::chrono::days>(*reported) != *date ||
      distanceInMetres(points.coordinates.back(), last_->coordinate()) > samePlace)
    return;
  const std::chrono::duration<double> time = *since - std::chrono::floor<std::chrono::days>(*since);
  motion_->reportedSince = clockText(time.count());
}

}  // namespace fleetor
