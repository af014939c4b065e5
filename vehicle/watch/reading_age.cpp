#include "vehicle/watch/reading_age.h"

#include <cmath>
#include <utility>

#include "platform/filled_text.h"
#include "ui/calendar.h"

namespace fleetor {

namespace {

constexpr Seconds lateAfter{30};
constexpr Seconds oldAfter{300};
constexpr Seconds fewSeconds{5};
constexpr Seconds aMinute{60};

std::string numbered(std::string text, long number) {
  return filled(std::move(text), "{}", std::to_string(number));
}

Seconds untilNext(Seconds step, Seconds age) {
  return step - Seconds(std::fmod(age.count(), step.count()));
}

}  // namespace

std::string durationText(Seconds time, const Device& device) {
  const long minutes = std::lround(std::floor(time / aMinute));
  const std::string rest = numbered(device.localizedString("{} min"), minutes % 60);
  return minutes < 60 ? rest : numbered(device.localizedString("{} h"), minutes / 60) + " " + rest;
}

std::string shortDay(Date moment, const Clock& clock, const Device& device) {
  return device.textOfDay(dayOf(clock.day(moment)), device.localizedString("d MMM"));
}

std::string offlineText(Date asOf, const Clock& clock, const Device& device) {
  const bool isToday = clock.day(asOf) == clock.day(clock.now());
  return filled(device.localizedString("Offline · as of {time}"), "{time}",
                (isToday ? "" : shortDay(asOf, clock, device) + ' ') + clock.timeOfDay(asOf));
}

ReadingAge readingAge(Seconds age, const Device& device) {
  ReadingAge known;
  known.freshness = age < lateAfter ? Freshness::fresh : age < oldAfter ? Freshness::late : Freshness::old;
  const char* const marks[] = {"AgeFresh", "AgeLate", "AgeOld"};
  known.mark = marks[static_cast<int>(known.freshness)];
  const long fives = std::lround(std::floor(age / fewSeconds));
  known.text = age < freshFor  ? device.localizedString("now")
               : age < aMinute ? numbered(device.localizedString("{} s"), 5 * fives)
                               : durationText(age, device);
  known.changesIn = age < freshFor ? freshFor - age : untilNext(age < aMinute ? fewSeconds : aMinute, age);
  return known;
}

}  // namespace fleetor
