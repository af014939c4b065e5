#include "map/gestures.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace fleetor {

namespace {

constexpr double fingerSlop = 8;         // points that a finger may stray before it moves the map
constexpr double mouseSlop = 4;          // points
constexpr double longestTap = 0.35;      // seconds
constexpr double longestPause = 0.3;     // seconds between two taps
constexpr double doubleTapReach = 40;    // points
constexpr double velocitySpan = 0.1;     // seconds over which the speed of a finger is measured
constexpr double restBeforeLift = 0.05;  // seconds; a finger that rested so long throws nothing
constexpr double pinchCarry = 0.1;       // seconds for which a pinch goes on by itself
constexpr double slowestPinch = 0.5;     // levels a second; a slower one stops at once

constexpr double levelsPerNotch = 0.5;
constexpr double levelsPerPoint = 1.0 / 100;
constexpr double keyStep = 96;  // points

double distance(ScreenPoint a, ScreenPoint b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

}  // namespace

MapGestures::Sample MapGestures::measure(const std::vector<Finger>& fingers, double now) {
  Sample sample{now, {}, 0};
  const auto count = static_cast<double>(fingers.size());
  for (const Finger& finger : fingers) {
    sample.centre.x += finger.position.x / count;
    sample.centre.y += finger.position.y / count;
  }
  for (const Finger& finger : fingers)
    sample.spread += distance(finger.position, sample.centre) / count;
  return sample;
}

std::optional<ScreenPoint> MapGestures::update(const std::vector<Finger>& fingers, Pointer pointer,
                                               double now, MapCamera& camera) {
  const Sample sample = measure(fingers, now);
  if (std::ranges::equal(fingers, ids_, {}, &Finger::id)) {
    if (fingers.empty()) return std::nullopt;
    if (dragging_) {
      drag(sample, camera);
    } else if (leavesSlop(sample, pointer == Pointer::mouse ? mouseSlop : fingerSlop)) {
      dragging_ = moved_ = true;
      recent_ = {sample};
    }
    return std::nullopt;
  }
  if (ids_.empty()) begin(sample, camera);
  const bool more = fingers.size() > ids_.size();
  if (dragging_ && fingers.size() < ids_.size()) letGo(now, camera);
  ids_.clear();
  std::ranges::transform(fingers, std::back_inserter(ids_), &Finger::id);
  if (fingers.empty()) return end(now, camera);
  if (fingers.size() > 1) undecided_ = false;
  if (most_ < fingers.size() && !moved_) start_ = sample;
  most_ = std::max(most_, fingers.size());
  dragging_ = dragging_ && more;
  anchor_ = sample;
  recent_ = {sample};
  return std::nullopt;
}

void MapGestures::begin(const Sample& sample, MapCamera& camera) {
  most_ = 0;
  moved_ = false;
  undecided_ = sample.centre.x < edges_.left || sample.centre.x > camera.width() - edges_.right;
  held_ = camera.moving() && sample.time - lastZoom_ > 2 * longestPause;  // taps that zoom add up
  if (held_) camera.stop();
}

bool MapGestures::leavesSlop(const Sample& sample, double slop) {
  const double across = std::abs(sample.centre.x - anchor_.centre.x);
  const double down = std::abs(sample.centre.y - anchor_.centre.y);
  // Near an edge the map waits until it is clear that the finger does not go sideways.
  if (undecided_ && (down <= slop || down <= across)) return false;
  undecided_ = false;
  return std::hypot(across, down) > slop || std::abs(sample.spread - anchor_.spread) > slop;
}

void MapGestures::drag(const Sample& sample, MapCamera& camera) {
  const Sample& before = recent_.back();
  camera.panBy(sample.centre.x - before.centre.x, sample.centre.y - before.centre.y);
  if (before.spread > 0 && sample.spread > 0) camera.zoomBy(sample.spread / before.spread, sample.centre);
  recent_.push_back(sample);
  while (recent_.size() > 2 && sample.time - recent_.front().time > velocitySpan)
    recent_.pop_front();
}

void MapGestures::letGo(double now, MapCamera& camera) {
  const Sample& first = recent_.front();
  const Sample& last = recent_.back();
  const double time = last.time - first.time;
  if (time <= 0 || now - last.time > restBeforeLift) return;
  if (ids_.size() == 1) {
    camera.fling((last.centre.x - first.centre.x) / time, (last.centre.y - first.centre.y) / time);
  } else if (first.spread > 0 && last.spread > 0) {
    const double speed = std::log2(last.spread / first.spread) / time;
    if (std::abs(speed) > slowestPinch) camera.zoomSmoothlyBy(speed * pinchCarry, last.centre);
  }
}

std::optional<ScreenPoint> MapGestures::end(double now, MapCamera& camera) {
  dragging_ = false;
  const auto before = std::exchange(lastTap_, std::nullopt);
  if (moved_ || now - start_.time > longestTap || most_ > 2) return std::nullopt;
  const bool second = before && now - before->time < longestPause + longestTap &&
                      distance(before->centre, start_.centre) < doubleTapReach;
  if (most_ == 2 || second) {
    lastZoom_ = now;
    camera.zoomSmoothlyBy(most_ == 2 ? -1 : 1, start_.centre);
    return std::nullopt;
  }
  lastTap_ = Sample{now, start_.centre, 0};
  if (held_) return std::nullopt;
  return start_.centre;
}

void MapGestures::cancel() {
  if (ids_.empty()) return;  // called after the end of a gesture, too: its tap may be the first of two
  ids_.clear();
  dragging_ = false;
  lastTap_.reset();
}

void zoomByWheel(MapCamera& camera, double notches, ScreenPoint around) {
  camera.zoomSmoothlyBy(notches * levelsPerNotch, around);
}

void zoomByTouchpad(MapCamera& camera, double points, ScreenPoint around) {
  camera.zoomSmoothlyBy(points * levelsPerPoint, around);
}

void moveBySteps(MapCamera& camera, int east, int south) {
  const auto [centre, zoom] = camera.destination();
  const double step = keyStep / pointsPerWorldUnit(zoom);
  camera.setCentre({centre.x + east * step, centre.y + south * step}, true);
}

}  // namespace fleetor
