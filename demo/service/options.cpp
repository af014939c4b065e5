#include "demo/service/options.h"

#include <chrono>

namespace fleetor::demo {
namespace {

// 2200-01-01. The odometers are summed up day by day, so a start in a far future would take its time.
constexpr Instant kLatestStart = 7258118400;

Instant systemNow() {
  return std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
}

// The clock of a service that starts at the given moment and goes on from there.
std::function<Instant()> clockFrom(Instant start) {
  return [start, begun = std::chrono::steady_clock::now()] {
    return start +
           std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - begun).count();
  };
}

}  // namespace

std::string usage() {
  std::string text = R"(Usage: fleetor-demo-service [options]

A vehicle-tracking service with a town and a fleet of its own, on 127.0.0.1. Users and passwords: demo/demo,
harbour/harbour, nora/nora, and empty/empty, who has no vehicles.

  --port N          listens on port N; 0 picks a free one (default 8845)
  --vehicles N      vehicles of the user "demo", 0 to 10000 (default 45)
  --seed N          makes another town and fleet (default 1)
  --state FILE      keeps in FILE which users have signed out, so that it outlives this process
  --now TIME        starts the service's clock at "yyyy-MM-dd HH:mm:ss", local time, instead of now
  --dense           /map answers a point for every second of the day
  --fault F         makes something go wrong; may be repeated
  --help            shows this

F is ENDPOINT=KIND[:ARG][*COUNT]: ENDPOINT is token, logout, vehicles, live, map, route, info, user, tiles or all; *COUNT
limits it to the next COUNT requests. KIND is one of:
)";
  text += faultKindsHelp();
  text += R"(
While the service runs:
  /tiles/STYLE/ZOOM/X/Y.png  the map as tiles of 256 pixels, 512 with ?scale=2: STYLE is standard, dark or satellite,
                     ZOOM 3 to 19; nobody needs to sign in for them
  /control/faults    GET lists, POST adds ("live=delay:500*3" as JSON text, or {"endpoint", "kind", "argument",
                     "count"}, or a list of these), DELETE removes all or the one with ?id=N
  /control/requests  GET lists the last requests, DELETE forgets them
  /control/dense     POST (an empty body will do) and DELETE switch --dense on and off
  /control/service   GET answers which program this is, and its version
)";
  return text;
}

std::optional<ProgramOptions> parseOptions(const std::vector<std::string_view>& arguments,
                                           std::string& problem) {
  ProgramOptions options;
  options.service.now = systemNow;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    std::string name(arguments[i]);
    std::optional<std::string> value;
    if (const std::size_t equals = name.find('='); name.starts_with("--") && equals != std::string::npos) {
      value = name.substr(equals + 1);
      name.resize(equals);
    }
    if (name == "--help" || name == "--dense") {
      if (value) {
        problem = name + " takes no value";
        return std::nullopt;
      }
      (name == "--help" ? options.help : options.service.dense) = true;
      continue;
    }
    const bool known = name == "--port" || name == "--vehicles" || name == "--seed" || name == "--state" ||
                       name == "--now" || name == "--fault";
    if (!known) {
      problem = "there is no option \"" + std::string(arguments[i]) + "\"";
      return std::nullopt;
    }
    if (!value) {
      if (++i == arguments.size()) {
        problem = name + " needs a value";
        return std::nullopt;
      }
      value = std::string(arguments[i]);
    }
    const auto number = parseNumber(*value);
    if (name == "--port" && number && *number >= 0 && *number <= 65535) {
      options.port = static_cast<int>(*number);
    } else if (name == "--vehicles" && number && *number >= 0 && *number <= 10000) {
      options.service.vehicles = static_cast<int>(*number);
    } else if (name == "--seed" && number && *number >= 0) {
      options.service.seed = static_cast<std::uint64_t>(*number);
    } else if (name == "--state" && !value->empty()) {
      options.service.stateFile = *value;
    } else if (const auto instant = parseInstant(*value);
               name == "--now" && instant && *instant < kLatestStart) {
      options.service.now = clockFrom(*instant);
    } else if (name == "--fault") {
      const auto fault = parseFault(*value, problem);
      if (!fault) return std::nullopt;
      options.faults.push_back(*fault);
    } else {
      problem = name + " cannot be \"" + *value + "\"";
      return std::nullopt;
    }
  }
  return options;
}

}  // namespace fleetor::demo
