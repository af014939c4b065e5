#include "demo/town/civil_time.h"

#include <chrono>
#include <cstdio>
#include <ctime>

namespace fleetor::demo {
namespace {

std::string formatted(const std::tm& parts, const char* format) {
  char text[64];
  return {text, std::strftime(text, sizeof text, format, &parts)};
}

// Nothing unless the text has exactly this form and names a moment that exists.
std::optional<std::tm> parsed(std::string_view view, const char* format) {
  const std::string text(view);
  std::tm parts{};
  const char* end = strptime(text.c_str(), format, &parts);
  parts.tm_isdst = -1;
  std::tm normal = parts;
  if (!end || *end != '\0' || parts.tm_year < 70 || std::mktime(&normal) == -1 ||
      formatted(parts, format) != text || normal.tm_mday != parts.tm_mday)
    return std::nullopt;
  return parts;
}

std::tm localParts(Instant instant) {
  const std::time_t time = instant;
  std::tm parts{};
  localtime_r(&time, &parts);
  return parts;
}

Day calendarDay(const std::tm& parts) {
  using namespace std::chrono;
  const sys_days day = year(parts.tm_year + 1900) / (parts.tm_mon + 1) / parts.tm_mday;
  return day.time_since_epoch().count();
}

}  // namespace

std::optional<Day> parseDay(std::string_view text) {
  const auto parts = parsed(text, "%Y-%m-%d");
  return parts ? std::optional(calendarDay(*parts)) : std::nullopt;
}

std::optional<Instant> parseInstant(std::string_view text) {
  auto parts = parsed(text, "%Y-%m-%d %H:%M:%S");
  return parts ? std::optional<Instant>(std::mktime(&*parts)) : std::nullopt;
}

Day dayOf(Instant instant) {
  return calendarDay(localParts(instant));
}

Instant beginningOf(Day day) {
  const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(day))};
  std::tm parts{};
  parts.tm_year = static_cast<int>(date.year()) - 1900;
  parts.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
  parts.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
  parts.tm_isdst = -1;
  return std::mktime(&parts);
}

int weekdayOf(Day day) {
  return static_cast<int>(((day + 3) % 7 + 7) % 7);
}

std::string dayText(Day day) {
  return formatted(localParts(beginningOf(day)), "%Y-%m-%d");
}

std::string stampText(Instant instant) {
  return formatted(localParts(instant), "%Y-%m-%d %H:%M:%S");
}

std::string durationText(std::int64_t seconds) {
  char text[64];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", static_cast<int>(seconds / 3600),
                static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
  return text;
}

}  // namespace fleetor::demo
