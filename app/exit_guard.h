#pragma once

namespace fleetor {

/// While it lives, `std::exit` ends the process at once, with EXIT_FAILURE: a library that calls it (Qt does
/// when the display is lost) would destroy static objects while other threads use them. On the main thread,
/// one at a time.
class ExitGuard {
 public:
  ExitGuard();
  ~ExitGuard();
  ExitGuard(const ExitGuard&) = delete;
  ExitGuard& operator=(const ExitGuard&) = delete;

  /// On another thread, `std::exit` still destroys what was made after the guard or its last renewal.
  void renew();
};

}  // namespace fleetor
