// crashing_program PATH WAY: sets the crash handler up for a report at PATH, then crashes in the named way,
// with things in memory that no report may hold.
#include <bit>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>

#include "diagnostics/crash_handler.h"

namespace {

/// A pointer made of the token's own characters: where a crash touches it, registers and signal hold them.
__attribute__((noinline, no_sanitize("address", "undefined", "thread"))) void touchToken(const char* token) {
  std::uintptr_t address = 0;
  std::memcpy(&address, token, 6);
  *std::bit_cast<volatile char*>(address) = 1;
}

volatile int deepest = 1 << 30;

__attribute__((noinline, no_sanitize("address", "undefined", "thread"))) int recurse(int depth) {
  volatile char room[512];
  room[0] = static_cast<char>(depth);
  return depth == deepest ? 0 : recurse(depth + 1) + room[0];
}

using Function = void (*)();
volatile Function nothing;

}  // namespace

extern "C" __attribute__((noinline, no_sanitize("address", "undefined", "thread"))) void crashAsTold(
    const std::string& way, const char* token) {
  volatile char secrets[96];
  std::snprintf(const_cast<char*>(secrets), sizeof secrets, "Bearer %s 52.520008 13.404954", token);
  volatile double latitude = 52.520008;
  if (way == "wild") touchToken(token);
  if (way == "null") nothing();
  if (way == "abort") std::abort();
  if (way == "sent") ::raise(SIGSEGV);
  if (way == "overflow") std::exit(recurse(0));
  if (way == "throw") throw std::runtime_error(std::string("no answer for ") + token);
  static_cast<void>(latitude);
}

int main(int argc, char** argv) {
  if (argc != 3 || !fleetor::installCrashHandler(argv[1], {"crashing_program", "1.2.3"})) return 2;
  const std::string way = argv[2];
  const std::string token = "TKNabcdef0123456789";
  if (way == "thread")
    std::thread([&] { crashAsTold("wild", token.c_str()); }).join();
  else
    crashAsTold(way, token.c_str());
  return 3;
}
