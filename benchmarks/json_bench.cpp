// A day's answer of the service, one point a second: from the bytes to filled records. Ours against the bare
// parser and against other libraries filled by hand, in interleaved rounds of one run.
//
//   fleetor_bench_json [rounds] [points]

#include <simdjson.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "figures.h"
#include "model/vehicle_records.h"

#ifdef WITH_RAPIDJSON
#include <rapidjson/document.h>
#endif
#ifdef WITH_BOOST_JSON
#include <boost/json.hpp>
#endif
#ifdef WITH_NLOHMANN
#include <nlohmann/json.hpp>
#endif

namespace fleetor {

struct Day : APIModel {
  std::int64_t total = 0;
  std::vector<MapEntry> map;
};

template <>
inline constexpr auto propertiesOf<Day> = properties(required<&Day::total>, required<&Day::map>);

namespace {

/// What the peers fill.
struct Point {
  std::int64_t lp = 0;
  std::string lat, lon, dateTime, duration, totdist, label, street;
};
using Points = std::vector<Point>;

std::string dayOf(int points) {
  std::string json =
      "{\"total\":" + std::to_string(points) + ",\"error\":{\"code\":200,\"description\":\"OK\"},\"map\":[";
  for (int i = 0; i < points; ++i) {
    char text[320];
    const bool parked = i % 600 == 0;
    std::snprintf(text, sizeof text,
                  "%s{\"lp\":%d,\"location\":{\"lat\":\"%.6f\",\"lon\":\"%.6f\"},\"dateTime\":\"2026-05-04 "
                  "%02d:%02d:%02d\","
                  "\"duration\":\"%s\",\"totdist\":\"%.1f\",\"label\":\"%s\",\"street\":\"Kr\\u00f3tka %d, "
                  "Harbour Town\"}",
                  i ? "," : "", i, 52.1 + i * 1e-6, 21.0 + i * 2e-6, i / 3600 % 24, i / 60 % 60, i % 60,
                  parked ? "0:10:00" : "", i * 0.013, parked ? "Parking" : "", i / 97);
    json += text;
  }
  return json + "]}";
}

/// What a way of reading made of the body: something to destroy later, and a sum that proves that it is all
/// there.
struct Filled {
  std::shared_ptr<void> kept;
  std::size_t sum = 0;
};

template <class List>
Filled checked(List points, std::size_t (*weigh)(const typename List::value_type&)) {
  std::size_t sum = 0;
  for (const auto& point : points)
    sum += weigh(point);
  return {std::make_shared<List>(std::move(points)), sum};
}

std::size_t weighPoint(const Point& p) {
  return static_cast<std::size_t>(p.lp) + p.lat.size() + p.street.size();
}

[[maybe_unused]] Filled peer(Points points) {
  return checked(std::move(points), &weighPoint);
}

Filled ours(std::string& body) {
  auto decoded = decodeJSON(std::move(body));
  if (!decoded) return {};
  auto day = JSONModel::initWithDictionary<Day>(std::move(*decoded));
  if (!day) return {};
  return checked(
      std::move(day->map), +[](const MapEntry& p) {
        return static_cast<std::size_t>(p.lp) + p.location.lat.size() + p.street.size();
      });
}

/// The limit: a parser that kept its memory warm from the round before, and nothing filled.
Filled parseOnly(std::string& body) {
  static simdjson::dom::parser parser;
  body.reserve(body.size() + simdjson::SIMDJSON_PADDING);
  simdjson::dom::array map;
  if (parser.parse(body.data(), body.size(), false)["map"].get(map)) return {};
  return {nullptr, map.size()};
}

/// The same with memory that is new to every round, as a program has it that reads one answer.
Filled parseOnlyFresh(std::string& body) {
  auto parser = std::make_shared<simdjson::dom::parser>();
  body.reserve(body.size() + simdjson::SIMDJSON_PADDING);
  simdjson::dom::array map;
  if (parser->parse(body.data(), body.size(), false)["map"].get(map)) return {};
  return {parser, map.size()};
}

Filled simdjsonFilled(std::string& body) {
  simdjson::dom::parser parser;
  body.reserve(body.size() + simdjson::SIMDJSON_PADDING);
  simdjson::dom::array map;
  if (parser.parse(body.data(), body.size(), false)["map"].get(map)) return {};
  Points points;
  points.reserve(map.size());
  for (const simdjson::dom::element each : map) {
    const auto text = [&](const char* key) { return std::string(std::string_view(each[key])); };
    const simdjson::dom::element location = each["location"];
    points.push_back({std::int64_t(each["lp"]), std::string(std::string_view(location["lat"])),
                      std::string(std::string_view(location["lon"])), text("dateTime"), text("duration"),
                      text("totdist"), text("label"), text("street")});
  }
  return peer(std::move(points));
}

#ifdef WITH_RAPIDJSON
Filled rapidJson(std::string& body) {
  rapidjson::Document document;
  document.Parse(body.data(), body.size());
  if (document.HasParseError()) return {};
  const auto map = document["map"].GetArray();
  Points points;
  points.reserve(map.Size());
  for (const auto& each : map) {
    const auto text = [](const rapidjson::Value& value) {
      return std::string(value.GetString(), value.GetStringLength());
    };
    const auto& location = each["location"];
    points.push_back({each["lp"].GetInt64(), text(location["lat"]), text(location["lon"]),
                      text(each["dateTime"]), text(each["duration"]), text(each["totdist"]),
                      text(each["label"]), text(each["street"])});
  }
  return peer(std::move(points));
}
#endif

#ifdef WITH_BOOST_JSON
Filled boostJson(std::string& body) {
  boost::json::monotonic_resource memory;
  const auto document = boost::json::parse(body, &memory);
  const auto& map = document.at("map").as_array();
  Points points;
  points.reserve(map.size());
  for (const auto& each : map) {
    const auto text = [](const boost::json::value& value) { return std::string(value.as_string()); };
    const auto& point = each.as_object();
    const auto& location = point.at("location").as_object();
    points.push_back({point.at("lp").as_int64(), text(location.at("lat")), text(location.at("lon")),
                      text(point.at("dateTime")), text(point.at("duration")), text(point.at("totdist")),
                      text(point.at("label")), text(point.at("street"))});
  }
  return peer(std::move(points));
}
#endif

#ifdef WITH_NLOHMANN
Filled nlohmannJson(std::string& body) {
  auto document = nlohmann::json::parse(body);
  auto& map = document["map"].get_ref<nlohmann::json::array_t&>();
  Points points;
  points.reserve(map.size());
  for (auto& each : map) {
    const auto text = [](nlohmann::json& value) { return std::move(value.get_ref<std::string&>()); };
    auto& location = each["location"];
    points.push_back({each["lp"].get<std::int64_t>(), text(location["lat"]), text(location["lon"]),
                      text(each["dateTime"]), text(each["duration"]), text(each["totdist"]),
                      text(each["label"]), text(each["street"])});
  }
  return peer(std::move(points));
}
#endif

struct Contestant {
  const char* name;
  Filled (*run)(std::string& body);
  bool fills = true;
  std::vector<double> milliseconds{};
  double extraMemory = 0;  ///< as a multiple of the body, beside the body itself
};

long statusLine(const char* name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with(name)) return std::atol(line.c_str() + std::char_traits<char>::length(name));
  return 0;
}

/// Reads one body in a child process: its highest resident memory, less what was there before.
double extraMemoryOf(const Contestant& contestant, int points) {
  int ends[2];
  if (pipe(ends) != 0) return 0;
  const pid_t child = fork();
  if (child == 0) {
    std::string body = dayOf(points);
    body.reserve(body.size() + simdjson::SIMDJSON_PADDING);
    const double size = static_cast<double>(body.size());
    // Resets the high-water mark, which building the body has raised.
    std::ofstream("/proc/self/clear_refs") << "5";
    const long before = statusLine("VmRSS:");
    const Filled filled = contestant.run(body);
    const double extra = static_cast<double>(statusLine("VmHWM:") - before) * 1024 / size;
    _exit(filled.sum > 0 && write(ends[1], &extra, sizeof extra) == sizeof extra ? 0 : 1);
  }
  double extra = 0;
  close(ends[1]);
  if (read(ends[0], &extra, sizeof extra) != sizeof extra) extra = 0;
  close(ends[0]);
  waitpid(child, nullptr, 0);
  return extra;
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

int main(int rounds, int points) {
  std::vector<Contestant> contestants{{"fleetor", &ours},
                                      {"simdjson, parse only, warm", &parseOnly, false},
                                      {"simdjson, parse only, fresh", &parseOnlyFresh, false},
                                      {"simdjson DOM, filled", &simdjsonFilled}};
#ifdef WITH_RAPIDJSON
  contestants.push_back({"RapidJSON DOM, filled", &rapidJson});
#else
  std::puts("RapidJSON was not found when this was configured: left out");
#endif
#ifdef WITH_BOOST_JSON
  contestants.push_back({"Boost.JSON, filled", &boostJson});
#else
  std::puts("Boost.JSON was not found when this was configured: left out");
#endif
#ifdef WITH_NLOHMANN
  contestants.push_back({"nlohmann/json, filled", &nlohmannJson});
#else
  std::puts("nlohmann/json was not found when this was configured: left out");
#endif

  for (auto& each : contestants)
    each.extraMemory = extraMemoryOf(each, points);

  const std::string body = dayOf(points);
  std::size_t expected = 0;
  for (int round = -1; round < rounds; ++round) {  // the first is for warming up
    for (auto& each : contestants) {
      std::string mine = body;
      mine.reserve(body.size() + simdjson::SIMDJSON_PADDING);  // as a body has that grew while it arrived
      const auto start = std::chrono::steady_clock::now();
      const Filled filled = each.run(mine);
      const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
      if (round >= 0) each.milliseconds.push_back(taken.count());
      if (!each.fills) continue;
      if (expected == 0) expected = filled.sum;
      if (filled.sum == 0 || filled.sum != expected) {
        std::fprintf(stderr, "%s did not read what the others read\n", each.name);
        return 1;
      }
    }
  }

  const double oursMs = median(contestants[0].milliseconds);
  const double limitMs = median(contestants[1].milliseconds);
  std::printf(
      "%d points, %.1f MB, medians of %d interleaved rounds; memory: peak beside the body, in bodies\n\n",
      points, static_cast<double>(body.size()) / 1e6, rounds);
  std::printf("%-30s %9s %9s %12s %9s %8s\n", "", "ms", "ns/point", "x parse only", "x fleetor", "memory");
  for (const auto& each : contestants) {
    const double ms = median(each.milliseconds);
    std::printf("%-30s %9.2f %9.0f %12.2f %9.2f %8.2f\n", each.name, ms, ms * 1e6 / points, ms / limitMs,
                ms / oursMs, each.extraMemory);
    bench::record("json", each.name, "ms", ms);
    bench::record("json", each.name, "memory in bodies", each.extraMemory);
  }
  return 0;
}

}  // namespace
}  // namespace fleetor

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 15;
  const int points = argc > 2 ? std::atoi(argv[2]) : 86'400;
  if (argc > 3 || rounds < 1 || points < 1) {
    std::fprintf(stderr, "usage: %s [rounds] [points], both at least 1\n", argv[0]);
    return 2;
  }
  return fleetor::main(rounds, points);
}
