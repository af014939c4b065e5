#include <algorithm>
#include <cmath>
#include <map>

#include "demo/town/geometry.h"
#include "running_service.h"

namespace fleetor::demo {
namespace {

std::string textOf(const Json& record, const char* key) {
  return record[key].get<std::string>();
}
Instant timeOf(const Json& record, const char* key) {
  return *parseInstant(textOf(record, key));
}

Point pointOf(const Json& record) {
  const Json& location = record["location"];
  return townPoint({std::stod(textOf(location, "lat")), std::stod(textOf(location, "lon"))});
}

class DemoTrack : public testing::Test {
 protected:
  DemoTrack() { service.signIn(); }

  Json map(int vehicle, const std::string& day) { return list("map", vehicle, day); }
  Json route(int vehicle, const std::string& day) { return list("route", vehicle, day); }
  Json liveAt(int vehicle, Instant when) {
    service.now = when;
    return service.get("/live?vehid=" + std::to_string(vehicle)).json["live"];
  }

  RunningService service;

 private:
  Json list(const std::string& what, int vehicle, const std::string& day) {
    const Json answer = service.get("/" + what + "?vehid=" + std::to_string(vehicle) + "&date=" + day).json;
    EXPECT_EQ(answer["error"]["code"], 200);
    EXPECT_EQ(answer["total"], answer[what].size());
    return answer[what];
  }
};

TEST_F(DemoTrack, AndTheTripListTellTheSameDay) {
  int drives = 0;
  for (int vehicle = 1001; vehicle < 1016; ++vehicle)
    for (const std::string day : {"2026-03-06", "2026-03-07", "2026-03-10", "1999-12-31"}) {
      const Json points = map(vehicle, day);
      const Json items = route(vehicle, day);
      ASSERT_FALSE(points.empty());
      EXPECT_EQ(textOf(items.front(), "timeFrom"), std::string(day) + " 00:00:00");
      EXPECT_EQ(textOf(items.back(), "timeTo"), std::string(day) + " 23:59:59");

      std::map<std::string, Json> pointAt;
      std::size_t parkings = 0;
      for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(points[i]["lp"], i);
        EXPECT_TRUE(pointAt.emplace(textOf(points[i], "dateTime"), points[i]).second)
            << "two points at one time";
        parkings += points[i]["label"] == "Parking";
        EXPECT_EQ(points[i]["label"] == "Parking", points[i]["duration"] != Json(""));
      }
      double sum = 0;
      for (std::size_t i = 0; i < items.size(); ++i) {
        const Json& item = items[i];
        if (i > 0) {
          EXPECT_EQ(item["timeFrom"], items[i - 1]["timeTo"]);
          EXPECT_EQ(item["from"], items[i - 1]["to"]);
          EXPECT_NE(item["status"], items[i - 1]["status"]);
        }
        const Instant seconds = timeOf(item, "timeTo") - timeOf(item, "timeFrom");
        EXPECT_EQ(textOf(item, "duration"), durationText(seconds));
        ASSERT_TRUE(pointAt.contains(textOf(item, "timeFrom"))) << item;
        const Json& first = pointAt[textOf(item, "timeFrom")];
        EXPECT_EQ(first["street"], item["from"]);
        EXPECT_NEAR(std::stod(textOf(first, "totdist")), sum, 0.06 * static_cast<double>(i + 1));
        sum += std::stod(textOf(item, "distance"));
        if (item["status"] == "Parking") {
          EXPECT_EQ(first["duration"], item["duration"]);
          EXPECT_EQ(item["distance"], "0.0");
          --parkings;
          continue;
        }
        EXPECT_EQ(item["status"], "Driving");
        EXPECT_EQ(pointAt[textOf(item, "timeTo")]["street"], item["to"]) << item;
        ++drives;
      }
      EXPECT_EQ(parkings, 0u) << "the track has other stops than the list";
    }
  EXPECT_GT(drives, 300);
}

TEST_F(DemoTrack, MovesAtBelievableSpeedsAlongItsDistance) {
  for (int vehicle = 1001; vehicle < 1016; ++vehicle) {
    const Json points = map(vehicle, "2026-03-10");
    for (std::size_t i = 1; i < points.size(); ++i) {
      const auto seconds =
          static_cast<double>(timeOf(points[i], "dateTime") - timeOf(points[i - 1], "dateTime"));
      const double metres = distanceBetween(pointOf(points[i - 1]), pointOf(points[i]));
      const double driven =
          1000 * (std::stod(textOf(points[i], "totdist")) - std::stod(textOf(points[i - 1], "totdist")));
      EXPECT_LE(metres, driven + 12) << "a shortcut through the houses";
      EXPECT_LE(driven, seconds * 85 / 3.6 + 12) << "faster than the ring road allows";
      EXPECT_TRUE(points[i - 1]["label"] != "Parking" || metres < 1) << "moved while parked";
    }
  }
}

TEST_F(DemoTrack, HasTheLivePositionAtEachOfItsMoments) {
  for (const int vehicle : {1001, 1003, 1005, 1008, 1010}) {
    service.now = *parseInstant("2026-03-12 00:00:00");
    const Json points = map(vehicle, "2026-03-11");
    for (std::size_t i = 0; i < points.size(); i += 1 + points.size() / 25) {
      const Json live = liveAt(vehicle, timeOf(points[i], "dateTime"));
      EXPECT_EQ(live["location"], points[i]["location"]) << points[i];
      EXPECT_EQ(live["street"], points[i]["street"]);
      EXPECT_EQ(live["datetime"], points[i]["dateTime"]);
      EXPECT_TRUE(points[i]["label"] != "Parking" || live["speed"] == "0");
    }
  }
}

TEST_F(DemoTrack, GoesOnOverMidnightWhereItWas) {
  int driving = 0;
  for (int vehicle = 1001; vehicle <= 1045; ++vehicle) {
    const Json before = map(vehicle, "2026-03-09");
    const Json after = map(vehicle, "2026-03-10");
    const Json items = route(vehicle, "2026-03-09");
    const Json next = route(vehicle, "2026-03-10");
    EXPECT_EQ(items.back()["status"], next.front()["status"]) << vehicle;
    EXPECT_EQ(textOf(after.front(), "dateTime"), "2026-03-10 00:00:00");
    EXPECT_LT(distanceBetween(pointOf(before.back()), pointOf(after.front())), 30) << vehicle;
    driving += items.back()["status"] == "Driving";
  }
  EXPECT_GT(driving, 2) << "nobody drives at midnight, so nothing was tested";
}

TEST_F(DemoTrack, EndsTodayAtThisMomentAndHasNoTomorrow) {
  for (const std::string time : {"00:00:00", "00:00:01", "06:59:59", "14:25:37", "23:59:59"})
    for (const int vehicle : {1001, 1006, 1015}) {
      const Json live = liveAt(vehicle, *parseInstant("2026-03-11 " + time));
      const Json points = map(vehicle, "2026-03-11");
      const Json items = route(vehicle, "2026-03-11");
      EXPECT_EQ(textOf(items.back(), "timeTo"), "2026-03-11 " + time);
      EXPECT_EQ(points.back()["location"], live["location"]) << time;
      EXPECT_EQ(points.back()["street"], live["street"]) << time;
      EXPECT_LE(timeOf(points.back(), "dateTime"), service.now);
      EXPECT_TRUE(map(vehicle, "2026-03-12").empty());
      EXPECT_TRUE(route(vehicle, "9999-12-31").empty());
    }
}

TEST_F(DemoTrack, IsTheSameForTheSameSeed) {
  RunningService twin;
  const std::string day = "/map?vehid=1004&date=2026-03-10";
  EXPECT_EQ(twin.get(day, RunningService::bearer(service.token)).body, service.get(day).body);
  EXPECT_NE(Town(8).streets().streets()[5].name, Town(7).streets().streets()[5].name);
}

TEST_F(DemoTrack, CountsTheOdometerUpByWhatIsDrivenAndEmptiesTheTankOnTheWay) {
  const auto kilometres = [](const Json& live) { return std::stod(textOf(live, "odometer")); };
  constexpr Instant day = 86400;
  for (const int vehicle : {1001, 1003, 1005}) {
    const Instant begin = *parseInstant("2026-03-10 00:00:00");
    const double before = kilometres(liveAt(vehicle, begin));
    const Json points = map(vehicle, "2026-03-09");
    service.now = begin + 2 * day;
    const double driven = std::stod(textOf(map(vehicle, "2026-03-10").back(), "totdist"));
    EXPECT_GT(driven, 50);
    EXPECT_NEAR(kilometres(liveAt(vehicle, begin + day)) - before, driven, 0.25);

    double last = before;
    int fillings = 0;
    double lastFuel = std::stod(textOf(liveAt(vehicle, begin), "fuel"));
    for (Instant now = begin; now < begin + 5 * day; now += 1200) {
      const Json live = liveAt(vehicle, now);
      const double fuel = std::stod(textOf(live, "fuel"));
      EXPECT_GE(kilometres(live), last);
      if (fuel > lastFuel + 0.5) ++fillings;
      EXPECT_GT(fuel, 0);
      last = kilometres(live);
      lastFuel = fuel;
    }
    EXPECT_GE(fillings, 1) << vehicle;
    EXPECT_LE(fillings, 8) << vehicle;
  }
}

TEST_F(DemoTrack, ShowsSpeedHeadingAndEngineThatFitTheMovement) {
  int moving = 0;
  for (Instant now = *parseInstant("2026-03-10 08:00:00"); now < *parseInstant("2026-03-10 10:00:00");
       now += 61) {
    const Json live = liveAt(1001, now);
    const Json later = liveAt(1001, now + 2);
    const double metres = distanceBetween(pointOf(live), pointOf(later));
    const double speed = std::stod(textOf(live, "speed"));
    if (speed == 0) continue;
    EXPECT_GT(std::stod(textOf(live, "rpm")), 700);
    EXPECT_NEAR(metres / 2 * 3.6, speed, 22);
    if (metres < 15) continue;
    ++moving;
    const double heading = headingOf(pointOf(later) - pointOf(live));
    const double off = std::abs(std::remainder(heading - std::stod(textOf(live, "direction")), 360));
    EXPECT_LT(off, 95) << live;
  }
  EXPECT_GT(moving, 20);
}

}  // namespace
}  // namespace fleetor::demo
