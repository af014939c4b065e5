#include "service/response_serializer.h"

#include <iconv.h>
#include <simdjson.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

#include "platform/ascii.h"

namespace fleetor {

namespace {

// A larger body is not copied for the log.
constexpr std::size_t longestLoggedBody = std::size_t{1} << 20;

constexpr std::array<std::string_view, 3> jsonTypes{"application/json", "text/json", "text/javascript"};

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string mimeTypeOf(std::string_view contentType) {
  return lowerCase(trimmed(contentType.substr(0, contentType.find(';'))));
}

std::string charsetOf(std::string_view contentType) {
  while (true) {
    const auto semicolon = contentType.find(';');
    if (semicolon == std::string_view::npos) return {};
    contentType.remove_prefix(semicolon + 1);
    const std::string_view parameter = contentType.substr(0, contentType.find(';'));
    const auto equals = parameter.find('=');
    if (equals == std::string_view::npos || lowerCase(trimmed(parameter.substr(0, equals))) != "charset")
      continue;
    std::string_view name = trimmed(parameter.substr(equals + 1));
    if (name.size() >= 2 && name.front() == '"' && name.back() == '"') name = name.substr(1, name.size() - 2);
    return lowerCase(name);
  }
}

// Refuses what iconv accepts besides registered names: suffixes, internal layouts, the locale's encoding.
bool isCharsetName(std::string_view name) {
  static constexpr std::array<std::string_view, 4> internal{"char", "internal", "wchar_t", "ucs-4-internal"};
  return !name.empty() && std::find(internal.begin(), internal.end(), name) == internal.end() &&
         std::all_of(name.begin(), name.end(), [](char each) {
           return (each >= 'a' && each <= 'z') || (each >= '0' && each <= '9') ||
                  std::strchr("-_.:+()", each);
         });
}

// Wide encodings are big-endian without a byte-order mark; iconv would use the machine's order.
std::string iconvNameOf(std::string_view charset, std::string_view bytes) {
  const bool marked = bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE") ||
                      bytes.starts_with(std::string_view("\0\0\xFE\xFF", 4));
  if ((charset == "utf-16" || charset == "utf-32") && !marked) return std::string(charset) + "be";
  return std::string(charset);
}

class Converter {
 public:
  explicit Converter(const std::string& charset) : handle_(iconv_open("UTF-8", charset.c_str())) {}
  ~Converter() {
    if (isKnown()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  bool isKnown() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

  std::optional<std::string> convert(std::string& bytes) {
    std::string text;
    std::array<char, 16384> piece;
    char* in = bytes.data();
    std::size_t left = bytes.size();
    bool flushing = false;
    while (true) {
      char* out = piece.data();
      std::size_t room = piece.size();
      const auto result = iconv(handle_, flushing ? nullptr : &in, &left, &out, &room);
      text.append(piece.data(), piece.size() - room);
      if (text.size() > longestJSON) return text;  // decodeJSON refuses it for its length
      if (result == static_cast<std::size_t>(-1)) {
        if (errno != E2BIG) return {};
      } else if (flushing) {
        return text;
      } else {
        flushing = true;
      }
    }
  }

 private:
  iconv_t handle_;
};

std::string statusText(int status) {
  switch (status) {
    case 400:
      return "bad request";
    case 401:
      return "unauthorized";
    case 403:
      return "forbidden";
    case 404:
      return "not found";
    case 405:
      return "method not allowed";
    case 408:
      return "request timed out";
    case 429:
      return "too many requests";
    case 500:
      return "internal server error";
    case 501:
      return "unimplemented";
    case 502:
      return "bad gateway";
    case 503:
      return "service unavailable";
    case 504:
      return "gateway timed out";
    default:
      break;
  }
  if (status >= 500) return "server error";
  if (status >= 400) return "client error";
  if (status >= 300) return "redirected";
  return status >= 200 ? "no error" : "informational";
}

APIFailure urlFailure(long code, std::string description) {
  return {failure_domain::url, code, std::move(description)};
}

/// The bytes in UTF-8, or as they are where they should be in it. Nothing when they cannot be converted.
std::optional<std::string> converted(std::string bytes, const std::string& charset) {
  const std::string name = lowerCase(charset);
  if (name != "utf-8" && name != "utf8" && isCharsetName(name)) {
    Converter converter(iconvNameOf(name, bytes));
    if (converter.isKnown()) return converter.convert(bytes);
  }
  return bytes;
}

}  // namespace

std::optional<std::string> decodeText(std::string bytes, const std::string& charset) {
  auto text = converted(std::move(bytes), charset);
  if (text && !simdjson::validate_utf8(*text)) return {};
  return text;
}

HTTPRequestOperation judge(HttpReply reply, ResponseSerializer serializer) {
  HTTPRequestOperation operation;
  if (reply.status != 0) operation.response = HTTPResponse{reply.status};
  const std::string charset = charsetOf(reply.contentType);
  const auto fail = [&](long code, std::string description) {
    operation.error = urlFailure(code, std::move(description));
  };

  if (reply.error != 0) {
    operation.isCancelled = reply.error == url_error::cancelled;
    fail(reply.error, std::move(reply.errorDescription));
    operation.responseString.emplace();
    return operation;
  }

  const std::string type = mimeTypeOf(reply.contentType);
  const bool accepted = serializer == ResponseSerializer::plain || reply.body.empty() ||
                        std::find(jsonTypes.begin(), jsonTypes.end(), type) != jsonTypes.end();
  if (reply.status < 200 || reply.status > 299)
    fail(url_error::badServerResponse,
         "Request failed: " + statusText(reply.status) + " (" + std::to_string(reply.status) + ")");
  else if (!accepted)
    fail(url_error::cannotDecodeContentData, "Request failed: unacceptable content-type: " + type);

  if (serializer == ResponseSerializer::plain) {
    if (operation.error && reply.body.size() <= longestLoggedBody)
      operation.responseString = decodeText(reply.body, charset);
    operation.responseObject = std::move(reply.body);
    return operation;
  }

  auto text = converted(std::move(reply.body), charset);
  if (!text) return operation;
  std::optional<std::string> logged;
  if (text->size() <= longestLoggedBody) logged = text;
  if (accepted && !text->empty() && *text != " ") {
    auto decoded = decodeJSON(std::move(*text));
    if (!decoded && !operation.error)
      fail(url_error::cannotParseResponse, decoded.error().description);
    else if (decoded && !decoded->isNil())
      operation.responseObject = std::move(decoded).value();
  }
  if (operation.error && logged && simdjson::validate_utf8(*logged))
    operation.responseString = std::move(logged);
  return operation;
}

}  // namespace fleetor
