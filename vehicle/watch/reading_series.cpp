#include "vehicle/watch/reading_series.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace fleetor {

void ReadingSeries::add(std::int32_t seconds, float value, const std::string& unit) {
  if (!unit.empty() && unit != unit_) {
    points_.clear();
    unit_ = unit;
  }
  if (!points_.empty() && seconds - points_.back().seconds > gap)
    points_.push_back({points_.back().seconds, std::numeric_limits<float>::quiet_NaN()});
  const std::size_t size = points_.size();
  if (size >= 2 && points_[size - 1].value == value && points_[size - 2].value == value)
    points_.back().seconds = seconds;
  else
    points_.push_back({seconds, value});
  if (points_.size() > most) thin();
  const auto first = std::ranges::find_if(
      points_, [seconds](const Point& point) { return seconds - point.seconds <= longest; });
  points_.erase(points_.begin(), first);
}

// Thinning again changes nothing: what is old does not get coarser.
void ReadingSeries::thin() {
  constexpr std::int32_t step = 150;  // seconds: two points for each, a day takes 1,152
  std::vector<Point> thinned;
  thinned.reserve(most);
  for (auto begin = points_.begin(); begin != points_.end();) {
    const auto end = std::find_if(begin, points_.end(), [begin](const Point& point) {
      return point.seconds / step != begin->seconds / step || std::isnan(point.value);
    });
    if (begin == end) {  // a gap
      thinned.push_back(*begin++);
      continue;
    }
    const auto byValue = [](const Point& a, const Point& b) { return a.value < b.value; };
    const auto [lowest, highest] = std::minmax_element(begin, end, byValue);
    thinned.push_back(*std::min(lowest, highest));
    if (lowest != highest) thinned.push_back(*std::max(lowest, highest));
    begin = end;
  }
  if (thinned.size() > most) thinned.erase(thinned.begin(), thinned.end() - most);
  points_ = std::move(thinned);
}

}  // namespace fleetor
