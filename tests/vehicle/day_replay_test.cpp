#include "vehicle/day_replay.h"

#include "support/fake_device.h"
#include "support/testing.h"
#include "vehicle/day_charts.h"

namespace fleetor::test {
namespace {

constexpr double degree = 111195;  // metres

/// On the equator, 1,000 metres east of the one before each: at 10:00, 10:01, 10:20 and 10:22.
std::shared_ptr<DayPoints> morning() {
  auto day = std::make_shared<DayPoints>();
  day->seconds = {36000, 36060, 37200, 37320};
  for (int i = 0; i < 4; ++i)
    day->coordinates.push_back({0, 20 + i * 1000 / degree});
  day->addressTexts = {"Harbour", "Mill"};
  day->addresses = {0, 0, 1, 1};
  return day;
}

class DayReplayTest : public testing::Test {
 protected:
  DayReplayTest() {
    map.moveCamera([](MapCamera& camera) { camera.setViewport(400, 800); });
    map.setRegion({0, 20}, 1000, 1000, false);
    replay.setDay(morning(), line, "van");
  }

  std::string shown() {
    const Player::State& now = replay.state();
    return now.time + "|" + now.speed + "|" + now.distance + "|" + now.address + "|" + now.note;
  }
  ScreenPoint vehicleAt() { return map.camera().screenPoint(map.traveller()->place); }
  void play(double seconds) {
    for (int frame = 0; frame < static_cast<int>(seconds * 60); ++frame)
      replay.advance(1.0 / 60);
  }

  FakeDevice device;
  MapView map;
  std::shared_ptr<MapPolyline> line = MapPolyline::polylineWithCoordinates(morning()->coordinates);
  DayReplay replay{map, device};
};

TEST_F(DayReplayTest, ShowsWhatWasAtTheMomentAndIsGoneWhenItIsClosed) {
  EXPECT_TRUE(replay.state().available);
  replay.togglePlaying();
  replay.moveTo(36010);
  EXPECT_FALSE(map.traveller());
  replay.setOpen(true);
  EXPECT_EQ(shown(), "10:00:00|60 km/h|≈ 0.0 km|Harbour|");
  EXPECT_EQ(map.traveller()->line, line);
  replay.moveTo(36630);
  EXPECT_EQ(shown(), "10:10:30||≈ 1.5 km|Harbour|No positions were sent, 10:01 – 10:20");
  EXPECT_TRUE(replay.state().gap);
  EXPECT_NEAR(map.traveller()->passed, 1.5, 1e-9);
  replay.moveTo(37260);
  EXPECT_EQ(shown(), "10:21:00|30 km/h|≈ 2.5 km|Mill|");
  replay.setOpen(false);
  EXPECT_FALSE(map.traveller());
  EXPECT_FALSE(replay.path());
}

TEST_F(DayReplayTest, IsThereOnlyForADayWithTimesOnItsOwnLine) {
  auto timeless = morning();
  timeless->seconds.clear();
  auto shorter = morning();
  shorter->coordinates.pop_back();
  shorter->seconds.pop_back();
  auto atOnce = morning();
  atOnce->seconds.assign(4, 36000);
  replay.setOpen(true);
  for (const auto& day : {timeless, shorter, atOnce, std::shared_ptr<DayPoints>()}) {
    replay.setDay(day, line, "van");
    replay.setOpen(true);
    EXPECT_FALSE(replay.state().available || replay.state().open || map.traveller());
  }
  replay.setDay(morning(), nullptr, "van");
  EXPECT_FALSE(replay.state().available);
  replay.setDay(morning(), line, "van");
  EXPECT_FALSE(replay.state().open);
  replay.setOpen(true);
  replay.moveTo(37000);
  replay.togglePlaying();
  replay.setDay(morning(), line, "van");
  EXPECT_TRUE(replay.state().open) << "another day";
  EXPECT_FALSE(replay.state().playing);
  EXPECT_EQ(replay.moment(), 36000);
}

TEST_F(DayReplayTest, AnnouncesFewTextsWhileItPlaysAndStopsAtTheEnd) {
  replay.setOpen(true);
  int texts = 0;
  int moments = 0;
  const Connection changes = replay.changed.connect([&] { ++texts; });
  const Connection moves = replay.moved.connect([&] { ++moments; });
  replay.togglePlaying();
  play(0.5);
  EXPECT_EQ(moments, 30);
  EXPECT_LE(texts, 7);
  EXPECT_NEAR(replay.moment(), 36030, 1);
  for (const int rate : {120, 300, 30}) {
    replay.nextRate();
    EXPECT_EQ(replay.state().rate, rate);
  }
  play(7);
  EXPECT_FALSE(replay.state().playing);
  EXPECT_EQ(replay.state().time, "10:22:00");
}

TEST_F(DayReplayTest, KeepsTheVehicleInSightUntilTheUserMovesTheMap) {
  replay.setOpen(true);
  replay.togglePlaying();
  play(0.9);
  EXPECT_NEAR(vehicleAt().x, 320, 1e-6) << "a fifth from the edge";
  map.moveCamera([](MapCamera& camera) { camera.zoomBy(0.5, {0, 0}); });
  EXPECT_TRUE(replay.state().following);
  replay.moveTo(37320);
  EXPECT_NEAR(vehicleAt().x, 200, 1e-6) << "out of sight: back to the middle";

  map.moveCamera([](MapCamera& camera) { camera.panBy(-150, 0); });
  EXPECT_FALSE(replay.state().following);
  const auto looksAt = map.camera().centre();
  replay.moveTo(36000);
  EXPECT_EQ(map.camera().centre(), looksAt);
  replay.follow();
  while (map.camera().moving())
    map.moveCamera([](MapCamera& camera) { camera.advance(0.02); });
  EXPECT_TRUE(replay.state().following);
  EXPECT_NEAR(vehicleAt().x, 200, 1e-6);
}

TEST_F(DayReplayTest, ItsChartsShowTheDayFromEndToEndAndShareItsMoment) {
  DayCharts charts(replay, device);
  replay.setOpen(true);
  charts.button().tap();
  const auto& speeds = charts.speed().points();
  EXPECT_NEAR(speeds.front().value, 60, 0.1);
  EXPECT_TRUE(std::isnan(speeds[speeds.size() / 2].value)) << "nothing was sent";
  EXPECT_NEAR(speeds.back().value, 30, 0.1);
  EXPECT_NEAR(charts.distance().points().back().value, 3, 0.01);
  charts.distance().choose(1);
  EXPECT_EQ(replay.moment(), 37320);
  EXPECT_EQ(charts.speed().moment(), 37320);
  replay.setOpen(false);
  EXPECT_FALSE(charts.button().selected());
  EXPECT_TRUE(charts.speed().points().empty() && charts.distance().points().empty());
}

TEST_F(DayReplayTest, GoesStraightOnWhereAPointHasNoPosition) {
  auto day = morning();
  day->coordinates[2] = {0, 0};
  day->unplaced = {2};
  replay.setDay(day, line, "van");
  replay.setOpen(true);
  EXPECT_TRUE(replay.place());
  replay.moveTo(37200);
  EXPECT_FALSE(replay.place());
  EXPECT_NEAR(unproject(map.traveller()->place).longitude, 20, 0.03);
}

}  // namespace
}  // namespace fleetor::test
