#include "ui/calendar.h"

#include <algorithm>

namespace fleetor {

namespace {

Day bounded(Day day) {
  return std::clamp(day, earliestDay, latestDay);
}

Day lastOfMonth(Day day) {
  return day.year() / day.month() / std::chrono::last;
}

}  // namespace

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
