#include "demo/service/answers.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>

#include "demo/service/json_writer.h"
#include "demo/town/instruments.h"
#include "demo/town/random.h"

namespace fleetor::demo {
namespace {

JsonWriter envelope(std::int64_t total, int code = 200, std::string_view description = "OK") {
  JsonWriter json;
  json.beginObject().number("total", total).key("error").beginObject();
  json.number("code", code).member("description", description).endObject();
  return json;
}

std::string finished(JsonWriter& json) {
  return json.endObject().take();
}

void writeLocation(JsonWriter& json, Point at) {
  const GeoPosition position = geoPosition(at);
  json.key("location").beginObject();
  json.member("lat", decimals(position.latitude, 6))
      .member("lon", decimals(position.longitude, 6))
      .endObject();
}

void writeVehicle(JsonWriter& json, const FleetVehicle& vehicle) {
  json.beginObject().number("vehicleId", vehicle.id).member("name", vehicle.name);
  json.member("registration", vehicle.registration).member("mapLineColor", vehicle.colour);
  json.member("icon", vehicle.kind->icon).endObject();
}

std::string streetOf(const Movements& movements, const Whereabouts& where) {
  const Town& town = movements.town();
  if (!where.driving) return town.placeAddress(where.place);
  return town.address(town.streets().edges()[where.motion.edge], where.motion.alongEdge);
}

// Counts the points of a day's track and how far it has come.
class TrackWriter {
 public:
  TrackWriter(const Movements& movements, JsonWriter& json, double startMetres)
      : movements_(movements), json_(json), startMetres_(startMetres) {}

  void point(const Whereabouts& where, Instant instant, std::string_view label, std::string_view duration) {
    json_.beginObject().number("lp", count_++);
    writeLocation(json_, where.motion.at);
    json_.member("dateTime", stampText(instant)).member("duration", duration);
    json_.member("totdist", decimals((where.odometerMetres - startMetres_) / 1000, 2));
    json_.member("label", label).member("street", streetOf(movements_, where)).endObject();
  }
  std::int64_t count() const { return count_; }

