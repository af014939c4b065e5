#include "map/track_line.h"

#include <algorithm>
#include <cmath>

#include "map/track_level.h"

namespace fleetor {

namespace {

constexpr std::size_t levelsKept =
    3;  // the one in view, and the one on either side while a finger pinches to and fro

}  // namespace

TrackLine::TrackLine() = default;
TrackLine::TrackLine(TrackLine&&) noexcept = default;
TrackLine& TrackLine::operator=(TrackLine&&) noexcept = default;
TrackLine::~TrackLine() = default;

TrackLine::TrackLine(std::span<const Coordinate> coordinates) {
  for (const Coordinate& coordinate : coordinates)
    append(coordinate);
}

void TrackLine::append(Coordinate coordinate) {
  WorldPoint point = project(coordinate);
  if (points_.size_ > 0) point.x += std::round(points_[points_.size_ - 1].x - point.x);
  if (points_.size_ % TrackPoints::blockSize == 0)
    points_.blocks_.push_back(std::make_shared<TrackPoints::Block>());
  (*points_.blocks_.back())[points_.size_ % TrackPoints::blockSize] = point;
  ++points_.size_;
}

int TrackLine::levelFor(double zoom) {
  return static_cast<int>(std::ceil(std::clamp(zoom, 1.0, 20.0)));
}

std::optional<int> TrackLine::nearestLevel(int level) const {
  const auto nearest = std::ranges::min_element(
      levels_, {}, [level](const auto& made) { return std::abs(made->level() - level); });
  return nearest == levels_.end() ? std::nullopt : std::optional((*nearest)->level());
}

std::shared_ptr<TrackLevel> TrackLine::makeLevel(const TrackPoints& points, int level) {
  auto made = std::make_shared<TrackLevel>(level);
  made->catchUp(points);
  return made;
}

void TrackLine::adopt(std::shared_ptr<TrackLevel> level) {
  std::erase_if(levels_, [&](const auto& made) { return made->level() == level->level(); });
  levels_.insert(levels_.begin(), std::move(level));
  levels_.resize(std::min(levels_.size(), levelsKept));
}

std::vector<TrackPiece> TrackLine::pieces(const WorldRect& view, int level) {
  const auto made = std::ranges::find(levels_, level, [](const auto& kept) { return kept->level(); });
  if (made == levels_.end())
    adopt(makeLevel(points_, level));
  else
    std::rotate(levels_.begin(), made, made + 1);
  levels_.front()->catchUp(points_);
  return levels_.front()->pieces(view);
}

}  // namespace fleetor
