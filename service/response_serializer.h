#pragma once

#include <optional>
#include <string>
#include <variant>

#include "model/json.h"
#include "platform/transport.h"
#include "service/response_kind.h"

namespace fleetor {

/// What an answer decodes to: nothing, a JSON object or array, or the raw body.
using ResponseObject = std::variant<std::monostate, JSONValue, std::string>;

struct HTTPResponse {
  int statusCode = 0;
};

/// A finished transfer, judged.
struct HTTPRequestOperation {
  bool isCancelled = false;
  std::optional<HTTPResponse> response;  ///< nothing when no answer arrived
  ResponseObject responseObject;         ///< may hold the decoded body of a failed request too
  std::optional<std::string>
      responseString;               ///< the body as text, for the log; set beside an error, unless it is huge
  std::optional<APIFailure> error;  ///< nothing: the request succeeded
};

enum class ResponseSerializer {
  plain,  ///< any content type; the object is the raw body
  JSON,  ///< "application/json", "text/json" or "text/javascript"; the object is the decoded body, or nothing
};

/// Judges an answer and decodes its body. Only statuses 200 to 299 succeed. Pure; any thread.
///
/// The JSON body is read in the character set that the answer names, in UTF-8 when it names none or an
/// unknown one. A body that is empty, a single space or not text in that character set gives neither an
/// object nor an error.
HTTPRequestOperation judge(HttpReply reply, ResponseSerializer serializer);

/// The bytes as UTF-8 text; nothing when they are not text in that character set. An empty or unknown name is
/// UTF-8.
std::optional<std::string> decodeText(std::string bytes, const std::string& charset);

}  // namespace fleetor
