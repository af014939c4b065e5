#include "ui/calendar.h"

#include <algorithm>
#include <charconv>

namespace fleetor {

namespace {

Day bounded(Day day) {
  return std::clamp(day, earliestDay, latestDay);
}

Day lastOfMonth(Day day) {
  return day.year() / day.month() / std::chrono::last;
}

}  // namespace

Day dayOf(std::string_view text) {
  const auto number = [text](std::size_t at, std::size_t digits) {
    int value = 0;
    std::from_chars(text.data() + at, text.data() + at + digits, value);
    return value;
  };
  return std::chrono::year(number(0, 4)) / number(5, 2) / number(8, 2);
}

Day laterBy(Day day, std::chrono::days days) {
  return bounded(std::chrono::sys_days(day) + days);
}

Day laterBy(Day day, std::chrono::months months) {
  const Day later = day + months;
  return bounded(later.ok() ? later : lastOfMonth(later));
}

int daysInMonthOf(Day day) {
  return static_cast<int>(static_cast<unsigned>(lastOfMonth(day).day()));
}

int placesBeforeMonthOf(Day day, std::chrono::weekday first) {
  const std::chrono::sys_days begin = day.year() / day.month() / 1;
  return static_cast<int>((std::chrono::weekday(begin) - first).count());
}

}  // namespace fleetor
