#include "map/track_gaps.h"

#include <algorithm>
#include <cmath>

namespace fleetor {

namespace {

constexpr double leastLength = 0.01;  // points of the level

/// The way between two neighbouring vertices.
class Way {
 public:
  Way(const TrackChunk& chunk, std::size_t vertex, const TrackPoints& points, double scale)
      : points_(points),
        scale_(scale),
        from_(chunk.vertices[vertex]),
        toX_(chunk.vertices[vertex + 1].x - from_.x),
        toY_(chunk.vertices[vertex + 1].y - from_.y),
        origin_(chunk.origin) {
    // A long segment is cut to a window, in whatever copy of the world that shows.
    const double middle = chunk.origin.x + (from_.x + toX_ / 2) / scale;
    const double whole = (points[chunk.points[vertex]].x + points[chunk.points[vertex + 1]].x) / 2;
    origin_.x -= std::round(middle - whole);
  }

  double length() const { return std::hypot(toX_, toY_); }

  /// How far along the way that point of the line lies, 0 to 1.
  double shareOf(std::uint32_t point) const {
    const double x = (points_[point].x - origin_.x) * scale_ - from_.x;
    const double y = (points_[point].y - origin_.y) * scale_ - from_.y;
    return std::clamp((x * toX_ + y * toY_) / (toX_ * toX_ + toY_ * toY_), 0.0, 1.0);
  }

  TrackVertex at(double share) const {
    return {from_.x + static_cast<float>(toX_ * share), from_.y + static_cast<float>(toY_ * share)};
  }

 private:
  const TrackPoints& points_;
  double scale_;
  TrackVertex from_;
  double toX_;
  double toY_;
  WorldPoint origin_;
};

}  // namespace

void appendWay(std::vector<TrackStep>& steps, const TrackChunk& chunk, std::size_t vertex,
               const TrackPoints& points, std::span<const std::uint32_t> gaps, int level) {
  const std::uint32_t first = chunk.points[vertex];
  const std::uint32_t last = chunk.points[vertex + 1];
  steps.push_back({chunk.vertices[vertex], first, false});
  auto gap = std::ranges::lower_bound(gaps, first);
  if (gap == gaps.end() || *gap >= last) return;
  const Way way(chunk, vertex, points, pointsPerWorldUnit(level));
  const double least = leastLength / way.length();
  double reached = 0;
  for (; gap != gaps.end() && *gap < last; ++gap) {
    const double begin = *gap == first ? 0 : std::max(way.shareOf(*gap), reached);
    const double end = *gap + 1 == last ? 1 : way.shareOf(*gap + 1);
    if (end - begin < least) continue;
    if (begin - reached < least)
      steps.back().gap = true;
    else
      steps.push_back({way.at(begin), *gap, true});
    if (1 - end < least) return;
    steps.push_back({way.at(end), *gap + 1, false});
    reached = end;
  }
}

std::vector<TrackStep> stepsOf(const TrackChunk& chunk, const TrackPoints& points,
                               std::span<const std::uint32_t> gaps, int level) {
  std::vector<TrackStep> steps;
  steps.reserve(chunk.vertices.size());
  for (std::size_t i = 0; i + 1 < chunk.vertices.size(); ++i)
    appendWay(steps, chunk, i, points, gaps, level);
  steps.push_back({chunk.vertices.back(), chunk.points.back(), false});
  return steps;
}

}  // namespace fleetor
