#include "qt/device/system_clock.h"

#include <ctime>

namespace fleetor {

Date SystemClock::now() const {
  return std::chrono::system_clock::now();
}

std::string SystemClock::day(Date moment) const {
  const std::time_t seconds =
      std::chrono::system_clock::to_time_t(std::chrono::floor<std::chrono::seconds>(moment));
  ::tzset();  // a traveller's time zone changes while the client runs
  std::tm local{};
  ::localtime_r(&seconds, &local);
  char text[32];
  return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%d", &local));
}

}  // namespace fleetor
