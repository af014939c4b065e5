#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "day/text_column.h"
#include "model/vehicle_records.h"
#include "platform/coordinate.h"
#include "service/envelopes.h"

namespace fleetor {

/// A point where the vehicle was parked.
struct DayStop {
  std::uint32_t index = 0;      ///< of the point
  std::string time;             ///< as the service writes it
  std::string duration;         ///< as the service writes it
  std::optional<float> parked;  ///< the duration in seconds, where it is understood
};

/// What is known of the time between a point and the next one.
struct DayStep {
  float stoodUntil = 0;  ///< the point's own time where the vehicle does not stand there
  bool isGap = false;    ///< nothing is known from then to the next point
};

/// The points of a day's track in columns, in the order of the answer. A column that has values has one for
/// each point. Holds no text of the answer itself.
struct DayPoints {
  std::string day;  ///< that was asked for, "yyyy-MM-dd"

  std::vector<Coordinate> coordinates;  ///< those of the line on the map

  /// Since the midnight that begins the day, in seconds. Empty when a time is not understood or belongs to
  /// another day, or when the times go backwards.
  std::vector<float> seconds;

  /// As the service writes them, whether understood or not. Those that are too long for a time are empty.
  TextColumn times;

  /// Driven since the first point. Empty when a distance is not understood, when they go backwards, or when
  /// they are far longer than the line.
  std::vector<float> kilometres;

  std::vector<std::uint32_t> addresses;   ///< index in addressTexts
  std::vector<std::string> addressTexts;  ///< each distinct one once
  std::vector<DayStop> stops;

  /// Indices in order: the points whose position is not understood. In `coordinates` they have what the line
  /// on the map has, often 0, 0: distances ignore them, and no file gets them.
  std::vector<std::uint32_t> unplaced;

  std::size_t size() const { return coordinates.size(); }
  bool isPlaced(std::size_t point) const { return !std::ranges::binary_search(unplaced, point); }

  static constexpr float longestGap = 10 * 60;  ///< seconds without a point, after which nothing is known

  /// From a point that is not the last, where the times are understood. A stop begins at its point and lasts
  /// as long as that reports; one that does not, or that lasts until the next point, stands over a gap only
  /// when that is as near as a parked receiver scatters.
  DayStep stepFrom(std::size_t point) const;

  /// In order: the points from which nothing is known up to the next one. None where the times are not
  /// understood.
  std::vector<std::uint32_t> gaps() const;

  /// `day` is "yyyy-MM-dd". Any thread. Takes some 60 ms for 86,400 points.
  static DayPoints fromAnswer(const MapResponse& answer, std::string_view day);
};

}  // namespace fleetor
