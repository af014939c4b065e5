#include "vehicle/watch/last_readings.h"

#include <any>
#include <utility>

#include "ui/notification_center.h"
#include "vehicle/notifications.h"

namespace fleetor {

LastReadings::LastReadings(Environment& environment) : environment_(environment) {
  environment_.notificationCenter.addObserver(
      this, kFleetorNotificationLive, [this](const Notification& notification) {
        if (const auto* live = std::any_cast<std::shared_ptr<const Live>>(&notification.object)) keep(*live);
      });
}

LastReadings::~LastReadings() {
  environment_.notificationCenter.removeObserver(this);
}

const LastReadings::Entry* LastReadings::of(std::int64_t vehicleId) {
  forgetOthers();
  const auto found = entries_.find(vehicleId);
  return found == entries_.end() ? nullptr : &found->second;
}

void LastReadings::keep(std::shared_ptr<const Live> live) {
  forgetOthers();
  const std::int64_t id = live->vehicle().vehicleId;
  earlier_.erase(id);
  entries_.insert_or_assign(id, Entry{std::move(live), environment_.clock.uptime()});
  received.emit(id);
}

void LastReadings::addEarlier(VehicleWatch::Earlier reading) {
  forgetOthers();
  const std::int64_t id = reading.live->vehicle().vehicleId;
  if (!entries_.contains(id)) earlier_.insert_or_assign(id, std::move(reading));
}

const VehicleWatch::Earlier* LastReadings::earlierOf(std::int64_t vehicleId) {
  forgetOthers();
  const auto found = earlier_.find(vehicleId);
  return found == earlier_.end() ? nullptr : &found->second;
}

void LastReadings::forgetOthers() {
  if (!session_.hasEnded()) return;
  entries_.clear();
  earlier_.clear();
  session_ = {};
}

}  // namespace fleetor
