#pragma once

#include <string>

#include "platform/clock.h"
#include "platform/device.h"
#include "platform/queues.h"

namespace fleetor {

/// A little more than a poll: while these come, nothing is redrawn.
inline constexpr Seconds freshFor{20};

/// Late after 30 seconds, old after 5 minutes.
enum class Freshness { fresh, late, old };

/// How old a record is, in the user's language. The text changes every 5 seconds in the first minute, from
/// `freshFor` on, and every minute from then on.
struct ReadingAge {
  Freshness freshness = Freshness::fresh;
  std::string text;       ///< "now", "20 s", "2 min", "1 h 5 min"
  const char* mark = "";  ///< its image, in the colour of the freshness
  Seconds changesIn{};    ///< when the text does
};

ReadingAge readingAge(Seconds age, const Device& device);

/// The day of that moment on this device: "20 Nov".
std::string shortDay(Date moment, const Clock& clock, const Device& device);

/// Of what is known from before: "Offline · as of 14:03", with the day before the time when that is not
/// today.
std::string offlineText(Date asOf, const Clock& clock, const Device& device);

/// Whole minutes: "12 min", "1 h 5 min".
std::string durationText(Seconds time, const Device& device);

}  // namespace fleetor
