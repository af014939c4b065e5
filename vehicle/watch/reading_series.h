#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fleetor {

/// The values of one reading over the time in which it was watched: the last 24 hours, at most 1,500 points.
/// Values that stay the same take two points. When there are too many points, they are thinned: of each 150
/// seconds the lowest and the highest value stay.
class ReadingSeries {
 public:
  static constexpr std::size_t most = 1500;
  static constexpr std::int32_t longest = 24 * 3600;  ///< seconds
  static constexpr std::int32_t gap = 60;             ///< seconds without a value: not watched meanwhile

  struct Point {
    std::int32_t seconds = 0;  ///< by the stopwatch
    float value = 0;           ///< NaN: nothing is known between the point before and the next one
  };

  /// Later than every value before. A new unit begins a new series; an empty one is not known.
  void add(std::int32_t seconds, float value, const std::string& unit);

  const std::vector<Point>& points() const { return points_; }  ///< oldest first
  const std::string& unit() const { return unit_; }             ///< as it stands behind the value

 private:
  void thin();

  std::vector<Point> points_;
  std::string unit_;
};

}  // namespace fleetor
