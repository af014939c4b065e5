#include "day/day_points.h"
#include "support/client.h"
#include "ui/controls/chart.h"
#include "vehicle/watch/reading_series.h"
#include "vehicle/watch/vehicle_watch.h"

namespace fleetor::test {
namespace {

/// A signed-in phone with the second vehicle open.
class Watch : public testing::Test {
 protected:
  Watch() {
    client.start();
    client.transport.answer("/live", [this](const HttpRequest& request) {
      return std::optional(liveReply(numberOf(request.url, "vehid"), speed, lat));
    });
    client.transport.answer("/map", mapReply({"Parking"}));
    pager = client.open(1);
  }

  std::string status() {
    auto& page = *client.find<InfoDetailViewController>();
    const auto text = [&page](const char* name) { return outletOf<Label>(page, name).text(); };
    return text("speedLabel") + text("speedUnitLabel") + " " + text("motionLabel") + " " +
           text("motionSinceLabel");
  }
  void show(int tab) {
    pager->pagesTabBar().tap(tab);
    client.settle();
  }

  Client client;
  VehicleViewController* pager = nullptr;
  int speed = 57;
  std::string lat = "50.06";
};

TEST_F(Watch, ShowsSinceWhenTheVehicleDrivesOrStandsAsFarAsItWasSeen) {
  EXPECT_EQ(status(), "57km/h Driving ");
  client.advance(75);
  EXPECT_EQ(status(), "57km/h Driving for over 1 min");
  speed = 0;
  client.advance(15);
  EXPECT_EQ(status(), "0km/h Standing ");
  client.advance(125);
  EXPECT_EQ(status(), "0km/h Standing for 2 min");
  client.transport.leaveOpen("/live");
  client.advance(90);
  EXPECT_EQ(status(), "0km/h  ") << "what it does now is not known";
  client.transport.answer("/live", liveReply(2, 0));
  client.transport.answerOpen("/live", liveReply(2, 0));
  client.advance(61);
  EXPECT_EQ(status(), "0km/h Standing for over 1 min") << "it may have driven meanwhile";
}

TEST_F(Watch, CountsTheSilenceOfAVehicleFromItsLastReport) {
  const auto& line = outletOf<Label>(*client.find<InfoDetailViewController>(), "noReportLabel");
  client.advance(119);
  EXPECT_EQ(line.text(), "");
  show(2);
  client.advance(481);
  show(0);
  EXPECT_EQ(line.text(), "no new report for 10 min");
  HttpReply next = liveReply(2, 57);
  next.body.replace(next.body.find("08:00:15"), 8, "08:10:15");
  client.transport.answer("/live", next);
  client.advance(15);
  EXPECT_EQ(line.text(), "");
}

TEST(VehicleWatch, KeepsTheDaysLastStopAndAppliesItWhileItFits) {
  VirtualQueues clock;
  VehicleWatch watch(clock);
  const auto receive = [&](int speed, const char* odometer = "120345 km", const char* lat = "50.06") {
    const auto live = std::make_shared<Live>();
    live->speed = std::to_string(speed);
    live->datetime = "2026-03-10 14:30:00";
    live->odometer = odometer;
    live->location.lat = lat;
    live->location.lon = "19.94";
    watch.received(live);
    return watch.motion()->reportedSince;
  };
  DayPoints today;
  today.day = "2026-03-10";
  today.coordinates = {{50.06, 19.94}};
  today.stops = {{0, "14:05", "", {}}};
  watch.received(today);
  DayPoints yesterday = today;
  yesterday.day = "2026-03-09";
  yesterday.stops.clear();
  watch.received(yesterday);
  EXPECT_EQ(receive(0), "14:05") << "the track came before the first reading";
  clock.advance(Seconds(300));
  EXPECT_EQ(receive(0), "14:05") << "back from the background";
  EXPECT_EQ(receive(0, "120345 km", ""), "14:05") << "it has lost its position";
  EXPECT_EQ(receive(0, "120345 km", "50.08"), "") << "it stands elsewhere";
  clock.advance(Seconds(300));
  EXPECT_EQ(receive(0, "120350 km"), "") << "it was driven meanwhile";
  watch.received(today);
  EXPECT_EQ(receive(0, "none"), "14:05");
  clock.advance(Seconds(300));
  EXPECT_EQ(receive(0, "none"), "") << "it may have been driven meanwhile";
  watch.received(today);
  receive(40);
  clock.advance(Seconds(300));
  EXPECT_EQ(receive(0), "") << "it was seen to drive";
  receive(40);
  watch.received(today);
  clock.advance(Seconds(300));
  EXPECT_EQ(receive(0), "") << "it drove when the track came";
}

TEST_F(Watch, ATapOnAReadingOpensTheChartOfWhatWasSeenAndAnotherTapClosesIt) {
  auto& page = *client.find<InfoDetailViewController>();
  auto& table = page.itemsTableView();
  const auto& chart = outletOf<Chart>(page, "readingChart");
  const auto& note = outletOf<Label>(page, "readingChartLabel");
  const auto& close = outletOf<Button>(page, "closeChartButton");
  constexpr int speedRow = 2, rpmRow = 3, directionRow = 4, temperatureRow = 7;
  table.tap(directionRow);
  EXPECT_FALSE(close.enabled()) << "a direction has no chart";
  table.tap(speedRow);
  EXPECT_TRUE(close.enabled());
  EXPECT_EQ(note.text(), "One value so far");
  EXPECT_TRUE(chart.points().empty());
  speed = 60;
  client.advance(15);
  EXPECT_EQ(note.text(), "");
  EXPECT_EQ(chart.accessibleName(), "Speed, 15 s – now, 57 – 60 km/h");
  client.advance(75 * 60);
  EXPECT_EQ(chart.accessibleName(), "Speed, 1:15 h – now, 57 – 60 km/h");
  table.tap(rpmRow);
  EXPECT_EQ(chart.accessibleName(), "RPM, 1:15 h – now, 2100 – 2100");
  table.tap(temperatureRow);
  EXPECT_EQ(chart.unit(), "°C");
  table.tap(temperatureRow);
  EXPECT_FALSE(close.enabled());
  client.advance(15);
  EXPECT_TRUE(chart.points().empty()) << "a closed chart holds nothing";
}

TEST_F(Watch, TheMarkedMomentOfAChartIsTheLatestUntilAnotherIsChosenAndAgesWithTheRest) {
  auto& page = *client.find<InfoDetailViewController>();
  auto& chart = outletOf<Chart>(page, "readingChart");
  page.itemsTableView().tap(2);
  for (speed = 10; speed < 50; speed += 10)
    client.advance(15);
  EXPECT_EQ(chart.valueText(*chart.moment()), "40 km/h");
  chart.choose(0.5);
  EXPECT_EQ(*chart.moment(), -30);
  client.advance(15);
  EXPECT_EQ(*chart.moment(), -45);
  EXPECT_EQ(chart.valueText(*chart.moment()), "20 km/h");
  chart.choose(1);
  speed = 7;
  client.advance(15);
  EXPECT_EQ(chart.valueText(*chart.moment()), "7 km/h");
  client.transport.leaveOpen("/live");
  client.advance(300);
  EXPECT_EQ(chart.accessibleName(), "Speed, 6 min – 5 min, 7 – 57 km/h") << "what was seen last is not now";
}

TEST(ReadingSeries, KeepsADayInFewPointsAndTheExtremesAmongThem) {
  ReadingSeries series;
  for (int i = 0; i < 6000; ++i) {
    const float value = i == 400 ? 99.0f : i == 401 ? -9.0f : static_cast<float>(i % 7);
    series.add(15 * i, value, "V");
    ASSERT_LE(series.points().size(), ReadingSeries::most);
  }
  const auto& points = series.points();
  EXPECT_LE(points.back().seconds - points.front().seconds, ReadingSeries::longest);
  EXPECT_GT(points.back().seconds - points.front().seconds, ReadingSeries::longest - 300);
  EXPECT_TRUE(std::ranges::is_sorted(points, {}, &ReadingSeries::Point::seconds));
  const auto [lowest, highest] = std::ranges::minmax(points, {}, &ReadingSeries::Point::value);
  EXPECT_EQ(lowest.value, -9);
  EXPECT_EQ(highest.value, 99);
  series.add(15 * 6000, 12, "%");
  EXPECT_EQ(series.points().size(), 1u) << "volts and percent are not one line";
}

TEST(ReadingSeries, StoresAValueThatStaysTheSameAsTwoPointsAndMarksGaps) {
  ReadingSeries series;
  for (int i = 0; i < 100; ++i)
    series.add(15 * i, 3, "");
  EXPECT_EQ(series.points().size(), 2u);
  series.add(15 * 99 + 61, 3, "");
  ASSERT_EQ(series.points().size(), 4u);
  EXPECT_TRUE(std::isnan(series.points()[2].value));
}

}  // namespace
}  // namespace fleetor::test
