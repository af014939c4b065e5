#include "app/exit_guard.h"

#include <atomic>
#include <cstdlib>

#include "model/json.h"

namespace fleetor {

namespace {

constinit std::atomic<bool> guarded = false;

void leave() {
  if (guarded) std::_Exit(EXIT_FAILURE);
}

struct Leaving {
  ~Leaving() { leave(); }
};

}  // namespace

ExitGuard::ExitGuard() {
  // Thread-local objects of the exiting thread are destroyed before every static object.
  [[maybe_unused]] thread_local const Leaving ofThisThread;
  static_cast<void>(decodeJSON("{}"));  // the decoder's static objects, used on other threads
  renew();
  guarded = true;
}

void ExitGuard::renew() {
  static_cast<void>(std::atexit(leave));
}

ExitGuard::~ExitGuard() {
  guarded = false;
}

}  // namespace fleetor
