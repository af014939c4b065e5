#include "demo/service/charsets.h"

#include <algorithm>
#include <cctype>

namespace fleetor::demo {
namespace {

std::string lowered(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), [](char c) { return static_cast<char>(std::tolower(c)); });
  return result;
}

// The text comes from this program, so it is well-formed; a stray byte counts as itself.
char32_t nextCharacter(std::string_view& rest) {
  const auto lead = static_cast<unsigned char>(rest[0]);
  const std::size_t length = lead < 0xc0 ? 1 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
  if (length == 1 || rest.size() < length) {
    rest.remove_prefix(1);
    return lead;
  }
  char32_t value = lead & (0x7fU >> length);
  for (std::size_t i = 1; i < length; ++i)
    value = (value << 6) | (static_cast<unsigned char>(rest[i]) & 0x3fU);
  rest.remove_prefix(length);
  return value;
}

}  // namespace

bool canEncode(std::string_view charset) {
  const std::string name = lowered(charset);
  return name == "iso-8859-1" || name == "utf-16" || name == "utf-16le" || name == "utf-16be";
}

std::string encodeText(std::string_view utf8, std::string_view charset) {
  const std::string name = lowered(charset);
  const bool latin = name == "iso-8859-1";
  const bool little = name == "utf-16le";
  std::string result;
  const auto unit = [&](char32_t value) {
    const char high = static_cast<char>(value >> 8 & 0xff);
    const char low = static_cast<char>(value & 0xff);
    (result += little ? low : high) += little ? high : low;
  };
  if (name == "utf-16") unit(0xfeff);
  while (!utf8.empty()) {
    const char32_t c = nextCharacter(utf8);
    if (latin) {
      result += c < 0x100 ? static_cast<char>(c) : '?';
    } else if (c < 0x10000) {
      unit(c);
    } else {
      unit(0xd800 + ((c - 0x10000) >> 10));
      unit(0xdc00 + ((c - 0x10000) & 0x3ff));
    }
  }
  return result;
}

}  // namespace fleetor::demo
