#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "day/day_points.h"
#include "model/vehicle_records.h"

namespace fleetor {

/// What an item of a day's trips and stops means. The values decide, never the service's words for the
/// status. Any thread.
struct DayStage {
  enum class Kind {
    unknown,
    driving,  ///< over a distance, of a kilometre at least for a round trip, or from one address to another
    parking   ///< no distance, and the same address at both ends
  };
  Kind kind = Kind::unknown;

  /// The time of its beginning as the service writes it, without the day; empty when it is not one of that
  /// day.
  std::string clock;

  // Since the midnight that begins the day, in seconds; none where a time is not understood or the end comes
  // first.
  std::optional<float> begin;
  std::optional<float> end;

  /// `day` is the day that was asked for, "yyyy-MM-dd".
  static DayStage fromItem(const RouteItem& item, std::string_view day);

  struct Range {
    std::ptrdiff_t first = 0;  ///< index of a point
    std::ptrdiff_t last = 0;   ///< greater than `first`
  };
  /// The points of the same day between its times. None when a time is not understood, and when no point lies
  /// within five minutes of the beginning and of the end, or of the end of the day where that comes first.
  std::optional<Range> pointsOf(const DayPoints& points) const;
};

}  // namespace fleetor
