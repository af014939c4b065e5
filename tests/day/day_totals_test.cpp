#include "day/day_totals.h"

#include "day_answers.h"
#include "support/testing.h"

namespace fleetor::test {
namespace {

/// "km 25.0 trips 2 stops 1 driving 3600 standing 60 from 25200 to 30000", "?" for what is not known.
std::string totalsOf(std::vector<RouteItem> rows, int missing = 0) {
  RouteResponse answer;
  answer.total = static_cast<std::int64_t>(rows.size()) + missing;
  answer.route = std::move(rows);
  const DayTotals totals = DayTotals::fromAnswer(answer, "2026-11-20");
  const auto text = [](const auto& value) { return value ? std::to_string(static_cast<int>(*value)) : "?"; };
  const auto seconds = [](const auto& value) { return value ? std::to_string(value->count()) : "?"; };
  return text(totals.kilometres) + " km, " + text(totals.trips) + " trips, " + text(totals.stops) +
         " stops, " + seconds(totals.driving) + " s driving, " + seconds(totals.standing) + " s standing, " +
         seconds(totals.firstStart) + " to " + seconds(totals.lastArrival);
}

TEST(DayTotals, AddUpWhatIsUnderstoodAndNothingElse) {
  const RouteItem night = stay("00:00", "07:00", "07:00:00"), evening = stay("08:00", "09:00");
  const RouteItem out = trip("07:00", "07:46:10", "00:46:10"), back = trip("07:50", "08:00", "10 min");
  RouteItem drift = stay("07:00", "07:46");
  drift.distance = "0.5";
  const std::pair<std::vector<RouteItem>, const char*> cases[] = {
      {{night, out, back, evening},
       "25 km, 2 trips, 2 stops, 3370 s driving, 28800 s standing, 25200 to 28800"},
      // The last trip may still be under way, and the first may have begun the day before.
      {{night, out}, "12 km, 1 trips, 1 stops, 2770 s driving, 25200 s standing, 25200 to ?"},
      {{trip("00:00", "00:30"), evening},
       "12 km, 1 trips, 1 stops, 1800 s driving, 3600 s standing, ? to 1800"},
      // Of what begins before midnight or ends after it, the part within the day; its distance is not known.
      {{stay("2026-11-19 16:00", "2026-11-20 07:00", "15:00:00"), out,
        trip("2026-11-20 22:00", "2026-11-21 03:00", "5:00:00")},
       "? km, 2 trips, 1 stops, 9970 s driving, 25200 s standing, 25200 to ?"},
      {{night, out, trip("2026-11-21 03:00", "2026-11-21 04:00")},
       "? km, ? trips, ? stops, ? s driving, ? s standing, ? to ?"},
      {{night, trip("soon", "later", "46 min"), evening},
       "12 km, 1 trips, 2 stops, ? s driving, 28800 s standing, ? to ?"},
      // One duration that contradicts its times, or one time that is not understood.
      {{night, trip("07:00", "07:46", "01:46:00"), evening},
       "12 km, 1 trips, 2 stops, ? s driving, 28800 s standing, ? to ?"},
      {{night, trip("at 7", "07:46", "46 min"), evening},
       "12 km, 1 trips, 2 stops, 2760 s driving, 28800 s standing, ? to 27960"},
      {{evening, night, out}, "12 km, 1 trips, 2 stops, 2770 s driving, 28800 s standing, ? to ?"},
      // A row of which nobody knows whether it is a trip.
      {{night, drift, evening}, "0 km, ? trips, ? stops, ? s driving, ? s standing, ? to ?"},
      {{night, trip("07:00", "07:46", "46 min", "12.345"), evening},
       "? km, ? trips, ? stops, ? s driving, ? s standing, ? to ?"},
      {{}, "? km, ? trips, ? stops, ? s driving, ? s standing, ? to ?"},
  };
  for (const auto& [rows, totals] : cases)
    EXPECT_EQ(totalsOf(rows), totals);
  EXPECT_EQ(totalsOf({night, out, evening}, 1), totalsOf({})) << "the service holds more than it sent";
}

}  // namespace
}  // namespace fleetor::test
