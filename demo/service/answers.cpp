#include "demo/service/answers.h"

#include <algorithm>
#include <cmath>

#include "demo/service/messages.h"
#include "demo/town/instruments.h"

namespace fleetor::demo {
namespace {

Json envelope(std::size_t total, int code = 200, std::string_view description = "OK") {
  return Json{{"total", total}, {"error", Json{{"code", code}, {"description", description}}}};
}

std::string answer(std::size_t total, const char* key, Json payload) {
  Json json = envelope(total);
  json[key] = std::move(payload);
  return textOf(json);
}

Json locationOf(Point at) {
  const GeoPosition position = geoPosition(at);
  return Json{{"lat", decimals(position.latitude, 6)}, {"lon", decimals(position.longitude, 6)}};
}

Json vehicleOf(const FleetVehicle& vehicle) {
  return Json{{"vehicleId", vehicle.id},
              {"name", vehicle.name},
              {"registration", vehicle.registration},
              {"mapLineColor", vehicle.colour},
              {"icon", vehicle.kind->icon}};
}

std::string streetOf(const Movements& movements, const Whereabouts& where) {
  const Town& town = movements.town();
  if (!where.driving) return town.placeAddress(where.place);
  return town.address(town.streets().edges()[where.motion.edge], where.motion.alongEdge);
}

}  // namespace

std::string errorAnswer(int code, std::string_view description) {
  return textOf(envelope(0, code, description));
}

std::string plainAnswer() {
  return textOf(envelope(0));
}

std::string tokenAnswer(std::string_view token) {
  return answer(1, "token", Json{{"access_token", token}, {"token_type", "bearer"}});
}

std::string userAnswer(const Account& account) {
  return answer(1, "user",
                Json{{"name", account.name},
                     {"statusDescription", account.status},
                     {"sms", account.sms},
                     {"companyName", account.company},
                     {"address1", account.address1},
                     {"address2", account.address2},
                     {"vat", account.vat},
                     {"gsm", account.phone},
                     {"mail", account.mail},
                     {"expirationDate", account.expirationDate}});
}

std::string vehiclesAnswer(const Account& account, std::size_t offset, std::size_t limit) {
  const std::size_t count = account.vehicles.size();
  Json vehicles = Json::array();
  for (std::size_t i = offset; i < std::min(count, offset + limit); ++i)
    vehicles.push_back(vehicleOf(account.vehicles[i]));
  return answer(count, "vehicles", std::move(vehicles));
}

std::string liveAnswer(const Movements& movements, const FleetVehicle& vehicle, Instant now) {
  const Whereabouts where = movements.at(vehicle, now);
  const Instruments read = readInstruments(vehicle, where, now);
  Json lights = Json::object();
  for (const auto& [name, lit] : read.lights)
    lights[std::string(name)] = lit ? "1" : "0";
  Json live{{"datetime", stampText(now)}, {"vehicles", vehicleOf(vehicle)}, {"active", "1"},
            {"speed", read.speed},        {"powerSupply", read.power},      {"powerSupplyType", "V"},
            {"sig", read.satellites},     {"direction", read.direction},    {"fuel", read.fuel}};
  if (!read.fuelUnit.empty()) live["fuelType"] = read.fuelUnit;
  live["rpm"] = read.rpm;
  live["odometer"] = read.odometer;
  live["led"] = std::move(lights);
  live["street"] = streetOf(movements, where);
  live["temp"] = read.temperature;
  live["location"] = locationOf(where.motion.at);
  return answer(1, "live", std::move(live));
}

std::string infoAnswer(const Movements& movements, const FleetVehicle& vehicle, Instant now) {
  const Whereabouts where = movements.at(vehicle, now);
  const Instruments read = readInstruments(vehicle, where, now);
  const Schedule schedule = serviceSchedule(vehicle, where, now);
  return answer(
      1, "info",
      Json{{"auto", Json{{"name", vehicle.name},
                         {"registration", vehicle.registration},
                         {"mapLineColor", vehicle.colour},
                         {"icon", vehicle.kind->icon},
                         {"driver", vehicle.driver},
                         {"driverGsm", vehicle.driverPhone},
                         {"engine", vehicle.engine},
                         {"tank", decimals(vehicle.kind->tankLitres, 0)},
                         {"active", schedule.unitExpires}}},
           {"service", Json{{"oil", schedule.oil}, {"tech", schedule.technical}, {"odo", schedule.distance}}},
           {"live", Json{{"odo", read.odometer}, {"fuel", read.fuel}}}});
}

std::string mapAnswer(const Movements& movements, const FleetVehicle& vehicle, Day day, Instant now) {
  constexpr Instant longestGap = 10;
  const std::vector<Stage> stages = movements.dayStages(vehicle, day, now);
  Json points = Json::array();
  const auto add = [&](const Stage& stage, const Whereabouts& where, Instant instant) {
    const bool parked = !stage.drive;
    points.push_back(
        Json{{"lp", points.size()},
             {"location", locationOf(where.motion.at)},
             {"dateTime", stampText(instant)},
             {"duration", parked ? durationText(stage.end - stage.begin) : ""},
             {"totdist", decimals((where.odometerMetres - stages.front().odometerMetres) / 1000, 2)},
             {"label", parked ? "Parking" : ""},
             {"street", streetOf(movements, where)}});
  };
  for (std::size_t i = 0; i < stages.size(); ++i) {
    const Stage& stage = stages[i];
    if (!stage.drive) {
      add(stage, movements.inStage(stage, stage.begin), stage.begin);
      continue;
    }
    // Where one stage ends the next begins, so only the day's last one has a separate end.
    const Instant end = i + 1 == stages.size() ? stage.end : stage.end - 1;
    Instant reported = stage.begin;
    double heading = 0;
    for (Instant t = stage.begin; t <= end; ++t) {
      const Whereabouts where = movements.inStage(stage, t);
      const Instant gap = t - reported;
      // Bends are reported at once, so that the drawn line stays on the street.
      const bool bend = gap >= 2 && std::abs(std::remainder(where.motion.heading - heading, 360)) > 20;
      if (t != stage.begin && t != stage.end && gap < longestGap && !bend) continue;
      add(stage, where, t);
      reported = t;
      heading = where.motion.heading;
    }
  }
  const std::size_t count = points.size();
  return answer(count, "map", std::move(points));
}

std::string routeAnswer(const Movements& movements, const FleetVehicle& vehicle, Day day, Instant now) {
  Json route = Json::array();
  for (const Stage& stage : movements.dayStages(vehicle, day, now)) {
    const Whereabouts first = movements.inStage(stage, stage.begin);
    const Whereabouts last = movements.inStage(stage, stage.end);
    route.push_back(Json{{"lp", route.size() + 1},
                         {"status", stage.drive ? "Driving" : "Parking"},
                         {"timeFrom", stampText(stage.begin)},
                         {"timeTo", stampText(stage.end)},
                         {"duration", durationText(stage.end - stage.begin)},
                         {"distance", decimals((last.odometerMetres - first.odometerMetres) / 1000, 1)},
                         {"from", streetOf(movements, first)},
                         {"to", streetOf(movements, last)}});
  }
  const std::size_t count = route.size();
  return answer(count, "route", std::move(route));
}

}  // namespace fleetor::demo
