#include "vehicle/watch/vehicle_watch.h"

#include <chrono>
#include <utility>

#include "day/day_points.h"
#include "map/great_circle.h"
#include "platform/number_text.h"
#include "values/quantities.h"
#include "values/times.h"
#include "vehicle/live_values.h"

namespace fleetor {

namespace {

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

void VehicleWatch::received(std::shared_ptr<const Live> record) {
  const Live& live = *record;
  const Uptime now = clock_.uptime();
  if (!last_ || live.dateTime() != last_->dateTime()) reported_ = now;
  const bool isGap = last_ && now - seen_ > std::chrono::seconds(ReadingSeries::gap);
  const auto driving = isDriving(live);
  if (isGap || !driving) motion_.reset();
  const bool drives = driving.value_or(false);
  if (driving && (!motion_ || motion_->drives != drives))
    motion_ = Motion{drives, now, motion_.has_value(), {}};
  const auto driven = readKilometres(live.odometer.view());
  const auto drivenBefore = last_ ? readKilometres(last_->odometer.view()) : std::nullopt;
  const bool isCounted = driven && drivenBefore;
  if (drives || (isCounted && *driven != *drivenBefore) || (isGap && !isCounted)) stop_.reset();
  for (std::size_t i = 0; i < series_.size(); ++i) {
    const auto& [value, unit, fixedUnit] = readingTexts[i];
    if (const auto number = readNumber((live.*value).view()))
      series_[i].add(static_cast<std::int32_t>(now.count()), static_cast<float>(*number),
                     unit ? (live.*unit).str() : fixedUnit);
  }
  seen_ = now;
  last_ = std::move(record);
  applyStop();
}

void VehicleWatch::received(const DayPoints& points) {
  const auto date = readDay(points.day);
  if (!date || (stop_ && *date < stop_->day)) return;
  stop_.reset();
  if (points.stops.empty() || (motion_ && motion_->drives)) return;
  const DayStop& stop = points.stops.back();
  const auto since = readTime(stop.time, *date);
  if (stop.index + 1 != points.size() || !points.isPlaced(stop.index) || !since) return;
  stop_ = Stop{*date, *since, points.coordinates.back()};
  applyStop();
}

void VehicleWatch::applyStop() {
  using std::chrono::floor, std::chrono::days;
  if (!motion_) return;
  if (!stop_ || motion_->drives || motion_->seenToBegin) return motion_->reportedSince.clear();
  const auto reported = readTime(last_->dateTime().view());
  const auto place = readCoordinate(last_->location.lat.view(), last_->location.lon.view());
  if (!reported || !place) return;  // says nothing about the stop
  const bool fits = stop_->since <= *reported && floor<days>(*reported) == stop_->day &&
                    distanceInMetres(stop_->place, *place) <= samePlace;
  const std::chrono::duration<double> time = stop_->since - floor<days>(stop_->since);
  motion_->reportedSince = fits ? clockText(time.count()) : "";
}

}  // namespace fleetor
