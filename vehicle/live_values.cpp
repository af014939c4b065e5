#include "vehicle/live_values.h"

#include "values/quantities.h"

namespace fleetor {

namespace {

constexpr double drivingFrom = 1;          ///< km/h
constexpr float plainImageAbove = 179.0f;  ///< degrees

}  // namespace

std::optional<bool> isDriving(const Live& live) {
  const auto speed = readNumber(live.speed.view());
  return speed ? std::optional(*speed >= drivingFrom) : std::nullopt;
}

std::optional<double> courseOf(const Live& live) {
  const auto course = readNumber(live.direction.view());
  return course && *course >= 0 && *course <= 360 ? course : std::nullopt;
}

std::string markerImage(const Live& live) {
  const std::string icon = live.vehicle().icon.str();
  const auto heading = static_cast<float>(doubleValue(live.direction));
  return heading <= plainImageAbove ? "p" + icon : icon;
}

}  // namespace fleetor
