#include "day/day_points.h"

#include "day_answers.h"
#include "platform/number_text.h"
#include "support/testing.h"

namespace fleetor::test {
namespace {

TEST(DayPoints, HoldWhatTheTextsOfAnAnswerMean) {
  const DayPoints day = pointsOf(
      {parking("2026-11-20 00:00:00", "07:03:00", "1007.5"), point("2026-11-20 07:03:00", "1007.5", "Home"),
       point("2026-11-20 07:20:10", "1010.0"), parking("2026-11-20 24:00", "a while", "1010.25 km")});
  EXPECT_THAT(day.coordinates, Each(Coordinate{50.5, 19.5}));
  EXPECT_EQ(day.size(), 4u);
  EXPECT_THAT(day.seconds, ElementsAre(0, 25380, 26410, 86400));
  EXPECT_THAT(day.kilometres, ElementsAre(0, 0, 2.5, 2.75));
  EXPECT_THAT(day.addresses, ElementsAre(0, 0, 1, 0));
  EXPECT_THAT(day.addressTexts, ElementsAre("Home", "Mill Lane"));
  ASSERT_EQ(day.stops.size(), 2u) << "also where the day begins and where it ends";
  EXPECT_EQ(day.stops[0].parked, 25380.0f);
  EXPECT_EQ(day.stops[1].index, 3u);
  EXPECT_EQ(day.stops[1].duration, "a while");
  EXPECT_FALSE(day.stops[1].parked);
}

TEST(DayPoints, KeepTheTimesAsTheyAreWrittenInAFewBytesEach) {
  const std::string longest(100, '9');
  const std::string tooLong = longest + "9";
  const std::string odd[] = {"", "08:00", "08:00 ", "08", "", longest, tooLong, longest + '\0', "late"};
  std::vector<MapEntry> entries;
  for (const std::string& time : odd)
    entries.push_back(point(time.c_str(), "1"));
  const DayPoints few = pointsOf(entries);
  TextColumn::Reader times(few.times);
  for (const std::string& time : odd)
    EXPECT_EQ(times.next(), time == tooLong ? "" : std::string_view(time.c_str()));
  EXPECT_EQ(times.next(), "");

  TextColumn day;
  const auto textOf = [](int second) { return "2026-11-20 " + clockText(second, ClockDigits::seconds); };
  for (int second = 0; second < 86'400; ++second)
    day.add(textOf(second));
  EXPECT_LT(day.bytes(), 4u * 86'400);
  TextColumn::Reader seconds(day);
  for (int second = 0; second < 86'400; ++second)
    ASSERT_EQ(seconds.next(), textOf(second));
}

TEST(DayPoints, MarkWhereNoPositionIsUnderstood) {
  const DayPoints day = pointsOf({point("08:00", "0"), pointAt("08:01", "", ""),
                                  pointAt("08:02", "0", "0.00"), pointAt("08:03", "50,5", "19,5"),
                                  pointAt("08:04", "50.5", "east"), pointAt("08:05", "50.5", "19.5")});
  EXPECT_EQ(day.coordinates[1], Coordinate());
  EXPECT_THAT(day.unplaced, ElementsAre(1, 2, 3, 4)) << "of 50,5 the line has 50";
  MapEntry wrong = point("08:02", "12350");
  EXPECT_THAT(pointsOf({point("08:00", "5"), pointAt("08:01", "0", "0"), wrong}).kilometres, IsEmpty());
}

TEST(DayPoints, DropAColumnThatOneTextMakesDoubtful) {
  const MapEntry good = point("08:00", "5.0");
  EXPECT_THAT(pointsOf({good, point("09:00", "5.0")}).seconds, ElementsAre(28800, 32400));
  for (const char* time : {"8:30", "07:59:59", "2026-11-21 08:30:00", "2026-11-19 23:00:00", ""}) {
    const DayPoints day = pointsOf({good, point(time, "6.0"), point("09:00", "7.0")});
    EXPECT_THAT(day.seconds, IsEmpty()) << time;
    EXPECT_EQ(day.kilometres.size(), 3u) << time;
  }
  for (const char* kilometres : {"4.99", "", "6 mi", "6.123", "12350"}) {
    const DayPoints day = pointsOf({good, point("08:30", kilometres)});
    EXPECT_THAT(day.kilometres, IsEmpty()) << kilometres;
    EXPECT_EQ(day.seconds.size(), 2u) << kilometres;
  }
  MapResponse answer;
  answer.map = std::vector{good};
  EXPECT_THAT(DayPoints::fromAnswer(answer, "20.11.2026").seconds, IsEmpty());
  EXPECT_EQ(DayPoints::fromAnswer(MapResponse(), "2026-11-20").size(), 0u);
}

}  // namespace
}  // namespace fleetor::test
