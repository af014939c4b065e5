#include "ui/calendar.h"

#include "support/testing.h"

namespace fleetor {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

TEST(Calendar, TurnsByMonthsToTheSameDayOrTheLastOneAndStaysInRange) {
  for (const auto& [from, by, to] : {std::tuple<Day, int, Day>{2026y / 11 / 21, -1, 2026y / 10 / 21},
                                     {2026y / 12 / 21, 1, 2027y / 1 / 21},
                                     {2027y / 1 / 21, -12, 2026y / 1 / 21},
                                     {2026y / 1 / 31, 1, 2026y / 2 / 28},
                                     {2028y / 3 / 31, -1, 2028y / 2 / 29},
                                     {2028y / 2 / 29, 12, 2029y / 2 / 28},
                                     {2261y / 6 / 30, 12, latestDay},
                                     {1678y / 1 / 31, -1, earliestDay}})
    EXPECT_TRUE(laterBy(from, months(by)) == to) << int(from.year()) << " by " << by;
  EXPECT_TRUE(laterBy(Day(2026y / 12 / 30), days(7)) == Day(2027y / 1 / 6));
  EXPECT_TRUE(laterBy(latestDay, days(1)) == latestDay);
}

TEST(Calendar, BeginsAMonthUnderItsWeekday) {
  const Day november = 2026y / 11 / 21;  // begins on a Sunday
  EXPECT_EQ(placesBeforeMonthOf(november, Sunday), 0);
  EXPECT_EQ(placesBeforeMonthOf(november, Monday), 6);
  EXPECT_EQ(placesBeforeMonthOf(november, Saturday), 1);
  EXPECT_EQ(daysInMonthOf(november), 30);
  EXPECT_EQ(daysInMonthOf(2028y / 2 / 1), 29);
}

}  // namespace
}  // namespace fleetor
