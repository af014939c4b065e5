#include "shell/widget_reading.h"

#include "support/memory_stores.h"
#include "support/testing.h"
#include "vehicle/notifications.h"

namespace fleetor::test {
namespace {

using testing::Pair;

TEST(WidgetReading, BelongsToTheChosenVehicleAndGoesWithTheChoice) {
  NotificationCenter notifications;
  MemorySettings shared;
  WidgetReading reading(notifications, shared);
  const auto texts = [&] {
    const auto value = shared.object("WidgetReading");
    return value ? std::get<Settings::Texts>(*value) : Settings::Texts();
  };
  Vehicle van;
  van.vehicleId = 12;
  van.name = Text("Van 12");
  const auto answer = [&](std::int64_t id, const char* speed) {
    auto live = std::make_shared<Live>();
    live->vehicles = van;
    live->vehicles.vehicleId = id;
    live->datetime = Text("2026-03-11 14:25:37");
    live->speed = Text(speed);
    live->street = Text("Harbour Road 7");
    notifications.postNotificationName(kFleetorNotificationLive, std::shared_ptr<const Live>(live));
  };
  const auto choose = [&] {
    shared.setObject(van.vehicleId, "WidgetVehicle");
    notifications.postNotificationName(kFleetorNotificationWidgetVehicle, van);
  };

  answer(12, "48");
  EXPECT_TRUE(texts().empty()) << "nothing is chosen";
  choose();
  EXPECT_THAT(texts(), UnorderedElementsAre(Pair("vehicle", "12"), Pair("name", "Van 12")));
  answer(13, "9");
  notifications.postNotificationName(kFleetorNotificationLive);  // a poll that failed
  EXPECT_FALSE(texts().contains("speed"));
  answer(12, "48");
  const auto full = texts();
  EXPECT_THAT(full, testing::IsSupersetOf({Pair("dateTime", "2026-03-11 14:25:37"), Pair("speed", "48"),
                                           Pair("street", "Harbour Road 7"), Pair("vehicle", "12")}));
  choose();
  reading.forgetUnlessChosen();
  EXPECT_EQ(texts(), full) << "the same vehicle once more";

  van.vehicleId = 14;
  choose();
  EXPECT_THAT(texts(), UnorderedElementsAre(Pair("vehicle", "14"), Pair("name", "Van 12")));
  shared.removeObject("WidgetVehicle");
  reading.forgetUnlessChosen();
  EXPECT_FALSE(shared.object("WidgetReading"));
}

}  // namespace
}  // namespace fleetor::test
