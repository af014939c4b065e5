#include "demo/service/messages.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace fleetor::demo {
namespace {

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const int lower = std::tolower(static_cast<unsigned char>(c));
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int high = text[i] == '%' && i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
    const int low = high >= 0 ? hexDigit(text[i + 2]) : -1;
    if (low >= 0) {
      result += static_cast<char>(high * 16 + low);
      i += 2;
    } else {
      result += text[i] == '+' ? ' ' : text[i];
    }
  }
  return result;
}

}  // namespace

std::string_view ServiceRequest::header(std::string_view name) const {
  const auto same = [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
  };
  for (const auto& [key, value] : headers)
    if (std::ranges::equal(key, name, same)) return value;
  return {};
}

Parameters parseParameters(std::string_view text) {
  Parameters parameters;
  while (!text.empty()) {
    const std::string_view pair = text.substr(0, text.find('&'));
    text.remove_prefix(std::min(text.size(), pair.size() + 1));
    if (pair.empty()) continue;
    const std::size_t equals = std::min(pair.find('='), pair.size());
    const std::string_view value = equals < pair.size() ? pair.substr(equals + 1) : std::string_view();
    parameters.emplace(unescaped(pair.substr(0, equals)), unescaped(value));
  }
  return parameters;
}

std::optional<long long> parseNumber(std::string_view text) {
  long long value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace fleetor::demo
