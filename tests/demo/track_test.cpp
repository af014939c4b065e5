#include <algorithm>
#include <cmath>

#include "running_service.h"

namespace fleetor::demo {
namespace {

std::string textOf(const Json& record, const char* key) {
  return record[key].get<std::string>();
}
double numberOf(const Json& record, const char* key) {
  return std::stod(textOf(record, key));
}
Instant timeOf(const Json& record, const char* key) {
  return *parseInstant(textOf(record, key));
}
Point pointOf(const Json& record) {
  return townPoint({numberOf(record["location"], "lat"), numberOf(record["location"], "lon")});
}

class DemoTrack : public testing::Test {
 protected:
  DemoTrack() { service.signIn(); }

  Json list(const std::string& what, int vehicle, const std::string& day) {
    httplib::Headers headers = RunningService::bearer(service.token);
    headers.emplace("Accept-Encoding", "gzip");
    const auto answer =
        service.get("/" + what + "?vehid=" + std::to_string(vehicle) + "&date=" + day, headers);
    EXPECT_EQ(answer.headers.contains("Content-Encoding"), answer.body.size() >= 1024) << what << day;
    EXPECT_EQ(answer.json["total"], answer.json[what].size());
    return answer.json[what];
  }
  Json liveAt(int vehicle, Instant when) {
    service.now = when;
    return service.get("/live?vehid=" + std::to_string(vehicle)).json["live"];
  }

  RunningService service;
};

TEST_F(DemoTrack, AndTheTripListShowTheSameDay) {
  for (const int vehicle : {1001, 1003, 1006, 1010})
    for (const std::string day : {"2026-03-07", "2026-03-10", "1999-12-31"}) {
      const Json points = list("map", vehicle, day);
      const Json items = list("route", vehicle, day);
      EXPECT_EQ(textOf(items.front(), "timeFrom"), day + " 00:00:00");
      EXPECT_EQ(textOf(items.back(), "timeTo"), day + " 23:59:59");
      double sum = 0;
      for (std::size_t i = 0; i < items.size(); ++i) {
        const Json& item = items[i];
        const auto first =
            std::ranges::find(points, item["timeFrom"], [](const Json& p) { return p["dateTime"]; });
        ASSERT_NE(first, points.end()) << item;
        const bool parked = item["status"] == "Parking";
        EXPECT_EQ((*first)["label"], parked ? "Parking" : "");
        EXPECT_EQ((*first)["duration"], parked ? textOf(item, "duration") : "");
        EXPECT_EQ((*first)["street"], item["from"]);
        EXPECT_NEAR(numberOf(*first, "totdist"), sum, 0.06 * static_cast<double>(i + 1));
        EXPECT_EQ(textOf(item, "duration"), durationText(timeOf(item, "timeTo") - timeOf(item, "timeFrom")));
        EXPECT_TRUE(!parked || item["distance"] == "0.0");
        sum += numberOf(item, "distance");
        if (i == 0) continue;
        EXPECT_EQ(item["timeFrom"], items[i - 1]["timeTo"]);
        EXPECT_EQ(item["from"], items[i - 1]["to"]);
        EXPECT_NE(item["status"], items[i - 1]["status"]);
      }
    }
}

TEST_F(DemoTrack, MovesAtPlausibleSpeedsAlongItsDistance) {
  for (int vehicle = 1001; vehicle < 1016; ++vehicle) {
    const Json points = list("map", vehicle, "2026-03-10");
    for (std::size_t i = 1; i < points.size(); ++i) {
      const Json& from = points[i - 1];
      const Json& to = points[i];
      const auto seconds = static_cast<double>(timeOf(to, "dateTime") - timeOf(from, "dateTime"));
      const double metres = distanceBetween(pointOf(from), pointOf(to));
      const double driven = 1000 * (numberOf(to, "totdist") - numberOf(from, "totdist"));
      EXPECT_GT(seconds, 0);
      EXPECT_LE(metres, driven + 12) << "a shortcut through the houses";
      EXPECT_LE(driven, seconds * 85 / 3.6 + 12) << "faster than the ring road allows";
      EXPECT_TRUE(from["label"] != "Parking" || metres < 1) << "moved while parked";
    }
  }
}

TEST_F(DemoTrack, ContinuesAtMidnightAndEndsNow) {
  int driving = 0;
  for (int vehicle = 1001; vehicle <= 1045; ++vehicle) {
    const Json before = list("map", vehicle, "2026-03-09");
    const Json after = list("map", vehicle, "2026-03-10");
    EXPECT_LT(distanceBetween(pointOf(before.back()), pointOf(after.front())), 30) << vehicle;
    driving += after.front()["label"] != "Parking";
  }
  EXPECT_GT(driving, 2) << "nobody drives at midnight, so nothing was tested";
  for (const std::string time : {"00:00:00", "06:59:59", "14:25:37", "23:59:59"}) {
    const Json live = liveAt(1001, *parseInstant("2026-03-11 " + time));
    const Json points = list("map", 1001, "2026-03-11");
    EXPECT_EQ(textOf(list("route", 1001, "2026-03-11").back(), "timeTo"), "2026-03-11 " + time);
    EXPECT_EQ(points.back()["location"], live["location"]) << time;
    EXPECT_TRUE(list("map", 1001, "2026-03-12").empty());
  }
}

}  // namespace
}  // namespace fleetor::demo
