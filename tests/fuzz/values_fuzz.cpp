// Texts of a service. What is read lies within its bounds, and stays the same when it is written down and
// read again. A text with something more at its end does not mean the same.

#include <cmath>
#include <cstdio>
#include <string>

#include "fuzzing.h"
#include "values/quantities.h"
#include "values/times.h"

namespace {

using namespace fleetor;
using namespace std::chrono;

constexpr ServiceDay today = ServiceDay(year(2026) / 11 / 20);

void checkTime(const std::string& text, const std::optional<ServiceTime>& time) {
  if (!time) return;
  const auto midnight = floor<days>(*time);
  const year_month_day date{midnight};
  char canonical[64];
  std::snprintf(canonical, sizeof canonical, "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(floor<hours>(*time - midnight).count()),
                static_cast<int>(floor<minutes>(*time - midnight).count() % 60),
                static_cast<int>((*time - midnight).count() % 60));
  require(date.year() >= year(2000) && date.year() <= year(3000), "a year is one of ours", text);
  if (date.year() < year(3000)) require(readTime(canonical) == time, "a time is read back", canonical);
  require(!readTime(text + "x", today), "nothing may follow a time", text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  checkTime(text, readTime(text));
  checkTime(text, readTime(text, today));
  if (const auto duration = readDuration(text)) {
    require(*duration >= 0s && *duration <= days(3653), "a duration has bounds", text);
    require(readDuration(std::to_string(duration->count()) + " s") == duration || *duration >= 10000000s,
            "a duration is read back", text);
  }
  if (const auto number = readNumber(text)) {
    char canonical[400];
    std::snprintf(canonical, sizeof canonical, "%.0f", *number);
    require(std::isfinite(*number), "a number is finite", text);
    if (std::abs(*number) < 1e15)
      require(readNumber(canonical) == std::round(*number) || std::fmod(std::abs(*number), 1) == 0.5,
              "a number is read back", canonical);
    require(!readKilometres(text + "x"), "an unknown unit is refused", text);
  }
  const std::size_t half = size / 2;
  if (const auto at = readCoordinate(text.substr(0, half), text.substr(half)))
    require(std::abs(at->latitude) <= 90 && std::abs(at->longitude) <= 180, "a coordinate is on the earth",
            text);
  return 0;
}
