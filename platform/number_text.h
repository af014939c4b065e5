#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>

namespace fleetor {

// Numbers as texts, the same in every locale: with a point for files and for what is read again, or as a
// language writes them. Any thread.

/// With that many decimals, at most 17, and a point. Finite numbers only.
inline std::string decimals(double number, int places) {
  std::array<char, 336> text{};  // 309 digits before the point
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number == 0 ? 0 : number,
                                     std::chars_format::fixed, places)
                           .ptr};
}

/// A number with a point as people write it in the language with that code, "de": with its decimal sign.
inline std::string inLanguage(std::string_view language, std::string number) {
  constexpr std::array<std::string_view, 10> withComma{"cs", "de", "es", "fr", "it",
                                                       "nl", "pl", "pt", "tr", "uk"};
  const auto point = number.find('.');
  if (point != std::string::npos && std::ranges::find(withComma, language) != withComma.end())
    number[point] = ',';
  return number;
}

enum class ClockDigits { minutes, seconds };

/// "07:03", or "07:03:12", of so many seconds since midnight, at least 0; "24:00" is the end of the day.
inline std::string clockText(double seconds, ClockDigits digits = ClockDigits::minutes) {
  const auto whole = static_cast<long>(std::floor(seconds));
  const auto two = [](long number) { return (number < 10 ? "0" : "") + std::to_string(number); };
  const std::string text = two(whole / 3600) + ':' + two(whole / 60 % 60);
  return digits == ClockDigits::minutes ? text : text + ':' + two(whole % 60);
}

/// "1:05" of so many minutes, at least 0.
inline std::string hoursText(long minutes) {
  return std::to_string(minutes / 60) + (minutes % 60 < 10 ? ":0" : ":") + std::to_string(minutes % 60);
}

}  // namespace fleetor
