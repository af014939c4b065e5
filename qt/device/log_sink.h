#pragma once

#include <cstdio>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/log.h"

namespace fleetor {

/// A line of the request layer with "***" in place of every password and token: in the query of a requested
/// URL; in JSON, the value of every name that contains such a word; any other answer as a whole when it
/// contains one. It hides too much rather than too little.
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
