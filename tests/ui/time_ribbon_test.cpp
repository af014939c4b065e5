#include "ui/controls/time_ribbon.h"

#include "support/testing.h"

namespace fleetor::test {
namespace {

using Stretch = TimeRibbon::Stretch;
using enum TimeRibbon::Weight;

constexpr float hour = 3600;

TEST(TimeRibbon, StepsOverWhatIsBlankAndStaysAtItsEnds) {
  TimeRibbon ribbon;
  std::vector<double> chosen;
  const auto connection =
      ribbon.momentChosen.connect([&](double seconds) { chosen.push_back(seconds / hour); });
  ribbon.choose(hour);
  ribbon.step(true);
  EXPECT_THAT(chosen, SizeIs(0)) << "nothing is shown";

  const auto describe = [](std::size_t index) { return "stretch " + std::to_string(index); };
  ribbon.show({{0, 7 * hour, blank},
               {7 * hour, 8 * hour, strong},
               {8 * hour, 9 * hour, blank},
               {9 * hour, 10 * hour, light},
               {10 * hour, 24 * hour, blank}},
              {}, 10 * hour, describe);
  EXPECT_EQ(ribbon.description(), "");
  for (const bool forward : {true, true, true, false, false})
    ribbon.step(forward);
  EXPECT_THAT(chosen, ElementsAre(7, 9, 7));
  EXPECT_EQ(ribbon.description(), "stretch 1");
  ribbon.choose(1e9);
  EXPECT_EQ(ribbon.description(), "stretch 4");
  ribbon.step(false);
  ribbon.setMoment(8.5 * hour);
  ribbon.step(false);
  ribbon.choose(-5);
  EXPECT_THAT(chosen, ElementsAre(7, 9, 7, 24, 9, 7, 0)) << "what the program sets is not chosen";
  ribbon.show({{0, 24 * hour, light}}, {}, {}, describe);
  EXPECT_FALSE(ribbon.moment());
  ribbon.step(false);
  EXPECT_EQ(ribbon.moment(), 0);
}

TEST(TimeRibbon, DrawsADayOfThousandsOfStretchesInAsManyPiecesAsColumns) {
  TimeRibbon ribbon;
  std::vector<Stretch> stretches;
  for (float at = 0; at < 24 * hour; at += 10)
    stretches.push_back({at, at + 10, at < 12 * hour ? light : static_cast<int>(at) % 20 ? blank : strong});
  stretches.back().end = 24 * hour;
  ribbon.show(stretches, {}, {}, {});
  const auto drawn = ribbon.inColumns(96);
  ASSERT_LE(drawn.size(), 96u);
  EXPECT_EQ(drawn.front(), (Stretch{0, 12 * hour, light}));
  EXPECT_EQ(drawn.back().end, 24 * hour);

  ribbon.show({{0, 6 * hour, blank}, {6 * hour, 6.4f * hour, strong}, {6.4f * hour, 24 * hour, light}}, {},
              {}, {});
  EXPECT_THAT(ribbon.inColumns(24),
              ElementsAre(Stretch{0, 6 * hour, blank}, Stretch{6 * hour, 24 * hour, light}));
  EXPECT_THAT(ribbon.inColumns(48), SizeIs(3));
  EXPECT_THAT(ribbon.inColumns(0), SizeIs(0));
}

}  // namespace
}  // namespace fleetor::test
