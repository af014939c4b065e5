#pragma once

#include <chrono>
#include <optional>
#include <string_view>

#include "service/envelopes.h"

namespace fleetor {

/// What a day's trips and stops add up to. Each value is there only when every row that it needs is
/// understood, and none when the service sent less than it claims to have, or rows of another day.
struct DayTotals {
  std::optional<double> kilometres;  ///< none when a trip begins before the day or ends after it
  std::optional<int> trips;
  std::optional<int> stops;
  std::optional<std::chrono::seconds> driving;  ///< within the day, as `standing`
  std::optional<std::chrono::seconds> standing;
  std::optional<std::chrono::seconds> firstStart;   ///< since midnight; none when a trip began before it
  std::optional<std::chrono::seconds> lastArrival;  ///< since midnight; none until a stop follows

  /// `day` is "yyyy-MM-dd". Any thread.
  static DayTotals fromAnswer(const RouteResponse& answer, std::string_view day);
};

}  // namespace fleetor
