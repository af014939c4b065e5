#pragma once

#include <string>
#include <string_view>

namespace fleetor {

/// The text with its ASCII letters in lower case, whatever the locale: names of headers, hosts and character
/// sets are compared like that.
inline std::string lowerCase(std::string_view text) {
  std::string lower(text);
  for (char& each : lower)
    if (each >= 'A' && each <= 'Z') each = static_cast<char>(each - 'A' + 'a');
  return lower;
}

}  // namespace fleetor
