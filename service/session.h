#pragma once

#include <cstdint>

namespace fleetor {

/// The time from one sign-in or sign-out to the next. Every request, scheduled call and screen belongs to the
/// session in which it was made, and keeps a `Session` to ask whether that has ended. Main thread only,
/// except for copies.
class Session {
 public:
  Session() : number_(current_) {}  ///< the one that is under way

  bool hasEnded() const { return number_ != current_; }

 private:
  friend class API;
  static void startNext() { ++current_; }

  static inline std::uint64_t current_ = 0;
  std::uint64_t number_;
};

}  // namespace fleetor
