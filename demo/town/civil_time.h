#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fleetor::demo {

// Seconds since the epoch, UTC.
using Instant = std::int64_t;

// A day of the machine's local calendar, counted from 1970-01-01.
using Day = std::int64_t;

// "yyyy-MM-dd", a day from 1970 to 9999.
std::optional<Day> parseDay(std::string_view text);
// "yyyy-MM-dd HH:mm:ss", local time.
std::optional<Instant> parseInstant(std::string_view text);

Day dayOf(Instant instant);
// The local midnight with which the day begins.
Instant beginningOf(Day day);
// 0 is Monday.
int weekdayOf(Day day);

std::string dayText(Day day);
// "yyyy-MM-dd HH:mm:ss", local time.
std::string stampText(Instant instant);
// "HH:mm:ss"; hours go on past 24.
std::string durationText(std::int64_t seconds);

}  // namespace fleetor::demo
