#include "qt/map_lines.h"

#include <algorithm>
#include <utility>

namespace fleetor {

namespace {

constexpr std::size_t shortLine = 20'000;  // points that are simplified in a fraction of a millisecond
constexpr double ahead = 0.2;              // of the viewport, beyond each of its edges

bool contains(const WorldRect& outer, const WorldRect& inner) {
  return outer.left <= inner.left && outer.right >= inner.right && outer.top <= inner.top &&
         outer.bottom >= inner.bottom;
}

}  // namespace

MapLines::MapLines(Queues& queues, std::function<void()> onReady)
    : queues_(queues), onReady_(std::move(onReady)), self_(std::make_shared<MapLines*>(this)) {}

void MapLines::setOverlays(const MapView& map) {
  std::vector<DrawnLine> before = std::exchange(drawn_, {});
  for (const auto& overlay : map.overlays()) {
    const auto renderer = map.rendererForOverlay(*overlay);
    if (!renderer) continue;
    // A trail that has grown is the same line in another overlay.
    const auto same = std::ranges::find(before, overlay->line(), &DrawnLine::line);
    DrawnLine& line = drawn_.emplace_back(same == before.end() ? DrawnLine{} : std::move(*same));
    const Color& color = renderer->strokeColor();
    line.line = overlay->line();
    line.color = QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                                  static_cast<float>(color.blue), static_cast<float>(color.alpha));
    line.width = renderer->lineWidth();
    line.window = {};
  }
}

void MapLines::update(const MapCamera& camera) {
  for (DrawnLine& line : drawn_) {
    if (line.level != TrackLine::levelFor(camera.zoom()) || !contains(line.window, camera.visibleRect()))
      choose(line, camera);
  }
}

void MapLines::choose(DrawnLine& line, const MapCamera& camera) {
  const int level = TrackLine::levelFor(camera.zoom());
  if (line.line->size() > shortLine && line.line->nearestLevel(level) != level) {
    build(line, level);
    return;
  }
  const WorldRect view = camera.visibleRect();
  const double x = view.width() * ahead;
  const double y = view.height() * ahead;
  line.level = level;
  line.window = {view.left - x, view.top - y, view.right + x, view.bottom + y};
  line.pieces = line.line->pieces(line.window, level);
  line.version = ++versions_;
}

// One level at a time for each line: when it comes, the camera says which one is wanted by then.
void MapLines::build(const DrawnLine& drawn, int level) {
  if (std::ranges::find(underWay_, drawn.line) != underWay_.end()) return;
  underWay_.push_back(drawn.line);
  queues_.global([points = drawn.line->points(), level, line = drawn.line, home = std::weak_ptr(self_),
                  &queues = queues_]() mutable {
    auto made = TrackLine::makeLevel(points, level);
    queues.main([made = std::move(made), line = std::move(line), home = std::move(home)]() mutable {
      const auto self = home.lock();
      if (!self) return;
      line->adopt(std::move(made));
      std::erase((*self)->underWay_, line);
      (*self)->onReady_();
    });
  });
}

}  // namespace fleetor
