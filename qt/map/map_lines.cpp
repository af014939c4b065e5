#include "qt/map/map_lines.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fleetor {

namespace {

constexpr std::size_t shortLine = 20'000;  // points that are simplified in a fraction of a millisecond
constexpr double pixelsPerVertex = 16;     // that could be filled in its time

bool contains(const WorldRect& outer, const WorldRect& inner) {
  return outer.left <= inner.left && outer.right >= inner.right && outer.top <= inner.top &&
         outer.bottom >= inner.bottom;
}

/// How much of the way between two points lies between two others, 0 to 1.
double shareWithin(double from, double to, double low, double high) {
  const auto [least, most] = std::minmax(from, to);
  const double within = std::min(most, high) - std::max(least, low);
  return most > least ? std::max(within, 0.0) / (most - least) : within >= 0 ? 1 : 0;
}

/// What a line takes to draw, as points that could be filled in the same time.
double pixelsOf(const DrawnLine& line) {
  const double scale = pointsPerWorldUnit(line.level);
  double pixels = 0;
  for (const TrackPiece& piece : line.pieces) {
    const auto& [origin, bounds, vertices, points] = *piece.chunk;
    const double left = (line.window.left - piece.shift - origin.x) * scale;
    const double right = (line.window.right - piece.shift - origin.x) * scale;
    const double top = (line.window.top - origin.y) * scale;
    const double bottom = (line.window.bottom - origin.y) * scale;
    for (std::size_t i = 1; i < vertices.size(); ++i) {
      const auto& [x, y] = vertices[i];
      const auto& before = vertices[i - 1];
      const double share =
          std::min(shareWithin(before.x, x, left, right), shareWithin(before.y, y, top, bottom));
      if (share > 0)
        pixels += pixelsPerVertex + (line.width + 1) * share * std::hypot(x - before.x, y - before.y);
    }
  }
  return pixels;
}

}  // namespace

MapLines::MapLines(Queues& queues, std::function<void()> onReady)
    : queues_(queues), onReady_(std::move(onReady)), self_(std::make_shared<MapLines*>(this)) {}

void MapLines::setOverlays(const MapView& map) {
  std::vector<DrawnLine> before = std::exchange(drawn_, {});
  ++versions_;
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
    line.gaps = renderer->gaps();
    line.window = {};
  }
}

void MapLines::update(const MapView& map) {
  const MapCamera& camera = map.camera();
  const auto& traveller = map.traveller();
  progressed_ = false;
  for (DrawnLine& line : drawn_) {
    std::optional<LineProgress> progress;
    if (traveller && traveller->line->line() == line.line) progress = {traveller->passed, traveller->place};
    progressed_ = std::exchange(line.progress, progress) != progress || progressed_;
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
  line.pixels = pixelsOf(line);
  line.version = ++versions_;
}

double MapLines::pixels() const {
  double sum = 0;
  for (const DrawnLine& line : drawn_)
    sum += line.pixels;
  return sum;
}

// One level at a time for each line: when it is ready, the camera determines the next one.
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
