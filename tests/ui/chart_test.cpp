#include "ui/controls/chart.h"

#include <limits>

#include "platform/number_text.h"
#include "support/testing.h"

namespace fleetor::test {
namespace {

constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

std::string textsOf(const std::vector<ChartTick>& ticks) {
  std::string text;
  for (const auto& tick : ticks)
    text += tick.text + " ";
  return text;
}

TEST(Chart, MarksRoundValuesThatIncludeAllOfThem) {
  const std::tuple<double, double, const char*> cases[] = {{0, 87, "0 50 100 "},
                                                           {3, 40, "0 10 20 30 40 "},
                                                           {12.1, 14.2, "12 13 14 15 "},
                                                           {-5, 12, "-5 0 5 10 15 "},
                                                           {0, 0, "0 1 "},
                                                           {60, 60, "60 61 "}};
  for (const auto& [least, most, marks] : cases) {
    Chart chart;
    chart.setPoints({{0, least}, {60, most}});
    EXPECT_EQ(textsOf(chart.valueTicks()), marks) << least << " to " << most;
  }
}

TEST(Chart, WritesNumbersInItsLanguage) {
  Chart chart;
  chart.setLanguage("de");
  chart.setTitle("Spannung", "V");
  chart.setPoints({{0, 12.25}, {60, 12.5}});
  EXPECT_EQ(chart.valueText(0), "12,25 V");
  EXPECT_EQ(chart.accessibleName(), "Spannung, 00:00 – 00:01, 12,25 – 12,5 V");
  EXPECT_EQ(textsOf(chart.valueTicks()).find('.'), std::string::npos);
}

TEST(Chart, MarksWholeMinutesAndHours) {
  Chart chart;
  chart.setPoints({{7 * 3600 + 1800, 1}, {18 * 3600 + 600, 2}});
  EXPECT_EQ(textsOf(chart.timeTicks(5)), "09:00 12:00 15:00 18:00 ");
  EXPECT_EQ(textsOf(chart.timeTicks(12)),
            "08:00 09:00 10:00 11:00 12:00 13:00 14:00 15:00 16:00 17:00 18:00 ");
  chart.setPoints({{0, 1}, {14 * 3600 + 1800, 2}});
  EXPECT_EQ(textsOf(chart.timeTicks(5)), "00:00 03:00 06:00 09:00 12:00 ");
  chart.setPoints({{36010, 1}, {36170, 2}});
  EXPECT_EQ(textsOf(chart.timeTicks(4)), "10:01 10:02 ");
  EXPECT_EQ(textsOf(chart.timeTicks(12)), "10:01 10:02 ") << "not each minute twice";

  chart.setTimeText([](double second) { return second > -60 ? decimals(-second, 0) + " s" : "minutes"; });
  chart.setPoints({{-50, 1}, {0, 2}});
  EXPECT_EQ(textsOf(chart.timeTicks(6)), "45 s 30 s 15 s 0 s ");
  chart.setPoints({{-100, 1}, {0, 2}});
  EXPECT_EQ(textsOf(chart.timeTicks(6)), "minutes 0 s ");
}

TEST(Chart, DrawsExtremesOfAllPointsInFewStepsAndBreaksWhereNothingIsKnown) {
  Chart chart;
  std::vector<Chart::Point> points;
  points.reserve(86400);
  for (int i = 0; i < 86400; ++i)
    points.push_back({static_cast<double>(i), i == 43210 ? 80.0 : i % 2 ? 10.0 : 0.0});
  chart.setPoints(points);
  const auto curve = chart.strokes(300, 100);
  ASSERT_EQ(curve.size(), 1U);
  EXPECT_LE(curve[0].size(), 4U * 301);
  double highest = 100;
  for (const auto& [x, y] : curve[0]) {
    EXPECT_TRUE(x >= 0 && x <= 300 && y <= 100);
    highest = std::min(highest, y);
  }
  EXPECT_NEAR(highest, 0, 1e-9) << "one point of 86,400";

  chart.setPoints({{0, 1}, {100, unknown}, {200, unknown}, {300, 2}, {400, 3}});
  const auto broken = chart.strokes(400, 100);
  ASSERT_EQ(broken.size(), 2U);
  EXPECT_EQ(broken[1].front().x, 300);
}

TEST(Chart, ReportsWhatItShowsAndWhatIsChosen) {
  Chart chart;
  chart.setTitle("Average speed", "km/h");
  double chosen = -1;
  chart.setOnChosen([&](double second) { chosen = second; });
  chart.choose(0.5);
  EXPECT_EQ(chosen, -1) << "there are no points";
  chart.setMoment(39000);
  std::string seen;
  const Connection moves = chart.momentChanged.connect([&] { seen = chart.valueText(*chart.moment()); });
  chart.setPoints({{36000, 30}, {39600, unknown}, {43200, 90}});
  EXPECT_EQ(seen, "30 km/h") << "the moment stays, its value does not";
  EXPECT_EQ(chart.accessibleName(), "Average speed, 10:00 – 12:00, 30 – 90 km/h");
  EXPECT_EQ(chart.valueText(37000), "30 km/h");
  EXPECT_EQ(chart.valueText(40000) + chart.valueText(35000), "");
  chart.setPoints(chart.points(), [](double second) { return second / 1000; });
  EXPECT_EQ(chart.valueText(37000), "37 km/h");
  chart.choose(0.5);
  EXPECT_EQ(chosen, 39600);
  chart.choose(7);
  EXPECT_EQ(chosen, 43200);
  chart.setTitle("Power supply", "");
  chart.setPoints({{0, 13.8}, {60, 14}});
  EXPECT_EQ(chart.accessibleName(), "Power supply, 00:00 – 00:01, 13.8 – 14");
}

}  // namespace
}  // namespace fleetor::test
