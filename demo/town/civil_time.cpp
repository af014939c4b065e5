#include "demo/town/civil_time.h"

#include <chrono>
#include <cstdio>
#include <ctime>

namespace fleetor::demo {
namespace {

std::optional<int> digits(std::string_view text, std::size_t at, std::size_t count) {
  int value = 0;
  for (std::size_t i = at; i < at + count; ++i) {
    if (i >= text.size() || text[i] < '0' || text[i] > '9') return std::nullopt;
    value = value * 10 + (text[i] - '0');
  }
  return value;
}

std::chrono::year_month_day civil(Day day) {
  return std::chrono::sys_days(std::chrono::days(day));
}

Instant localInstant(Day day, int hour, int minute, int second) {
  const auto date = civil(day);
  std::tm parts{};
  parts.tm_year = static_cast<int>(date.year()) - 1900;
  parts.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
  parts.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
  parts.tm_hour = hour;
  parts.tm_min = minute;
  parts.tm_sec = second;
  parts.tm_isdst = -1;
  return std::mktime(&parts);
}

std::tm localParts(Instant instant) {
  const std::time_t time = instant;
  std::tm parts{};
  localtime_r(&time, &parts);
  return parts;
}

}  // namespace

std::optional<Day> parseDay(std::string_view text) {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
  const auto year = digits(text, 0, 4);
  const auto month = digits(text, 5, 2);
  const auto dayOfMonth = digits(text, 8, 2);
  if (!year || !month || !dayOfMonth || *year < 1970) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(*year),
                                         std::chrono::month(static_cast<unsigned>(*month)),
                                         std::chrono::day(static_cast<unsigned>(*dayOfMonth))};
  if (!date.ok()) return std::nullopt;
  return std::chrono::sys_days(date).time_since_epoch().count();
}

std::optional<Instant> parseInstant(std::string_view text) {
  const auto day = parseDay(text.substr(0, 10));
  if (!day) return std::nullopt;
  if (text.size() == 10) return beginningOf(*day);
  if (text.size() != 19 || (text[10] != ' ' && text[10] != 'T') || text[13] != ':' || text[16] != ':')
    return std::nullopt;
  const auto hour = digits(text, 11, 2);
  const auto minute = digits(text, 14, 2);
  const auto second = digits(text, 17, 2);
  if (!hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
  return localInstant(*day, *hour, *minute, *second);
}

Day dayOf(Instant instant) {
  const std::tm parts = localParts(instant);
  const std::chrono::year_month_day date{std::chrono::year(parts.tm_year + 1900),
                                         std::chrono::month(static_cast<unsigned>(parts.tm_mon + 1)),
                                         std::chrono::day(static_cast<unsigned>(parts.tm_mday))};
  return std::chrono::sys_days(date).time_since_epoch().count();
}

Instant beginningOf(Day day) {
  return localInstant(day, 0, 0, 0);
}

int weekdayOf(Day day) {
  return static_cast<int>(((day + 3) % 7 + 7) % 7);
}

std::string dayText(Day day) {
  const auto date = civil(day);
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
  return text;
}

std::string stampText(Instant instant) {
  const std::tm parts = localParts(instant);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", parts.tm_year + 1900, parts.tm_mon + 1,
                parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec);
  return text;
}

std::string durationText(std::int64_t seconds) {
  char text[64];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", static_cast<int>(seconds / 3600),
                static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
  return text;
}

}  // namespace fleetor::demo
