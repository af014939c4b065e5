#include "day/day_timeline.h"

#include "day_answers.h"
#include "support/testing.h"

namespace fleetor::test {
namespace {

/// "driving 25380-26410 1..2", one line for each stretch.
std::string linesOf(const DayTimeline& day) {
  std::string lines;
  for (const DayStretch& each : day.stretches) {
    const char* const names[] = {"unknown", "driving", "stop"};
    lines += std::string(names[static_cast<int>(each.kind)]) + " " +
             std::to_string(static_cast<int>(each.begin)) + "-" + std::to_string(static_cast<int>(each.end)) +
             " " + std::to_string(each.first) + ".." + std::to_string(each.last) + "\n";
  }
  return lines;
}

std::string timelineOf(std::vector<MapEntry> entries) {
  return linesOf(DayTimeline::fromPoints(pointsOf(std::move(entries))));
}

std::string timelineOf(std::vector<RouteItem> rows) {
  return linesOf(DayTimeline::fromRows(rows, "2026-11-20"));
}

TEST(DayTimeline, OfPointsKnowsDrivesStopsAndGaps) {
  EXPECT_EQ(timelineOf({parking("00:00", "07:00:00"), point("07:00"), point("07:05"), point("07:15"),
                        point("08:00"), point("08:01"), parking("08:02", "3 min"), point("08:10"),
                        parking("09:00", "30 min")}),
            "stop 0-25200 0..0\n"
            "driving 25200-26100 1..3\n"
            "unknown 26100-28800 3..4\n"
            "driving 28800-28920 4..6\n"
            "stop 28920-29100 6..6\n"
            "driving 29100-29400 6..7\n"
            "unknown 29400-32400 7..8\n"
            "stop 32400-34200 8..8\n"
            "unknown 34200-86400 8..8\n");
  // A stop that does not say how long it lasts is known to last over a gap where the next point is as near,
  // and none is known to last beyond the next point.
  EXPECT_EQ(timelineOf({parking("08:30", ""), pointAt("09:00", "50.7", "19.5")}), "unknown 0-86400 0..1\n");
  // A receiver that has no position yet contradicts no duration.
  EXPECT_EQ(timelineOf({parking("00:00", "30 min"), pointAt("00:30", "0", "0")}),
            "stop 0-1800 0..0\nunknown 1800-86400 0..0\n");
  EXPECT_EQ(timelineOf({parking("08:00", "?"), point("08:10"), parking("08:11", ""), point("08:30"),
                        parking("08:31", "5 h"), point("08:40"), parking("23:00", "2 h")}),
            "unknown 0-28800 0..0\n"
            "stop 28800-29400 0..0\n"
            "driving 29400-29460 1..2\n"
            "stop 29460-30600 2..2\n"
            "driving 30600-30660 3..4\n"
            "stop 30660-31200 4..4\n"
            "unknown 31200-82800 5..6\n"
            "stop 82800-86400 6..6\n");
  EXPECT_EQ(timelineOf({point("8:00"), point("08:05")}), "") << "a time that is not understood";
}

TEST(DayTimeline, OfRowsHasAStretchForEachAndNoneWhenTheyContradictEachOther) {
  EXPECT_EQ(timelineOf({stay("2026-11-19 22:00", "2026-11-20 07:00"),
                        trip("2026-11-20 07:00", "2026-11-20 07:46"), trip("07:45:30", "08:00"),
                        trip("soon", "09:00"), stay("10:00", "11:00"), trip("23:50", "00:10")}),
            "stop 0-25200 0..0\n"
            "driving 25200-27960 1..1\n"
            "driving 27960-28800 2..2\n"
            "unknown 28800-36000 4..4\n"
            "stop 36000-39600 4..4\n"
            "unknown 39600-86400 4..4\n");
  EXPECT_EQ(timelineOf({trip("07:00", "07:46"), trip("07:30", "08:00")}), "");
  EXPECT_EQ(timelineOf({trip("soon", "later")}), "");
}

}  // namespace
}  // namespace fleetor::test
