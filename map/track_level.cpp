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

/// The copies of the world, in worlds to the east, in which something that reaches from left to right shows
/// in `view`.
std::pair<int, int> copiesIn(const WorldRect& view, double left, double right) {
  return {static_cast<int>(std::ceil(view.left - right)), static_cast<int>(std::floor(view.right - left))};
}

/// Liang and Barsky's: what of a segment lies in the window.
std::optional<TrackCutter::Segment> clipped(const TrackCutter::Segment& segment, const WorldRect& window) {
  const auto [from, to] = segment;
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  double enters = 0;
  double leaves = 1;
  const auto against = [&](double direction, double room) {
    if (direction < 0) {
      enters = std::max(enters, room / direction);
    } else if (direction > 0) {
      leaves = std::min(leaves, room / direction);
    } else if (room < 0) {
      leaves = -1;
    }
  };
  against(-dx, from.x - window.left);
  against(dx, window.right - from.x);
  against(-dy, from.y - window.top);
  against(dy, window.bottom - from.y);
  if (enters >= leaves) {
    return std::nullopt;
  }
  return TrackCutter::Segment{{from.x + dx * enters, from.y + dy * enters},
                              {from.x + dx * leaves, from.y + dy * leaves}};
}

}  // namespace

TrackCutter::TrackCutter(int level)
    : TrackCutter(pointsPerWorldUnit(level), std::min(reachInPoints / pointsPerWorldUnit(level), 1.0)) {}

TrackCutter TrackCutter::continued() const {
  TrackCutter next(scale_, reach_);
  next.last_ = last_;
  next.stretch_ = stretch_;
  return next;
}

void TrackCutter::keep(WorldPoint vertex) {
  const auto isFar = [&](WorldPoint from) {
    return std::abs(vertex.x - from.x) > reach_ || std::abs(vertex.y - from.y) > reach_;
  };
  if (!last_) {
    start(vertex);
  } else if (isFar(*last_)) {
    close();
    longSegments_.push_back({*last_, vertex});
    start(vertex);
  } else {
    if (isFar(stretch_.origin)) {
      close();
      start(*last_);
    }
    add(vertex);
    if (stretch_.vertices.size() == verticesOfChunk) {
      close();
      start(vertex);
    }
  }
  last_ = vertex;
}

void TrackCutter::close() {
  if (stretch_.vertices.size() > 1) {
    chunks_.push_back(std::make_shared<const TrackChunk>(stretch_));
  }
}

void TrackCutter::start(WorldPoint vertex) {
  stretch_.origin = vertex;
  stretch_.bounds = {vertex.x, vertex.y, vertex.x, vertex.y};
  stretch_.vertices.assign(1, {0, 0});
}

void TrackCutter::add(WorldPoint vertex) {
  const WorldPoint offset = offsetInPoints(stretch_.origin, vertex, scale_);
  const TrackVertex rounded{static_cast<float>(offset.x), static_cast<float>(offset.y)};
  if (rounded == stretch_.vertices.back()) {
    return;
  }
  stretch_.vertices.push_back(rounded);
  WorldRect& bounds = stretch_.bounds;
  bounds = {std::min(bounds.left, vertex.x), std::min(bounds.top, vertex.y), std::max(bounds.right, vertex.x),
            std::max(bounds.bottom, vertex.y)};
}

TrackLevel::TrackLevel(int level)
    : level_(level), scale_(pointsPerWorldUnit(level)), done_(level), tail_(level) {}

void TrackLevel::catchUp(const TrackPoints& points) {
  if (taken_ >= points.size()) {
    return;
  }
  for (; taken_ < points.size(); ++taken_) {
    take(points[taken_]);
  }
  tail_ = done_.continued();
  tail_.keep(latest_);
  tail_.close();
  window_.reset();
}

