#pragma once

#include <string_view>

namespace fleetor {

/// Takes the diagnostic lines of the request layer, from any thread. Silent unless the user asks for them;
/// masks secrets before a line goes anywhere. Where a secret can stand in a line:
/// - The parameters of a request are one JSON object, on one line behind "REQUEST: ".
/// - The line about a failed request is the answer as it came, of any length and shape, and its status. The
///   answer to a sign-in may hold an "access_token", as JSON or not.
/// The request layer itself never logs a header.
class Log {
 public:
  virtual ~Log() = default;
  virtual void line(std::string_view text) = 0;
};

}  // namespace fleetor
