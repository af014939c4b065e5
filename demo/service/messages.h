#pragma once

#include <charconv>
#include <chrono>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fleetor::demo {

using Json = nlohmann::ordered_json;

struct ServiceReply {
  int status = 200;
  std::string body;
  std::string contentType = "application/json; charset=utf-8";
  std::vector<std::pair<std::string, std::string>> headers = {};  // beside the content's type and length
  std::chrono::milliseconds delay{0};
  bool cutShort = false;  // half of the announced body is sent, then the connection closes
  bool hangs = false;     // nothing is sent; the connection stays open
};

// What is not valid UTF-8 becomes a replacement character.
inline std::string textOf(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// A whole decimal number, an optional minus before it, that fits.
inline std::optional<long long> parseNumber(std::string_view text) {
  long long value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

}  // namespace fleetor::demo
