#pragma once

namespace fleetor {

/// While it lives, `std::exit` ends the process at once, with EXIT_FAILURE: a library that calls it (Qt does
/// when the display goes) would take static objects apart under the threads that use them. On the main
/// thread, one at a time.
class ExitGuard {
 public:
  ExitGuard();
  ~ExitGuard();
  ExitGuard(const ExitGuard&) = delete;
  ExitGuard& operator=(const ExitGuard&) = delete;

  /// An exit on another thread first takes apart what has been made since the guard was made or renewed.
  void renew();
};

}  // namespace fleetor
