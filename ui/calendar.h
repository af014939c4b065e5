#pragma once

#include <chrono>
#include <string_view>

namespace fleetor {

/// A day of the calendar, without a time or a time zone.
using Day = std::chrono::year_month_day;

// The days that a Date can hold, whatever the time zone.
inline constexpr Day earliestDay = std::chrono::year(1678) / 1 / 1;
inline constexpr Day latestDay = std::chrono::year(2261) / 12 / 31;

/// Of a text "yyyy-MM-dd" as Clock::day writes it.
Day dayOf(std::string_view text);

/// So many days later, but never out of that range.
Day laterBy(Day day, std::chrono::days days);

/// The same day so many months later, or the last one of a shorter month; never out of that range.
Day laterBy(Day day, std::chrono::months months);

int daysInMonthOf(Day day);

/// How many places stay empty before the first day of that month, under a row of weekdays that begins with
/// `first`.
int placesBeforeMonthOf(Day day, std::chrono::weekday first);

}  // namespace fleetor
