#pragma once

#include <string_view>

namespace fleetor {

/// Takes the diagnostic lines of the request layer, from any thread. Silent unless a person asks for them; masks the
/// value of "password" and every bearer token before a line goes anywhere.
class Log {
 public:
  virtual ~Log() = default;
  virtual void line(std::string_view text) = 0;
};

}  // namespace fleetor
