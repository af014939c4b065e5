#include "exports/drivers_log.h"

#include "day_of_tests.h"
#include "support/testing.h"

namespace fleetor::test {
namespace {

using testing::IsSupersetOf;

std::vector<std::string> textsOf(const Page& page) {
  std::vector<std::string> texts;
  for (const PageText& text : page.texts)
    texts.push_back(text.text);
  return texts;
}

TEST(DriversLog, ShowsTheDayOnOnePageWhateverItHolds) {
  for (const std::size_t trips : {1u, 20u, 500u}) {
    DayRecord day = dayOfTests("Mill Lane");
    day.trips.resize(trips, day.trips.front());
    const Page page = driversLog(day, englishWords());
    EXPECT_THAT(textsOf(page), IsSupersetOf({"Driver's log", "2026-11-20", "KR 1", "Distance", "1.2 km",
                                             "07:03:12", "07:05:00", "-1.2 km"}));
    for (const PageText& text : page.texts) {
      EXPECT_GE(text.box.x, 0) << text.text;
      EXPECT_LE(text.box.x + text.box.width, page.width) << text.text;
      EXPECT_LE(text.box.y + text.box.height, page.height) << text.text;
    }
    for (const PageLine& line : page.lines)
      for (const PagePoint& at : line.points)
        EXPECT_TRUE(at.x >= 0 && at.x <= page.width && at.y >= 0 && at.y <= page.height);
    const auto rows = std::ranges::count(textsOf(page), "0:01:48");
    if (trips == 500)
      EXPECT_THAT(textsOf(page), Contains("+ " + std::to_string(trips - static_cast<std::size_t>(rows))));
    else
      EXPECT_EQ(rows, static_cast<std::ptrdiff_t>(trips));
  }
}

TEST(DriversLog, LeavesOutWhatIsNotUnderstood) {
  DayRecord day = dayOfTests("Mill Lane");
  DayPoints points = *day.points;
  const std::size_t areas = driversLog(day, englishWords()).areas.size();
  points.seconds.clear();
  day.points = std::make_shared<const DayPoints>(points);
  const Page page = driversLog(day, englishWords());
  EXPECT_THAT(textsOf(page), Not(Contains("24")));
  EXPECT_EQ(page.areas.size(), areas - 2) << "driving and standing of the 24 hours";

  points.unplaced = {1};
  day.points = std::make_shared<const DayPoints>(points);
  EXPECT_EQ(driversLog(day, englishWords()).areas.size(), areas - 3) << "nor the dot of the stop";
}

TEST(DriversLog, HasAScaleAtEveryExtent) {
  for (const double degrees : {0.0, 0.0001, 0.5, 20.0}) {
    DayPoints points;
    points.coordinates = {{50, 20}, {50 + degrees, 20}};
    points.addresses = {0, 0};
    points.addressTexts = {""};
    DayRecord day = dayOfTests("Van");
    day.points = std::make_shared<const DayPoints>(points);
    const Page page = driversLog(day, englishWords());
    const auto scale =
        std::ranges::find_if(page.lines, [](const PageLine& line) { return line.points.size() == 4; });
    ASSERT_NE(scale, page.lines.end());
    const double length = scale->points[2].x - scale->points[1].x;
    EXPECT_TRUE(length > 15 && length <= 40) << degrees << " degrees: " << length;
  }
}

}  // namespace
}  // namespace fleetor::test
