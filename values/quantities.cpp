#include "values/quantities.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <span>
#include <system_error>

#include "values/cursor.h"

namespace fleetor {

namespace {

constexpr std::size_t digitsOfThousands = 3;

/// Digits, and what stands before them: '.', ',', ' ' for any blank; 0 before the first group.
struct DigitGroup {
  char separator = 0;
  std::string_view digits;
};

std::string_view takeAllDigits(Cursor& cursor) {
  const std::string_view text = cursor.rest();
  std::size_t count = 0;
  while (count < text.size() && Cursor::isDigit(text[count]))
    ++count;
  cursor.take(text.substr(0, count));
  return text.substr(0, count);
}

/// A separator with digits behind it, or nothing at all.
DigitGroup takeNextGroup(Cursor& cursor) {
  Cursor ahead = cursor;
  const auto take = [&](std::string_view separator) { return ahead.take(separator); };
  const char separator = take(".")                                   ? '.'
                         : take(",")                                 ? ','
                         : std::ranges::any_of(Cursor::blanks, take) ? ' '
                                                                     : '\0';
  if (separator == '\0') return {};
  const DigitGroup group{separator, takeAllDigits(ahead)};
  if (!group.digits.empty()) cursor = ahead;
  return group;
}

/// Whether thousands may be kept apart, as degrees never do.
enum class Thousands { possible, never };

/// Whether the last group is a fraction, as far as that is certain.
std::optional<bool> hasFraction(std::span<const DigitGroup> groups, Thousands thousands) {
  const DigitGroup& first = groups.front();
  const DigitGroup& last = groups.back();
  const bool repeated = std::ranges::count(groups, last.separator, &DigitGroup::separator) > 1;
  if (groups.size() == 1 || last.separator == ' ' || repeated) return false;
  const bool ambiguous = thousands == Thousands::possible && groups.size() == 2 &&
                         first.digits.size() <= digitsOfThousands && first.digits.front() != '0' &&
                         last.digits.size() == digitsOfThousands;
  return ambiguous ? std::nullopt : std::optional(true);
}

bool areThousands(std::span<const DigitGroup> groups) {
  const std::string_view first = groups.front().digits;
  return first.size() <= digitsOfThousands && first.front() != '0' &&
         std::ranges::all_of(groups.subspan(1), [&](const DigitGroup& group) {
           return group.separator == groups[1].separator && group.digits.size() == digitsOfThousands;
         });
}

std::optional<double> takeNumber(Cursor& cursor, Thousands thousands) {
  std::array<DigitGroup, Cursor::longestText> groups;
  std::size_t count = 0;
  const bool negative = cursor.take("-") || cursor.take("\u2212");
  if (!negative) cursor.take("+");
  for (DigitGroup group{0, takeAllDigits(cursor)}; !group.digits.empty(); group = takeNextGroup(cursor))
    groups[count++] = group;
  if (count == 0) return std::nullopt;

  const std::span written(groups.data(), count);
  const auto fraction = hasFraction(written, thousands);
  if (!fraction) return std::nullopt;
  const auto integer = written.first(count - (*fraction ? 1 : 0));
  if (integer.size() > 1 && (thousands == Thousands::never || !areThousands(integer))) return std::nullopt;

  std::array<char, Cursor::longestText> plain;  // without groups, and with a point
  char* end = plain.data();
  for (const DigitGroup& group : written) {
    if (*fraction && &group == &written.back()) *end++ = '.';
    end = std::ranges::copy(group.digits, end).out;
  }
  double value = 0;
  if (std::from_chars(plain.data(), end, value).ec != std::errc()) return std::nullopt;
  return negative ? -value : value;
}

std::optional<double> readDegrees(std::string_view text, double most) {
  Cursor cursor(text);
  const auto degrees = takeNumber(cursor, Thousands::never);
  return degrees && cursor.isAtEnd() && std::abs(*degrees) <= most ? degrees : std::nullopt;
}

}  // namespace

std::optional<double> readNumber(std::string_view text) {
  const auto quantity = readQuantity(text);
  return quantity && quantity->unit.empty() ? std::optional(quantity->value) : std::nullopt;
}

std::optional<Quantity> readQuantity(std::string_view text) {
  Cursor cursor(text);
  const auto value = takeNumber(cursor, Thousands::possible);
  cursor.skipBlanks();
  const std::string_view unit = cursor.rest();
  // A digit there belongs to a form that is not known here, as a sign or a separator at the beginning does.
  if (!value || std::ranges::any_of(unit, Cursor::isDigit) || unit.find_first_of(".,+-:") == 0)
    return std::nullopt;
  return Quantity{*value, unit};
}

std::optional<double> readKilometres(std::string_view text) {
  const auto quantity = readQuantity(text);
  if (!quantity) return std::nullopt;
  if (quantity->unit.empty() || quantity->unit == "km") return quantity->value;
  return quantity->unit == "m" ? std::optional(quantity->value / 1000) : std::nullopt;
}

std::optional<Coordinate> readCoordinate(std::string_view latitude, std::string_view longitude) {
  const auto north = readDegrees(latitude, 90), east = readDegrees(longitude, 180);
  if (!north || !east || (*north == 0 && *east == 0)) return std::nullopt;
  return Coordinate{*north, *east};
}

}  // namespace fleetor
