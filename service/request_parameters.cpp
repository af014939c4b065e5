#include "service/request_parameters.h"

#include <charconv>
#include <cstdio>

namespace fleetor {

std::string ParamValue::text() const {
  if (const auto* text = std::get_if<std::string>(&value_)) return *text;
  char digits[400];  // the longest double has 342
  const auto* real = std::get_if<double>(&value_);
  const auto written = real ? std::to_chars(digits, std::end(digits), *real, std::chars_format::fixed)
                            : std::to_chars(digits, std::end(digits), std::get<std::int64_t>(value_));
  return {digits, written.ptr};
}

std::string urlEncode(const ParamValue& value) {
  static constexpr char hex[] = "0123456789ABCDEF";
  std::string escaped;
  for (const char each : value.text()) {
    const auto byte = static_cast<unsigned char>(each);
    const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
    if (letter || (byte >= '0' && byte <= '9') || byte == '-' || byte == '.' || byte == '_' || byte == '~') {
      escaped += each;
    } else {
      escaped += '%';
      escaped += hex[byte >> 4];
      escaped += hex[byte & 15];
    }
  }
  return escaped;
}

std::string parameterText(const Params& params) {
  std::string text;
  for (const auto& [name, value] : params)
    text += name + "=" + urlEncode(value) + "&";
  if (text.ends_with('&')) text.pop_back();
  return text;
}

namespace {

std::string quotedForLog(const std::string& text) {
  std::string quoted = "\"";
  for (const char each : text) {
    if (each == '"' || each == '\\') {
      quoted += '\\';
      quoted += each;
    } else if (static_cast<unsigned char>(each) < 0x20) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(each));
      quoted += escape;
    } else {
      quoted += each;
    }
  }
  return quoted + "\"";
}

}  // namespace

std::string parametersForLog(const std::optional<Params>& params) {
  if (!params) return "(null)";
  std::string text = "{";
  for (const auto& [name, value] : *params) {
    if (text.size() > 1) text += ",";
    text += quotedForLog(name) + ":" + (value.isNumber() ? value.text() : quotedForLog(value.text()));
  }
  return text + "}";
}

}  // namespace fleetor
