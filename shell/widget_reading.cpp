#include "shell/widget_reading.h"

#include <any>
#include <memory>

#include "vehicle/notifications.h"

namespace fleetor {

namespace {

constexpr const char* readingKey = "WidgetReading";

std::string vehicleOf(const Settings& settings) {
  const auto value = settings.object(readingKey);
  const auto* texts = value ? std::get_if<Settings::Texts>(&*value) : nullptr;
  const auto found = texts ? texts->find("vehicle") : Settings::Texts::const_iterator();
  return texts && found != texts->end() ? found->second : std::string();
}

}  // namespace

WidgetReading::WidgetReading(NotificationCenter& notifications, Settings& sharedSettings)
    : notifications_(notifications), sharedSettings_(sharedSettings) {
  notifications_.addObserver(this, kFleetorNotificationWidgetVehicle,
                             [this](const Notification& notification) {
                               choose(std::any_cast<const Vehicle&>(notification.object));
                             });
  notifications_.addObserver(this, kFleetorNotificationLive, [this](const Notification& notification) {
    if (const auto* live = std::any_cast<std::shared_ptr<const Live>>(&notification.object)) take(**live);
  });
}

WidgetReading::~WidgetReading() {
  notifications_.removeObserver(this);
}

bool WidgetReading::isChosen(const std::string& vehicle) const {
  const auto value = sharedSettings_.object("WidgetVehicle");
  const auto* chosen = value ? std::get_if<std::int64_t>(&*value) : nullptr;
  return chosen && std::to_string(*chosen) == vehicle;
}

// Choosing the same vehicle again leaves its last reading where it is.
void WidgetReading::choose(const Vehicle& vehicle) {
  const std::string id = std::to_string(vehicle.vehicleId);
  if (vehicleOf(sharedSettings_) == id) return;
  sharedSettings_.setObject(Settings::Texts{{"vehicle", id}, {"name", vehicle.name.str()}}, readingKey);
  sharedSettings_.synchronize();
}

void WidgetReading::take(const Live& live) {
  const std::string id = std::to_string(live.vehicle().vehicleId);
  if (!isChosen(id)) return;
  sharedSettings_.setObject(Settings::Texts{{"vehicle", id},
                                            {"name", live.vehicle().name.str()},
                                            {"dateTime", live.dateTime().str()},
                                            {"speed", live.speed.str()},
                                            {"street", live.street.str()}},
                            readingKey);
  sharedSettings_.synchronize();
}

void WidgetReading::forgetUnlessChosen() {
  if (isChosen(vehicleOf(sharedSettings_))) return;
  sharedSettings_.removeObject(readingKey);
  sharedSettings_.synchronize();
}

}  // namespace fleetor
