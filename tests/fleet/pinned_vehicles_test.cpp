#include "fleet/pinned_vehicles.h"

#include "support/fake_device.h"
#include "support/memory_stores.h"
#include "support/testing.h"

namespace fleetor {
namespace {

TEST(PinnedVehicles, AreBoundedAndReadWhateverTheSettingsHold) {
  test::MemorySettings settings;
  test::FakeDevice device;
  settings.values["Account"] = "a";
  settings.values["Pins"] = Settings::Texts{{"a", "3  x 17 9999999999999999999 4x 42"}};
  PinnedVehicles pins(settings, device);
  EXPECT_THAT(pins.ids(), ElementsAre(3, 17, 42));
  pins.setPinned(17, false);
  for (int id = 1000; id < 1000 + static_cast<int>(PinnedVehicles::mostPins) - 1; ++id)
    pins.setPinned(id, true);
  EXPECT_EQ(pins.ids().size(), PinnedVehicles::mostPins);
  EXPECT_EQ(pins.ids().front(), 42) << "the oldest went";
  for (int user = 0; user < 40; ++user) {
    pins.chooseAccount("user " + std::to_string(user));
    EXPECT_TRUE(pins.ids().empty());
    pins.setPinned(user, true);
  }
  EXPECT_EQ(std::get<Settings::Texts>(settings.values["Pins"]).size(), PinnedVehicles::mostAccounts);
  EXPECT_THAT(PinnedVehicles(settings, device).ids(), ElementsAre(39));
  settings.values["Pins"] = "something else";
  EXPECT_TRUE(PinnedVehicles(settings, device).ids().empty());
}

}  // namespace
}  // namespace fleetor
