#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

#include "support/scratch_folder.h"
#include "support/testing.h"

namespace fleetor {
namespace {

struct Crash {
  int signal = 0;  ///< that ended the process; 0: it ended by itself
  std::string report;
};

Crash crash(const char* way) {
  const test::ScratchFolder folder;
  const std::string path = (folder.path() / "report.txt").string();
  const pid_t child = ::fork();
  if (child == 0) {
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    std::freopen("/dev/null", "w", stderr);
    // A sanitizer's own handlers would end the process in their way, after ours; what is tested is the
    // client's.
    const char* const leaveSignals = "handle_segv=0:handle_abort=0";
    for (const char* name : {"ASAN_OPTIONS", "TSAN_OPTIONS", "UBSAN_OPTIONS"})
      ::setenv(name, leaveSignals, 1);
    ::execl(CRASHING_PROGRAM, CRASHING_PROGRAM, path.c_str(), way, nullptr);
    ::_exit(127);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  std::ifstream file(path);
  return {WIFSIGNALED(status) ? WTERMSIG(status) : 0, {std::istreambuf_iterator<char>(file), {}}};
}

std::string outputOf(const std::string& command) {
  std::string output;
  FILE* const pipe = ::popen(command.c_str(), "r");
  std::array<char, 512> piece{};
  while (pipe && std::fgets(piece.data(), piece.size(), pipe))
    output += piece.data();
  if (pipe) ::pclose(pipe);
  return output;
}

/// One frame, or the line about the program: "#3 module+0x12ab build-id".
struct Place {
  std::string module;
  std::string offset;
  std::string build;
};

std::vector<Place> placesOf(const std::string& report) {
  std::vector<Place> places;
  std::istringstream lines(report);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string first;
    std::string where;
    Place place;
    words >> first >> where >> place.build;
    const auto plus = where.find('+');
    if ((first != "program:" && first[0] != '#') || plus == std::string::npos) continue;
    place.module = where.substr(0, plus);
    place.offset = where.substr(plus + 1);
    places.push_back(place);
  }
  return places;
}

/// The functions of the program that the report's frames lie in, found as a reader of the report would.
std::string functionsOf(const std::string& report) {
  std::string command = "addr2line -f -e " CRASHING_PROGRAM;
  for (const Place& each : placesOf(report))
    if (each.module == "crashing_program") command += " " + each.offset;
  return outputOf(command);
}

TEST(CrashReport, HoldsTheCauseAndThePlaceAndTheProcessEndsAsItWould) {
  struct Case {
    const char* way;
    int signal;
    const char* text;
    const char* function;
  };
  for (const Case& each : {Case{"wild", SIGSEGV, "signal: 11 SIGSEGV\naccess: elsewhere\n", "touchToken"},
                           Case{"thread", SIGSEGV, "signal: 11 SIGSEGV\naccess: elsewhere\n", "crashAsTold"},
                           Case{"null", SIGSEGV, "signal: 11 SIGSEGV\naccess: near null\n", "crashAsTold"},
                           Case{"sent", SIGSEGV, "signal: 11 SIGSEGV\nbacktrace", "crashAsTold"},
                           Case{"overflow", SIGSEGV, "access: near the end of the stack\n", "recurse"},
                           Case{"abort", SIGABRT, "signal: 6 SIGABRT\nbacktrace", "crashAsTold"},
                           Case{"throw", SIGABRT, "uncaught: St13runtime_error\n", "crashAsTold"}}) {
    SCOPED_TRACE(each.way);
    const Crash crashed = crash(each.way);
    EXPECT_EQ(crashed.signal, each.signal);
    EXPECT_THAT(crashed.report, HasSubstr("version: 1.2.3\n"));
    EXPECT_THAT(crashed.report, HasSubstr(each.text));
    EXPECT_THAT(crashed.report, HasSubstr("\nend\n"));
    EXPECT_THAT(functionsOf(crashed.report), HasSubstr(each.function)) << crashed.report;
    // What was in memory, in registers and in the exception; 544b4e and 4e4b54 are the token's first
    // characters.
    std::string rest = crashed.report;
    for (const Place& place : placesOf(crashed.report))
      if (!place.build.empty()) rest.erase(rest.find(place.build), place.build.size());
    for (const char* secret : {"TKN", "abcdef0", "52.52", "13.40", "/", "answer", "544b4e", "4e4b54"})
      EXPECT_THAT(rest, Not(HasSubstr(secret)));
  }
}

TEST(CrashReport, NamesTheBuildOfEveryModule) {
  const std::string notes = outputOf("readelf -n " CRASHING_PROGRAM);
  std::map<std::string, std::string> builds;
  for (const Place& each : placesOf(crash("abort").report))
    builds[each.module] = each.build;
  EXPECT_THAT(notes, HasSubstr("Build ID: " + builds["crashing_program"] + "\n"));
  EXPECT_EQ(builds["libc.so.6"].size(), 40U);
  EXPECT_NE(builds["libc.so.6"], builds["crashing_program"]);
}

}  // namespace
}  // namespace fleetor
