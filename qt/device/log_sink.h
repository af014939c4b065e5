#pragma once

#include <cstdio>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/log.h"

namespace fleetor {

/// Replaces the value of every password and token in the text by "***": in JSON (also in JSON quoted inside a
/// text), in form bodies and queries (also percent-escaped), in header lines, and whatever follows the word
/// "Bearer". Where a value's end cannot be told, it hides too much rather than too little.
std::string maskSecrets(std::string_view text);

/// Writes masked lines to a stream, or nowhere. A line break stays; other control characters do not reach the
/// stream, which may be a terminal. Any thread.
class LogSink final : public Log {
 public:
  explicit LogSink(std::FILE* stream) : stream_(stream) {}

  /// Standard error when the environment variable FLEETOR_LOG is set to anything, else nowhere.
  static std::FILE* streamFromEnvironment();

  void line(std::string_view text) override;

 private:
  std::FILE* stream_;
  std::mutex mutex_;
};

}  // namespace fleetor
