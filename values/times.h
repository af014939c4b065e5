#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace fleetor {

// Days, times and durations as the service writes them. It names no time zone: its times are compared with
// each other only, never with the device's clock. A text that is not wholly understood, that can be read in
// two ways, or that is longer than 40 bytes is refused. Blanks around it are ignored. Any thread.

/// A day of the service's calendar, and a moment in it to the second.
using ServiceDay = std::chrono::local_days;
using ServiceTime = std::chrono::local_seconds;

/// "2026-11-20" or "2026/11/20". The day exists, from 2000 to 2999: databases write others for "none".
std::optional<ServiceDay> readDay(std::string_view text);

/// A day and a time: "2026-11-20 07:03:12", also with "T" between the two, also without seconds. "24:00" is
/// the end of the day. A text that names a time zone is refused.
std::optional<ServiceTime> readTime(std::string_view text);

/// The same, or a time alone, "07:03" or "07:03:12": one of that day.
std::optional<ServiceTime> readTime(std::string_view text, ServiceDay day);

/// "1:02:03" as hours, minutes and seconds, or "1 d 2 h 5 min 10 s", where each unit may be missing. At most
/// ten years. "12:34" is refused: it may be hours or minutes.
std::optional<std::chrono::seconds> readDuration(std::string_view text);

}  // namespace fleetor
