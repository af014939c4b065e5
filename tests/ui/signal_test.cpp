#include "ui/signal.h"

#include "support/testing.h"
#include "ui/notification_center.h"

namespace fleetor::test {

TEST(Signal, SurvivesWhateverASlotDoes) {
  auto signal = std::make_unique<Signal<>>();
  std::string heard;
  Connection later;
  Connection added;
  Connection itself = signal->connect([&] {
    heard += "a";
    itself.disconnect();
    later.disconnect();
    added = signal->connect([&] { heard += "n"; });
  });
  later = signal->connect([&] { heard += "never"; });
  signal->emit();
  EXPECT_EQ(heard, "a") << "a slot connected meanwhile waits for the next emission";
  signal->emit();
  EXPECT_EQ(heard, "an");

  const Connection destroyer = signal->connect([&] { signal.reset(); });
  const Connection orphan = signal->connect([&] { heard += "never"; });
  signal->emit();
  EXPECT_EQ(signal, nullptr);
  EXPECT_EQ(heard, "ann") << "nothing is called once the signal is destroyed";
}

TEST(NotificationCenter, CallsThoseThatAskedForTheNameAndAreStillThere) {
  NotificationCenter center;
  std::string heard;
  const int owner[3]{};
  const auto listen = [&](int who, const std::string& name) {
    center.addObserver(&owner[who], name, [&heard, who](const Notification& notification) {
      const auto* text = std::any_cast<std::string>(&notification.object);
      heard += std::to_string(who) + notification.name + (text ? *text : "-") + " ";
    });
  };
  listen(0, "x");
  listen(1, "x");
  listen(1, "x");
  listen(0, "y");
  center.postNotificationName("x", std::string("!"));
  center.postNotificationName("y");
  center.postNotificationName("z");
  EXPECT_EQ(heard, "0x! 1x! 1x! 0y- ");

  heard.clear();
  center.removeObserver(&owner[1]);
  center.addObserver(&owner[2], "x", [&](const Notification&) {
    center.removeObserver(&owner[1]);
    center.removeObserver(&owner[2]);
    listen(2, "x");
  });
  listen(1, "x");
  center.postNotificationName("x");
  EXPECT_EQ(heard, "0x- ") << "1 was removed during the post, 2 has asked anew and hears the next one";
  center.postNotificationName("x");
  EXPECT_EQ(heard, "0x- 0x- 2x- ");
}

}  // namespace fleetor::test
