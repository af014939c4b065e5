#pragma once

#include <cstdint>
#include <string>

namespace fleetor {

/// How a request ended. The value 4 is never produced.
enum class ResponseKind : int {
  ResponseKindSuccess = 0,
  ResponseKindInvalidData = 1,  ///< the answer does not map, or its envelope is not valid
  ResponseKindHTTP = 2,         ///< failed with an HTTP status, a 2xx that could not be decoded among them
  ResponseKindConnection = 3,   ///< offline, unreachable or timed out
  ResponseKindCancelled = 5,
  ResponseKindUnexpected = 6,
};
using enum ResponseKind;

/// Why a request failed, for the caller of `API`. People see the standard messages instead.
struct APIFailure {
  std::string domain;  ///< one of failure_domain
  std::int64_t code = 0;
  std::string localizedDescription;
};

namespace failure_domain {
inline constexpr const char* service = "";                    ///< code and text of the envelope's own error
inline constexpr const char* model = "JSONModelErrorDomain";  ///< code of the mapping engine
inline constexpr const char* url = "NSURLErrorDomain";        ///< one of url_error
}  // namespace failure_domain

}  // namespace fleetor