void TrackLevel::take(WorldPoint point) {
  if (taken_ == 0) {
    done_.keep(point);
    anchor_ = latest_ = point;
    return;
  }
  WorldPoint offset = offsetInPoints(anchor_, point, scale_);
  double distance = std::hypot(offset.x, offset.y);
  if (!passes(offset, distance)) {
    done_.keep(latest_);
    anchor_ = latest_;
    furthest_ = 0;
    sleeve_.reset();
    offset = offsetInPoints(anchor_, point, scale_);
    distance = std::hypot(offset.x, offset.y);
  }
  narrow(offset, distance);
  furthest_ = std::max(furthest_, distance);
  latest_ = point;
}

bool TrackLevel::passes(WorldPoint offset, double distance) const {
  if (!sleeve_) {
    return true;  // all points so far are near the anchor itself
  }
  return distance >= furthest_ - overshoot && cross(sleeve_->left, offset) > 0 &&
         cross(offset, sleeve_->right) > 0;
}

void TrackLevel::narrow(WorldPoint offset, double distance) {
  if (distance <= sleeveRadius) {
    return;
  }
  // The two tangents from the anchor to the circle around the point.
  const double along = std::sqrt(distance * distance - sleeveRadius * sleeveRadius);
  const double aside = sleeveRadius;
  const WorldPoint left{offset.x * along + offset.y * aside, offset.y * along - offset.x * aside};
  const WorldPoint right{offset.x * along - offset.y * aside, offset.y * along + offset.x * aside};
  if (!sleeve_) {
    sleeve_ = Sleeve{left, right};
    return;
  }
  if (cross(sleeve_->left, left) > 0) {
    sleeve_->left = left;
  }
  if (cross(right, sleeve_->right) > 0) {
    sleeve_->right = right;
  }
}

std::vector<TrackPiece> TrackLevel::pieces(const WorldRect& view) {
  std::vector<TrackPiece> found;
  for (const TrackCutter* part : {&done_, &tail_}) {
    for (const auto& chunk : part->chunks()) {
      const WorldRect& bounds = chunk->bounds;
      if (bounds.bottom < view.top || bounds.top > view.bottom) {
        continue;
      }
      const auto [first, last] = copiesIn(view, bounds.left, bounds.right);
      for (int copy = first; copy <= last; ++copy) {
        found.push_back({chunk, static_cast<double>(copy)});
      }
    }
  }
  const bool windowHolds = window_ && window_->left <= view.left && window_->right >= view.right &&
                           window_->top <= view.top && window_->bottom >= view.bottom &&
                           window_->width() <= 4 * view.width();
  if (!windowHolds) {
    cutLongSegments({view.left - view.width(), view.top - view.height(), view.right + view.width(),
                     view.bottom + view.height()});
  }
  found.insert(found.end(), longPieces_.begin(), longPieces_.end());
  return found;
}

void TrackLevel::cutLongSegments(const WorldRect& window) {
  window_ = window;
  longPieces_.clear();
  for (const TrackCutter* part : {&done_, &tail_}) {
    for (const auto& [from, to] : part->longSegments()) {
      const auto [first, last] = copiesIn(window, std::min(from.x, to.x), std::max(from.x, to.x));
      for (int copy = first; copy <= last; ++copy) {
        const auto inWindow = clipped({{from.x + copy, from.y}, {to.x + copy, to.y}}, window);
        if (!inWindow) {
          continue;
        }
        const auto [start, end] = *inWindow;
        const WorldPoint offset = offsetInPoints(start, end, scale_);
        const TrackVertex vertex{static_cast<float>(offset.x), static_cast<float>(offset.y)};
        if (vertex != TrackVertex{}) {
          const WorldRect bounds{std::min(start.x, end.x), std::min(start.y, end.y), std::max(start.x, end.x),
                                 std::max(start.y, end.y)};
          longPieces_.push_back(
              {std::make_shared<const TrackChunk>(TrackChunk{start, bounds, {TrackVertex{}, vertex}}), 0});
        }
      }
    }
  }
}

}  // namespace fleetor
