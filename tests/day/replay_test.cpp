#include "day/replay.h"

#include "support/testing.h"

namespace fleetor::test {
namespace {

constexpr double degree = 111195;  // metres

/// Points by time and metres to the east of a place on the equator.
DayPoints dayOf(const std::vector<std::pair<float, double>>& points) {
  DayPoints day;
  for (const auto& [second, east] : points) {
    day.seconds.push_back(second);
    day.coordinates.push_back({0, 20 + east / degree});
  }
  return day;
}

DayPath pathOf(DayPoints day) {
  return DayPath(std::make_shared<const DayPoints>(std::move(day)));
}

std::string pausesOf(DayPoints day) {
  const DayPath path = pathOf(std::move(day));
  std::string text;
  for (const auto& pause : path.pauses())
    text += std::to_string(std::lround(pause.begin)) + "-" + std::to_string(std::lround(pause.end)) +
            (pause.isGap ? " gap " : " ");
  return text;
}

TEST(DayPath, FindsWhereTheVehicleStoodAndWhereNothingIsKnown) {
  const std::tuple<const char*, std::vector<std::pair<float, double>>, const char*> cases[] = {
      {"a drive", {{0, 0}, {60, 800}, {120, 1600}}, ""},
      {"a red light", {{0, 0}, {10, 100}, {40, 102}, {65, 101}, {80, 200}}, ""},
      {"a receiver that scatters", {{0, 0}, {10, 100}, {40, 120}, {80, 85}, {100, 200}}, "10-80 "},
      {"at both ends", {{0, 0}, {90, 0}, {100, 100}, {190, 100}}, "0-90 100-190 "},
      {"ten minutes", {{0, 0}, {600, 5000}}, ""},
      {"longer", {{0, 0}, {10, 100}, {611, 5000}}, "10-611 gap "},
      {"in one place, but unseen", {{0, 0}, {700, 0}}, "0-700 gap "},
      {"two in a row", {{0, 0}, {700, 9000}, {1400, 9000}}, "0-1400 gap "},
  };
  for (const auto& [what, points, pauses] : cases)
    EXPECT_EQ(pausesOf(dayOf(points)), pauses) << what;
  const std::tuple<double, std::optional<float>, const char*> stops[] = {
      {510, {}, "60-3660 "},
      {30'000, {}, "60-3660 gap "},
      {30'000, 3600, "60-3660 gap "},
      {30'000, 1800, "60-1860 1860-3660 gap "},
      {1000, 3400, "60-3460 "}};
  for (const auto& [nextAt, parked, pauses] : stops) {
    DayPoints day = dayOf({{0, 0}, {60, 500}, {3660, nextAt}, {3700, 31'000}});
    day.stops = {{1, "", "", parked}};
    EXPECT_EQ(pausesOf(day), pauses) << nextAt << " m";
    if (nextAt == 1000) {
      EXPECT_DOUBLE_EQ(pathOf(day).at(3400).passed, 1) << "it stands at its point";
    }
  }
}

TEST(DayPath, PlacesTheVehicleBetweenTwoPoints) {
  DayPoints day = dayOf({{0, 0}, {100, 1000}, {100, 1000}, {200, 1000}, {1000, 5000}});
  day.addressTexts = {"here", "there"};
  day.addresses = {0, 0, 0, 1, 1};
  const DayPath path = pathOf(day);
  const DayPlace half = path.at(50);
  EXPECT_DOUBLE_EQ(half.passed, 0.5);
  EXPECT_NEAR(half.place.x, project({0, 20 + 500 / degree}).x, 1e-9);
  EXPECT_NEAR(half.course, 90, 1e-6);
  EXPECT_NEAR(half.kilometres, 0.5, 0.001);
  EXPECT_NEAR(half.averageSpeed.value(), 36, 0.05);
  EXPECT_EQ(half.address, 0U);
  EXPECT_DOUBLE_EQ(path.at(100).passed, 2) << "the later of two points of one moment";
  EXPECT_EQ(path.at(160).address, 1U);
  EXPECT_FALSE(path.at(150).averageSpeed) << "it stands";
  EXPECT_NEAR(path.at(150).course, 90, 1e-6);
  EXPECT_TRUE(path.at(600).pause->isGap);
  EXPECT_FALSE(path.at(600).averageSpeed);
  EXPECT_DOUBLE_EQ(path.at(5000).passed, 4);

  day.kilometres = {0, 2, 2, 2, 10};
  EXPECT_DOUBLE_EQ(pathOf(day).at(50).kilometres, 1);

  DayPoints around = dayOf({{0, 0}, {100, 0}});
  around.coordinates = {{0, 179.9}, {0, -179.9}};
  EXPECT_NEAR(pathOf(around).at(75).place.x, 1 + 0.05 / 360, 1e-9);
  EXPECT_NEAR(pathOf(around).at(75).course, 90, 1e-6);

  // What a receiver scatters from second to second is no speed.
  std::vector<std::pair<float, double>> zigzag;
  zigzag.reserve(40);
  for (int second = 0; second < 40; ++second)
    zigzag.emplace_back(static_cast<float>(second), 10 * second + (second % 2 ? 2 : -2));
  EXPECT_NEAR(pathOf(dayOf(zigzag)).at(20).averageSpeed.value(), 36, 2);

  EXPECT_NEAR(path.averageSpeedBetween(0, 200).value(), 18, 0.05);
  EXPECT_FALSE(path.averageSpeedBetween(300, 400));
}

TEST(DayPath, MeasuresNoWayToAPointWithoutAPosition) {
  DayPoints day = dayOf({{0, 0}, {100, 1000}, {150, 0}, {200, 2000}, {300, 3000}, {400, 0}});
  day.coordinates[2] = day.coordinates[5] = {};
  day.unplaced = {2, 5};
  const DayPath path = pathOf(day);
  EXPECT_NEAR(path.kilometresAt(400), 3, 0.001);
  EXPECT_NEAR(path.averageSpeedBetween(100, 150).value(), 36, 0.05);
  day.unplaced = {0, 1, 2, 3, 4, 5};
  EXPECT_EQ(pathOf(day).kilometresAt(400), 0);
}

TEST(Replay, RunsAtItsRateAndThroughPausesInASecond) {
  const auto path = std::make_shared<const DayPath>(
      std::make_shared<const DayPoints>(dayOf({{0, 0}, {60, 800}, {4060, 9000}, {4120, 9800}})));
  Replay replay(path);
  EXPECT_FALSE(replay.advance(1));
  replay.play();
  replay.setRate(30);
  EXPECT_TRUE(replay.advance(1));
  EXPECT_DOUBLE_EQ(replay.moment(), 30);
  EXPECT_TRUE(replay.advance(1.5));
  EXPECT_NEAR(replay.moment(), 60 + 2000, 1e-6);
  Replay inFrames(path);
  inFrames.setRate(30);
  inFrames.play();
  for (int frame = 0; frame < 250; ++frame)
    EXPECT_TRUE(inFrames.advance(0.01));
  EXPECT_NEAR(inFrames.moment(), replay.moment(), 1e-3);
  EXPECT_TRUE(replay.advance(2.4));
  EXPECT_FALSE(replay.advance(0.2));
  EXPECT_DOUBLE_EQ(replay.moment(), 4120);
  replay.play();
  EXPECT_DOUBLE_EQ(replay.moment(), 0);
  replay.step(2);
  EXPECT_FALSE(replay.isPlaying());
  EXPECT_DOUBLE_EQ(replay.moment(), 4060);
  replay.moveTo(61);
  replay.step(-1);
  EXPECT_DOUBLE_EQ(replay.moment(), 60);
  replay.step(-5);
  EXPECT_DOUBLE_EQ(replay.moment(), 0);
  replay.moveTo(std::nan(""));
  EXPECT_DOUBLE_EQ(replay.moment(), 0);

  const auto parked = dayOf({{0, 0}, {90, 0}, {100, 100}});
  EXPECT_DOUBLE_EQ(Replay(std::make_shared<const DayPath>(std::make_shared<DayPoints>(parked))).moment(), 90);
}

}  // namespace
}  // namespace fleetor::test
