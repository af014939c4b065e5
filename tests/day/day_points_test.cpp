#include "day/day_points.h"

#include <gmock/gmock.h>

namespace fleetor::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

MapEntry point(std::string_view time, std::string_view kilometres, std::string_view street = "Mill Lane",
               std::string_view label = "", std::string_view duration = "") {
  MapEntry entry;
  entry.location.lat = "50.5";
  entry.location.lon = "19.5";
  entry.dateTime = time;
  entry.totdist = kilometres;
  entry.street = street;
  entry.label = label;
  entry.duration = duration;
  return entry;
}

DayPoints points(std::vector<MapEntry> entries) {
  MapResponse answer;
  answer.total = static_cast<std::int64_t>(entries.size());
  answer.map = std::move(entries);
  return DayPoints::fromAnswer(answer, "2026-11-20");
}

TEST(DayPoints, HoldWhatTheTextsOfAnAnswerMean) {
  const DayPoints day =
      points({point("2026-11-20 00:00:00", "1007.5", "Home", "Parking", "07:03:00"),
              point("2026-11-20 07:03:00", "1007.5", "Home"), point("2026-11-20 07:20:10", "1010.0"),
              point("2026-11-20 24:00", "1010.25 km", "Home", "Parking", "a while")});
  EXPECT_THAT(day.coordinates, testing::Each(Coordinate{50.5, 19.5}));
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

TEST(DayPoints, DropAColumnThatOneTextMakesDoubtful) {
  const MapEntry good = point("08:00", "5.0");
  EXPECT_THAT(points({good, point("09:00", "5.0")}).seconds, ElementsAre(28800, 32400));
  for (const char* time : {"8:30", "07:59:59", "2026-11-21 08:30:00", "2026-11-19 23:00:00", ""}) {
    const DayPoints day = points({good, point(time, "6.0"), point("09:00", "7.0")});
    EXPECT_THAT(day.seconds, IsEmpty()) << time;
    EXPECT_EQ(day.kilometres.size(), 3u) << time;
  }
  for (const char* kilometres : {"4.99", "", "6 mi", "6.123"}) {
    const DayPoints day = points({good, point("08:30", kilometres)});
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
