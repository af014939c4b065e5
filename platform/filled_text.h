#pragma once

#include <string>
#include <string_view>

namespace fleetor {

/// The text with the value in the place of the first `placeholder`, for instance "{day}". Any thread.
inline std::string filled(std::string text, std::string_view placeholder, std::string_view value) {
  if (const auto at = text.find(placeholder); at != std::string::npos)
    text.replace(at, placeholder.size(), value);
  return text;
}

}  // namespace fleetor