 private:
  const Movements& movements_;
  JsonWriter& json_;
  double startMetres_;
  std::int64_t count_ = 0;
};

}  // namespace

std::string errorAnswer(int code, std::string_view description) {
  JsonWriter json = envelope(0, code, description);
  return finished(json);
}

std::string plainAnswer() {
  return errorAnswer(200, "OK");
}

std::string tokenAnswer(std::string_view token) {
  JsonWriter json = envelope(1);
  json.key("token").beginObject().member("access_token", token).member("token_type", "bearer").endObject();
  return finished(json);
}

std::string userAnswer(const Account& account) {
  JsonWriter json = envelope(1);
  json.key("user").beginObject().member("name", account.name).member("statusDescription", account.status);
  json.member("sms", account.sms).member("companyName", account.company);
  json.member("address1", account.address1).member("address2", account.address2).member("vat", account.vat);
  json.member("gsm", account.phone).member("mail", account.mail);
  json.member("expirationDate", account.expirationDate).endObject();
  return finished(json);
}

std::string vehiclesAnswer(const Account& account, std::size_t offset, std::size_t limit) {
  const std::size_t count = account.vehicles.size();
  JsonWriter json = envelope(static_cast<std::int64_t>(count));
  json.key("vehicles").beginArray();
  const std::size_t first = std::min(offset, count);
  for (std::size_t i = first; i < first + std::min(limit, count - first); ++i)
    writeVehicle(json, account.vehicles[i]);
  json.endArray();
  return finished(json);
}

std::string liveAnswer(const Movements& movements, const FleetVehicle& vehicle, Instant now) {
  const Whereabouts where = movements.at(vehicle, now);
  const Instruments read = readInstruments(vehicle, where, now);
  JsonWriter json = envelope(1);
  json.key("live").beginObject().member("datetime", stampText(now)).key("vehicles");
  writeVehicle(json, vehicle);
  json.member("active", "1").member("speed", read.speed);
  json.member("powerSupply", read.power).member("powerSupplyType", "V");
  json.member("sig", read.satellites).member("direction", read.direction).member("fuel", read.fuel);
  if (!read.fuelUnit.empty()) json.member("fuelType", read.fuelUnit);
  json.member("rpm", read.rpm).member("odometer", read.odometer).key("led").beginObject();
  for (const auto& [name, lit] : read.lights)
    json.member(name, lit ? "1" : "0");
  json.endObject().member("street", streetOf(movements, where)).member("temp", read.temperature);
  writeLocation(json, where.motion.at);
  json.endObject();
  return finished(json);
}

std::string infoAnswer(const Movements& movements, const FleetVehicle& vehicle, Instant now) {
  const Whereabouts where = movements.at(vehicle, now);
  const Instruments read = readInstruments(vehicle, where, now);
  const Schedule schedule = serviceSchedule(vehicle, where, now);
  JsonWriter json = envelope(1);
  json.key("info").beginObject().key("auto").beginObject();
  json.member("name", vehicle.name).member("registration", vehicle.registration);
  json.member("mapLineColor", vehicle.colour).member("icon", vehicle.kind->icon);
  json.member("driver", vehicle.driver)
      .member("driverGsm", vehicle.driverPhone)
      .member("engine", vehicle.engine);
  json.member("tank", decimals(vehicle.kind->tankLitres, 0))
      .member("active", schedule.unitExpires)
      .endObject();
  json.key("service").beginObject().member("oil", schedule.oil).member("tech", schedule.technical);
  json.member("odo", schedule.distance).endObject();
  json.key("live")
      .beginObject()
      .member("odo", read.odometer)
      .member("fuel", read.fuel)
      .endObject()
      .endObject();
  return finished(json);
}

std::string mapAnswer(const Movements& movements, const FleetVehicle& vehicle, Day day, Instant now,
                      bool dense) {
  constexpr Instant kSparseSeconds = 10;
  const std::vector<Stage> stages = movements.dayStages(vehicle, day, now);
  JsonWriter points;
  TrackWriter track(movements, points, stages.empty() ? 0 : stages.front().odometerMetres);
  points.beginArray();
  for (std::size_t i = 0; i < stages.size(); ++i) {
    const Stage& stage = stages[i];
    const bool last = i + 1 == stages.size();
    // Where one stage ends the next begins, so only the day's last one has an end of its own.
    const Instant end = last ? stage.end + 1 : stage.end;
    if (!stage.drive) {
      const Whereabouts parked = movements.inStage(stage, stage.begin);
      track.point(parked, stage.begin, "Parking", durationText(stage.end - stage.begin));
      for (Instant t = stage.begin + 1; dense && t < end; ++t)
        track.point(parked, t, "", "");
      continue;
    }
    Instant reported = stage.begin;
    double heading = 0;
    for (Instant t = stage.begin; t < end; ++t) {
      const Whereabouts where = movements.inStage(stage, t);
      const bool edge = t == stage.begin || (last && t == stage.end);
      const bool due = t - reported >= (dense ? 1 : kSparseSeconds);
      // Bends are reported when they come, so that the drawn line stays on the street.
      const bool bend =
          t - reported >= 2 && std::abs(std::remainder(where.motion.heading - heading, 360)) > 20;
      if (!edge && !due && !bend) continue;
      track.point(where, t, "", "");
      reported = t;
      heading = where.motion.heading;
    }
  }
  points.endArray();

  std::string body = errorAnswer(200, "OK");
  body.replace(0, sizeof "{\"total\":0" - 1, "{\"total\":" + std::to_string(track.count()));
  body.pop_back();
  body += ",\"map\":";
  body += points.take();
  return body += '}';
}

std::string routeAnswer(const Movements& movements, const FleetVehicle& vehicle, Day day, Instant now) {
  const std::vector<Stage> stages = movements.dayStages(vehicle, day, now);
  JsonWriter json = envelope(static_cast<std::int64_t>(stages.size()));
  json.key("route").beginArray();
  std::int64_t number = 0;
  for (const Stage& stage : stages) {
    const Whereabouts first = movements.inStage(stage, stage.begin);
    const Whereabouts last = movements.inStage(stage, stage.end);
    json.beginObject().number("lp", ++number).member("status", stage.drive ? "Driving" : "Parking");
    json.member("timeFrom", stampText(stage.begin)).member("timeTo", stampText(stage.end));
    json.member("duration", durationText(stage.end - stage.begin));
    json.member("distance", decimals((last.odometerMetres - first.odometerMetres) / 1000, 1));
    json.member("from", streetOf(movements, first)).member("to", streetOf(movements, last)).endObject();
  }
  json.endArray();
  return finished(json);
}

}  // namespace fleetor::demo
