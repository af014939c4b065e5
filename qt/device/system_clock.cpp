#include "qt/device/system_clock.h"

#include <ctime>

namespace fleetor {

Date SystemClock::now() const {
  return std::chrono::system_clock::now();
}

std::chrono::duration<double> SystemClock::uptime() const {
#ifdef CLOCK_BOOTTIME  // the steady clock of Linux stops while the machine sleeps
  std::timespec time{};
  if (::clock_gettime(CLOCK_BOOTTIME, &time) == 0)
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
#endif
  return std::chrono::steady_clock::now().time_since_epoch();
}

namespace {

std::string written(Date moment, const char* format) {
  const std::time_t seconds =
      std::chrono::system_clock::to_time_t(std::chrono::floor<std::chrono::seconds>(moment));
  ::tzset();  // a traveller's time zone changes while the client runs
  std::tm local{};
  ::localtime_r(&seconds, &local);
  char text[32];
  return std::string(text, std::strftime(text, sizeof text, format, &local));
}

}  // namespace

std::string SystemClock::day(Date moment) const {
  return written(moment, "%Y-%m-%d");
}

std::string SystemClock::timeOfDay(Date moment) const {
  return written(moment, "%H:%M");
}

}  // namespace fleetor
