#include "map/track_level.h"

#include <algorithm>
#include <cmath>

namespace fleetor {

namespace {

// What is left out lies within 1.4 points beside its segment and 0.5 beyond its end: within 1.49 of it.
constexpr double sleeveRadius = 1.4;
constexpr double overshoot = 0.5;

constexpr std::size_t verticesOfChunk = 512;
constexpr double reachInPoints = 65536;

/// Points from the anchor to the point.
WorldPoint offsetInPoints(WorldPoint from, WorldPoint to, double scale) {
  return {(to.x - from.x) * scale, (to.y - from.y) * scale};
}

/// Above 0 where b lies clockwise of a, y pointing down.
double cross(WorldPoint a, WorldPoint b) {
  return a.x * b.y - a.y * b.x;
}

double squaredLength(WorldPoint offset) {
  return offset.x * offset.x + offset.y * offset.y;
}

/// The copies of the world, in worlds to the east, in which something that reaches from left to right shows
/// in `view`.
std::pair<int, int> copiesIn(const WorldRect& view, double left, double right) {
  return {static_cast<int>(std::ceil(view.left - right)), static_cast<int>(std::floor(view.right - left))};
}

/// Liang and Barsky's: what of a segment lies in the window.
std::optional<TrackCutter::Segment> clipped(const TrackCutter::Segment& segment, const WorldRect& window) {
  const auto& [from, to, first, last] = segment;
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  double enters = 0;
  double leaves = 1;
  const auto against = [&](double direction, double room) {
    if (direction < 0)
      enters = std::max(enters, room / direction);
    else if (direction > 0)
      leaves = std::min(leaves, room / direction);
    else if (room < 0)
      leaves = -1;
  };
  against(-dx, from.x - window.left);
  against(dx, window.right - from.x);
  against(-dy, from.y - window.top);
  against(dy, window.bottom - from.y);
  if (enters >= leaves) return std::nullopt;
  return TrackCutter::Segment{{from.x + dx * enters, from.y + dy * enters},
                              {from.x + dx * leaves, from.y + dy * leaves},
                              first,
                              last};
}

}  // namespace

TrackCutter::TrackCutter(int level)
    : TrackCutter(pointsPerWorldUnit(level), std::min(reachInPoints / pointsPerWorldUnit(level), 1.0)) {}

TrackCutter TrackCutter::continued() const {
  TrackCutter next(scale_, reach_);
  next.last_ = last_;
  next.lastPoint_ = lastPoint_;
  next.stretch_ = stretch_;
  return next;
}

void TrackCutter::keep(WorldPoint vertex, std::size_t index) {
  const auto point = static_cast<std::uint32_t>(index);
  const auto isFar = [&](WorldPoint from) {
    return std::abs(vertex.x - from.x) > reach_ || std::abs(vertex.y - from.y) > reach_;
  };
  if (!last_) {
    start(vertex, point);
  } else if (isFar(*last_)) {
    close();
    longSegments_.push_back({*last_, vertex, lastPoint_, point});
    start(vertex, point);
  } else {
    if (isFar(stretch_.origin)) {
      close();
      start(*last_, lastPoint_);
    }
    add(vertex, point);
    if (stretch_.vertices.size() == verticesOfChunk) {
      close();
      start(vertex, point);
    }
  }
  last_ = vertex;
  lastPoint_ = point;
}

void TrackCutter::close() {
  if (stretch_.vertices.size() > 1) chunks_.push_back(std::make_shared<const TrackChunk>(stretch_));
}

void TrackCutter::start(WorldPoint vertex, std::uint32_t point) {
  stretch_.origin = vertex;
  stretch_.bounds = {vertex.x, vertex.y, vertex.x, vertex.y};
  stretch_.vertices.assign(1, {0, 0});
  stretch_.points.assign(1, point);
}

void TrackCutter::add(WorldPoint vertex, std::uint32_t point) {
  const WorldPoint offset = offsetInPoints(stretch_.origin, vertex, scale_);
  const TrackVertex rounded{static_cast<float>(offset.x), static_cast<float>(offset.y)};
  if (rounded == stretch_.vertices.back()) return;
  stretch_.vertices.push_back(rounded);
  stretch_.points.push_back(point);
  WorldRect& bounds = stretch_.bounds;
  bounds = {std::min(bounds.left, vertex.x), std::min(bounds.top, vertex.y), std::max(bounds.right, vertex.x),
            std::max(bounds.bottom, vertex.y)};
}

TrackLevel::TrackLevel(int level)
    : level_(level), scale_(pointsPerWorldUnit(level)), done_(level), tail_(level) {}

inline bool TrackLevel::Sleeve::reaches(WorldPoint point) const {
  const WorldPoint offset = offsetInPoints(anchor_, point, scale_);
  return !isBounded_ ||
         (squaredLength(offset) >= leastSquared_ && cross(left_, offset) > 0 && cross(offset, right_) > 0);
}

inline void TrackLevel::Sleeve::take(WorldPoint point) {
  latest_ = point;
  const WorldPoint offset = offsetInPoints(anchor_, point, scale_);
  const double squared = squaredLength(offset);
  if (squared <= sleeveRadius * sleeveRadius) {
    return;  // what is near the anchor itself is near every line from it
  }
  // The two tangents from the anchor to the circle around the point.
  const double along = std::sqrt(squared - sleeveRadius * sleeveRadius);
  const double aside = sleeveRadius;
  const WorldPoint left{offset.x * along + offset.y * aside, offset.y * along - offset.x * aside};
  const WorldPoint right{offset.x * along - offset.y * aside, offset.y * along + offset.x * aside};
  if (!isBounded_ || cross(left_, left) > 0) left_ = left;
  if (!isBounded_ || cross(right, right_) > 0) right_ = right;
  isBounded_ = true;
  const double least = std::sqrt(squared) - overshoot;
  leastSquared_ = std::max(leastSquared_, least * least);
}

void TrackLevel::catchUp(const TrackPoints& points) {
  if (taken_ >= points.size()) return;
  if (taken_ == 0) {
    done_.keep(points[0], 0);
    sleeve_ = Sleeve(points[0], scale_);
  }
  Sleeve sleeve = sleeve_;  // with its operations inlined, a copy stays in registers: three times as fast
  for (; taken_ < points.size(); ++taken_) {
    const WorldPoint point = points[taken_];
    if (!sleeve.reaches(point)) {
      done_.keep(sleeve.latest(), taken_ - 1);
      sleeve = Sleeve(sleeve.latest(), scale_);
    }
    sleeve.take(point);
  }
  sleeve_ = sleeve;
  tail_ = done_.continued();
  tail_.keep(sleeve_.latest(), taken_ - 1);
  tail_.close();
  window_.reset();
}

std::vector<TrackPiece> TrackLevel::pieces(const WorldRect& view) {
  std::vector<TrackPiece> found;
  for (const TrackCutter* part : {&done_, &tail_}) {
    for (const auto& chunk : part->chunks()) {
      const WorldRect& bounds = chunk->bounds;
      if (bounds.bottom < view.top || bounds.top > view.bottom) continue;
      const auto [first, last] = copiesIn(view, bounds.left, bounds.right);
      for (int copy = first; copy <= last; ++copy)
        found.push_back({chunk, static_cast<double>(copy)});
    }
  }
  const bool windowHolds = window_ && window_->left <= view.left && window_->right >= view.right &&
                           window_->top <= view.top && window_->bottom >= view.bottom &&
                           window_->width() <= 4 * view.width();
  if (!windowHolds)
    cutLongSegments({view.left - view.width(), view.top - view.height(), view.right + view.width(),
                     view.bottom + view.height()});
  found.insert(found.end(), longPieces_.begin(), longPieces_.end());
  return found;
}

void TrackLevel::cutLongSegments(const WorldRect& window) {
  window_ = window;
  longPieces_.clear();
  for (const TrackCutter* part : {&done_, &tail_}) {
    for (const auto& [from, to, before, after] : part->longSegments()) {
      const auto [first, last] = copiesIn(window, std::min(from.x, to.x), std::max(from.x, to.x));
      for (int copy = first; copy <= last; ++copy) {
        const auto inWindow = clipped({{from.x + copy, from.y}, {to.x + copy, to.y}, before, after}, window);
        if (!inWindow) continue;
        const WorldPoint start = inWindow->from;
        const WorldPoint end = inWindow->to;
        const WorldPoint offset = offsetInPoints(start, end, scale_);
        const TrackVertex vertex{static_cast<float>(offset.x), static_cast<float>(offset.y)};
        if (vertex != TrackVertex{}) {
          const WorldRect bounds{std::min(start.x, end.x), std::min(start.y, end.y), std::max(start.x, end.x),
                                 std::max(start.y, end.y)};
          longPieces_.push_back({std::make_shared<const TrackChunk>(
                                     TrackChunk{start, bounds, {TrackVertex{}, vertex}, {before, after}}),
                                 0});
        }
      }
    }
  }
}

}  // namespace fleetor
