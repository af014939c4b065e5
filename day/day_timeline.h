#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "day/day_points.h"
#include "day/day_stage.h"

namespace fleetor {

/// A part of a day. Times are seconds since its midnight.
struct DayStretch {
  float begin = 0;
  float end = 0;
  DayStage::Kind kind = DayStage::Kind::unknown;
  std::uint32_t first = 0;  ///< the point or row with which it begins
  std::uint32_t last = 0;   ///< the one with which it ends

  friend bool operator==(const DayStretch&, const DayStretch&) = default;
};

/// The 24 hours of a day as stretches, each beginning where the one before it ends. Empty when the times are
/// not understood or contradict each other. Any thread.
struct DayTimeline {
  static constexpr float length = 24 * 3600;  ///< seconds

  std::vector<DayStretch> stretches;
  float knownUntil = 0;  ///< the end of the last stretch about which something is known

  bool isEmpty() const { return stretches.empty(); }

  /// A drive lasts from point to point, a stop as long as its point says.
  static DayTimeline fromPoints(const DayPoints& points);

  /// One stretch for each row whose times are understood. `day` is "yyyy-MM-dd".
  static DayTimeline fromRows(std::span<const RouteItem> rows, std::string_view day);

 private:
  void add(DayStretch stretch);
  void finish();
};

}  // namespace fleetor
