#include "day/day_stage.h"

#include "support/testing.h"

namespace fleetor::test {
namespace {

using Kind = DayStage::Kind;

TEST(DayStage, IsDrivingOrParkingByItsValuesAndNeitherWhereTheyAreNotUnderstood) {
  const std::tuple<const char*, const char*, const char*, Kind> cases[] = {
      {"12.5", "Mill Lane", "Harbour", Kind::driving},
      {"12.5 km", "Home", "Home", Kind::driving},
      {"0", "Home", "Harbour", Kind::driving},
      {"0,0 km", "Home", "Home", Kind::parking},
      {"", "Home", "Home", Kind::unknown},
      {"0.4", "Home", "Home", Kind::unknown},
      {"-1", "Home", "Home", Kind::unknown},
      {"far", "Home", "Harbour", Kind::unknown},
      {"0", "", "", Kind::unknown}};
  for (const auto& [distance, from, to, kind] : cases) {
    RouteItem item;
    item.status = "Parking";  // decides nothing
    item.distance = distance;
    item.from = from;
    item.to = to;
    EXPECT_EQ(DayStage::fromItem(item, "2026-11-20").kind, kind) << distance << " " << from;
  }
}

TEST(DayStage, HasTheTimesOfItsDayOnly) {
  using Case = std::tuple<const char*, const char*, const char*, std::optional<float>, std::optional<float>>;
  for (const auto& [from, to, clock, begin, end] :
       {Case{"2026-11-20 07:03:00", "2026-11-20 07:46:10", "07:03:00", 25380, 27970},
        Case{"2026-11-20T07:03", "2026-11-21 00:30", "07:03", 25380, 88200},
        Case{"07:03", "07:46", "07:03", 25380, 27960},
        Case{"2026-11-20 07:03:00", "later", "07:03:00", {}, {}},
        Case{"2026-11-20 07:03:00", "2026-11-20 07:02:00", "07:03:00", {}, {}},
        Case{"2026-11-19 23:50:00", "2026-11-20 00:10:00", "", {}, {}},
        Case{"early", "2026-11-20 00:10:00", "", {}, {}}}) {
    RouteItem item;
    item.timeFrom = from;
    item.timeTo = to;
    const DayStage stage = DayStage::fromItem(item, "2026-11-20");
    EXPECT_EQ(stage.clock, clock);
    EXPECT_EQ(stage.begin, begin) << from;
    EXPECT_EQ(stage.end, end) << to;
  }
}

TEST(DayStage, FindsTheDaysPointsAlsoWhereItEndsAfterMidnight) {
  DayPoints points;
  points.seconds = {1000, 86000, 86200, 86300};
  DayStage stage;
  stage.begin = 86000;
  stage.end = 88200;
  const auto range = stage.pointsOf(points);
  ASSERT_TRUE(range);
  EXPECT_EQ(range->first, 1);
  EXPECT_EQ(range->last, 3);
  points.seconds = {1000, 86000, 86010};
  EXPECT_FALSE(stage.pointsOf(points)) << "the day's last points are missing";
}

}  // namespace
}  // namespace fleetor::test
