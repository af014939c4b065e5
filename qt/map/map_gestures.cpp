#include "qt/map/map_gestures.h"

#include <algorithm>
#include <cmath>

namespace fleetor {

namespace {

constexpr double longestTap = 0.35;   // seconds
constexpr double longestPause = 0.3;  // between two taps
constexpr double doubleTapReach = 40;
constexpr double velocitySpan = 0.1;     // over which the speed of a finger is measured
constexpr double restBeforeLift = 0.05;  // a finger that rested so long throws nothing
constexpr double pinchCarry = 0.1;       // seconds for which a pinch goes on by itself

double lengthOf(QPointF vector) {
  return std::hypot(vector.x(), vector.y());
}

bool sameIds(const std::vector<MapGestures::Finger>& a, const std::vector<MapGestures::Finger>& b) {
  return std::ranges::equal(a, b, {}, &MapGestures::Finger::id, &MapGestures::Finger::id);
}

}  // namespace

MapGestures::Sample MapGestures::measure(const std::vector<Finger>& fingers, double now) {
  Sample sample{now, {}, 0};
  if (fingers.empty()) return sample;
  const auto count = static_cast<double>(fingers.size());
  for (const Finger& finger : fingers)
    sample.center += finger.position / count;
  for (const Finger& finger : fingers)
    sample.spread += lengthOf(finger.position - sample.center) / count;
  return sample;
}

QPointF MapGestures::travelled() const {
  return measure(fingers_, 0).center - start_.center;
}

void MapGestures::begin(double now, MapCamera& camera) {
  most_ = 0;
  moved_ = false;
  held_ = camera.moving() && now - lastZoom_ > 2 * longestPause;  // taps that zoom add up
  if (held_) camera.stop();
}

std::optional<MapGestures::Tap> MapGestures::update(const std::vector<Finger>& fingers, double slop,
                                                    double now, MapCamera& camera) {
  const Sample sample = measure(fingers, now);
  if (!sameIds(fingers, fingers_)) {
    if (fingers_.empty()) begin(now, camera);
    if (dragging_ && fingers.size() < fingers_.size()) letGo(now, camera);
    const bool more = fingers.size() > fingers_.size();
    fingers_ = fingers;
    if (fingers.empty()) return end(now);
    if (most_ < fingers.size() && !moved_) start_ = sample;
    most_ = std::max(most_, fingers.size());
    dragging_ = dragging_ && more;
    anchor_ = sample;
    recent_ = {sample};
    return std::nullopt;
  }
  fingers_ = fingers;
  if (fingers.empty()) return std::nullopt;
  if (!dragging_) {
    dragging_ =
        lengthOf(sample.center - anchor_.center) > slop || std::abs(sample.spread - anchor_.spread) > slop;
    if (!dragging_) return std::nullopt;
    moved_ = true;
    recent_ = {sample};
    return std::nullopt;
  }
  const Sample& before = recent_.back();
  const QPointF step = sample.center - before.center;
  camera.panBy(step.x(), step.y());
  if (fingers.size() > 1 && before.spread > 0 && sample.spread > 0)
    camera.zoomBy(sample.spread / before.spread, {sample.center.x(), sample.center.y()});
  recent_.push_back(sample);
  while (recent_.size() > 2 && now - recent_.front().time > velocitySpan)
    recent_.pop_front();
  return std::nullopt;
}

void MapGestures::letGo(double now, MapCamera& camera) {
  const Sample& first = recent_.front();
  const Sample& last = recent_.back();
  const double time = last.time - first.time;
  if (time <= 0 || now - last.time > restBeforeLift) return;
  if (fingers_.size() > 1) {
    const double speed =
        first.spread > 0 && last.spread > 0 ? std::log2(last.spread / first.spread) / time : 0;
    if (std::abs(speed) > 0.5) camera.zoomSmoothlyBy(speed * pinchCarry, {last.center.x(), last.center.y()});
  } else {
    const QPointF velocity = (last.center - first.center) / time;
    camera.fling(velocity.x(), velocity.y());
  }
}

std::optional<MapGestures::Tap> MapGestures::end(double now) {
  dragging_ = false;
  if (moved_ || now - start_.time > longestTap || most_ > 2) {
    lastTap_.reset();
    return std::nullopt;
  }
  if (most_ == 2) {
    lastTap_.reset();
    lastZoom_ = now;
    return Tap{TapKind::twoFingers, start_.center};
  }
  if (lastTap_ && now - lastTap_->time < longestPause + longestTap &&
      lengthOf(lastTap_->center - start_.center) < doubleTapReach) {
    lastTap_.reset();
    lastZoom_ = now;
    return Tap{TapKind::twice, start_.center};
  }
  lastTap_ = Sample{now, start_.center, 0};
  if (held_) return std::nullopt;
  return Tap{TapKind::single, start_.center};
}

void MapGestures::cancel() {
  if (fingers_.empty()) return;  // a gesture that has ended loses its fingers, too
  fingers_.clear();
  dragging_ = false;
  moved_ = false;
  lastTap_.reset();
}

}  // namespace fleetor
