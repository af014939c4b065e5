#include <getopt.h>
#include <pthread.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <thread>

#include "demo/service/http_server.h"

namespace fleetor::demo {
namespace {

// 2200-01-01. The odometers are summed up day by day, so a start in the far future would take long.
constexpr Instant latestStart = 7258118400;

struct ProgramOptions {
  ServiceOptions service;
  int port = 8845;
  std::vector<Fault> faults;
  bool help = false;
};

// The time of a clock that stands at `start` now.
std::function<Instant()> clockFrom(Instant start) {
  using namespace std::chrono;
  return [start, begun = steady_clock::now()] {
    return start + duration_cast<seconds>(steady_clock::now() - begun).count();
  };
}

std::string usage() {
  return R"(Usage: fleetor-demo-service [options]

A vehicle-tracking service with an imaginary town and fleet, on 127.0.0.1. Users and passwords: demo/demo,
harbour/harbour, nora/nora, and empty/empty, who has no vehicles.

  --port N          listen on port N; 0 picks a free one (default 8845)
  --vehicles N      vehicles of the user "demo", 0 to 10000 (default 45)
  --seed N          generate another town and fleet (default 1)
  --state FILE      keep sign-outs in FILE, so that they outlive this process
  --now TIME        start the service's clock at "yyyy-MM-dd HH:mm:ss", local time, instead of now
  --fault F         make something go wrong; may be repeated
  --help            show this

F is ENDPOINT=KIND[:ARG][*COUNT]: *COUNT limits it to the next COUNT requests. ENDPOINT is one of
)" + endpointNames() +
         R"( and all, KIND one of:

)" + faultKindsHelp() +
         R"(
While the service runs:
  /tiles/STYLE/ZOOM/X/Y.png  the map as tiles of 256 pixels, 512 with ?scale=2: STYLE is standard, dark or
                     satellite, ZOOM 3 to 19; needs no sign-in
  /control/faults    GET lists, POST adds one ("live=delay:500*3" as JSON text), DELETE removes all
  /control/requests  GET lists the last requests, DELETE forgets them
  /control/service   GET answers which program this is, and its version
)";
}

// False when the value is not valid; `problem` then may say why.
bool setOption(ProgramOptions& options, int option, const std::string& value, std::string& problem) {
  const auto number = parseNumber(value);
  const auto within = [&](long long high) { return number && *number >= 0 && *number <= high; };
  if (option == 'p' && within(65535)) {
    options.port = static_cast<int>(*number);
  } else if (option == 'v' && within(10000)) {
    options.service.vehicles = static_cast<int>(*number);
  } else if (option == 's' && within(INT64_MAX)) {
    options.service.seed = static_cast<std::uint64_t>(*number);
  } else if (option == 'k' && !value.empty()) {
    options.service.stateFile = value;
  } else if (const auto instant = parseInstant(value); option == 'n' && instant && *instant < latestStart) {
    options.service.now = clockFrom(*instant);
  } else if (option == 'f') {
    const auto fault = parseFault(value, problem);
    if (fault) options.faults.push_back(*fault);
    return fault.has_value();
  } else {
    return false;
  }
  return true;
}

// Reports what is wrong on standard error, and then gives nothing.
std::optional<ProgramOptions> parseOptions(int argc, char** argv) {
  constexpr option names[] = {
      {"port", required_argument, nullptr, 'p'}, {"vehicles", required_argument, nullptr, 'v'},
      {"seed", required_argument, nullptr, 's'}, {"state", required_argument, nullptr, 'k'},
      {"now", required_argument, nullptr, 'n'},  {"fault", required_argument, nullptr, 'f'},
      {"help", no_argument, nullptr, 'h'},       {}};
  ProgramOptions options;
  options.service.version = FLEETOR_VERSION;
  options.service.now = [] { return std::time(nullptr); };
  int index = 0;
  for (int found = 0; (found = getopt_long(argc, argv, "", names, &index)) != -1;) {
    if (found == '?') return std::nullopt;
    std::string problem;
    if (found == 'h') {
      options.help = true;
    } else if (!setOption(options, found, optarg, problem)) {
      std::fprintf(stderr, "%s: invalid --%s \"%s\"%s%s\n", argv[0], names[index].name, optarg,
                   problem.empty() ? "" : ": ", problem.c_str());
      return std::nullopt;
    }
  }
  if (optind < argc) std::fprintf(stderr, "%s: unexpected argument \"%s\"\n", argv[0], argv[optind]);
  return optind < argc ? std::nullopt : std::optional(options);
}

int run(const ProgramOptions& options) {
  // Blocked before any thread starts, so that only sigwait() below receives them.
  sigset_t endings;
  sigemptyset(&endings);
  sigaddset(&endings, SIGTERM);
  sigaddset(&endings, SIGINT);
  pthread_sigmask(SIG_BLOCK, &endings, nullptr);

  Service service(options.service);
  for (const Fault& fault : options.faults)
    service.faults().add(fault);
  HttpServer server(service);
  const int port = server.bind(options.port);
  if (port == 0) {
    std::fprintf(stderr,
                 "fleetor-demo-service: port %d is in use or not allowed; choose another with --port\n",
                 options.port);
    return 1;
  }
  std::printf("Listening on http://127.0.0.1:%d\n", port);
  std::fflush(stdout);
  std::thread([&server] {
    server.run();
    std::_Exit(1);  // the listening socket failed
  }).detach();
  int ending = 0;
  sigwait(&endings, &ending);
  // Everything that must be kept is on disk: open connections need not end first.
  std::_Exit(0);
}

}  // namespace
}  // namespace fleetor::demo

int main(int argc, char** argv) {
  using namespace fleetor::demo;
  const auto options = parseOptions(argc, argv);
  if (options && !options->help) return run(*options);
  std::fputs(usage().c_str(), options ? stdout : stderr);
  return options ? 0 : 2;
}
