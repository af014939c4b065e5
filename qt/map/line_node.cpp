#include "qt/map/line_node.h"

#include <QMatrix4x4>
#include <algorithm>
#include <cmath>
#include <span>

#include "qt/map/map_frame.h"

namespace fleetor {

namespace {

constexpr float sharpTurn = 0.5F;  // cosine: beyond 60 degrees a mitre would stick out too far

struct LineDirection {
  float x = 0;
  float y = 0;
};

LineDirection directionOf(const TrackVertex& from, const TrackVertex& to) {
  const float x = to.x - from.x;
  const float y = to.y - from.y;
  const float length = std::hypot(x, y);
  return length > 0 ? LineDirection{x / length, y / length} : LineDirection{};
}

std::span<const std::uint32_t> gapsOf(const DrawnLine& line) {
  return line.gaps ? std::span(*line.gaps) : std::span<const std::uint32_t>();
}

/// More of the ground than of the line.
QColor mixed(const QColor& line, const QColor& ground) {
  constexpr float share = 0.4F;
  const auto mix = [](float a, float b) { return share * a + (1 - share) * b; };
  return QColor::fromRgbF(mix(line.redF(), ground.redF()), mix(line.greenF(), ground.greenF()),
                          mix(line.blueF(), ground.blueF()));
}

class StripWriter {
 public:
  explicit StripWriter(LineVertex* out) : out_(out) {}

  /// Both edges at a point; along moves them on in the direction of the line, in half widths.
  void pair(const TrackVertex& at, LineDirection direction, float across, float along, float point) {
    for (const float side : {-1.0F, 1.0F})
      *out_++ = {at.x,
                 at.y,
                 -direction.y * across * side + direction.x * along,
                 direction.x * across * side + direction.y * along,
                 side,
                 point};
  }

 private:
  LineVertex* out_;
};

}  // namespace

QSGGeometryNode* LineNode::makeStrip(const TrackChunk& chunk, const DrawnLine& line) {
  auto points = stepsOf(chunk, line.line->points(), gapsOf(line), line.level);
  // Backwards: what has been driven lies over what lies ahead. The gap of a way is then at its other end.
  std::ranges::reverse(points);
  for (std::size_t i = 0; i + 1 < points.size(); ++i)
    points[i].gap = points[i + 1].gap;
  std::size_t pairs = points.size();
  std::vector<LineDirection> directions;
  directions.reserve(points.size() - 1);
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    directions.push_back(directionOf(points[i].at, points[i + 1].at));
    if (i > 0) {
      const auto& [ax, ay] = directions[i - 1];
      const auto& [bx, by] = directions[i];
      if (ax * bx + ay * by < sharpTurn) ++pairs;
      if (points[i - 1].gap || points[i].gap) ++pairs;
    }
  }
  auto* geometry = new QSGGeometry(LineMaterial::attributes(), static_cast<int>(2 * pairs));
  geometry->setDrawingMode(QSGGeometry::DrawTriangleStrip);
  StripWriter strip(static_cast<LineVertex*>(geometry->vertexData()));
  // What the ways to and from a point carry there: in gaps, how far they have come.
  const auto begun = [&points](std::size_t i) {
    return points[i].gap ? LineMaterial::gapBegin : static_cast<float>(points[i].point);
  };
  const auto ended = [&points](std::size_t i) {
    const TrackVertex& from = points[i - 1].at;
    const TrackVertex& to = points[i].at;
    return points[i - 1].gap ? LineMaterial::gapBegin - std::hypot(to.x - from.x, to.y - from.y)
                             : static_cast<float>(points[i].point);
  };
  strip.pair(points.front().at, directions.front(), 1, -1, begun(0));
  // A gentle turn is a mitre: its pair lies across the mean direction, further out by 1 / cos(turn / 2), so
  // that both edges keep their distance from the line. At a sharp turn both segments end in a straight cap.
  for (std::size_t i = 1; i + 1 < points.size(); ++i) {
    const auto& before = directions[i - 1];
    const auto& after = directions[i];
    const bool parts = points[i - 1].gap || points[i].gap;
    const float cosine = before.x * after.x + before.y * after.y;
    if (cosine < sharpTurn) {
      const float over = cosine < 0 ? 1.0F : 0.5F;  // of the caps: they cover the outside of the turn
      strip.pair(points[i].at, before, 1, over, ended(i));
      if (parts) strip.pair(points[i].at, before, 1, over, begun(i));
      strip.pair(points[i].at, after, 1, -over, begun(i));
    } else {
      const float half = std::sqrt((1 + cosine) / 2);  // cos(turn / 2)
      const LineDirection middle{(before.x + after.x) / (2 * half), (before.y + after.y) / (2 * half)};
      strip.pair(points[i].at, middle, 1 / half, 0, ended(i));
      if (parts) strip.pair(points[i].at, middle, 1 / half, 0, begun(i));
    }
  }
  strip.pair(points.back().at, directions.back(), 1, 1, ended(points.size() - 1));

  auto* node = new QSGGeometryNode;
  node->setGeometry(geometry);
  node->setFlag(OwnsGeometry);
  node->setMaterial(&material_);
  return node;
}

void LineNode::takePieces(const DrawnLine& line, WorldPoint origin) {
  origin_ = origin;
  version_ = line.version;
  level_ = line.level;
  const double scale = pointsPerWorldUnit(line.level);
  auto before = std::exchange(strips_, {});
  if (std::exchange(gaps_, line.gaps) != line.gaps) {
    for (const auto& [key, strip] : before)
      delete strip.place;
    before.clear();
  }
  for (const TrackPiece& piece : line.pieces) {
    const Key key{piece.chunk.get(), piece.shift};
    Strip strip;
    if (auto kept = before.extract(key); !kept.empty()) {
      strip = kept.mapped();
    } else {
      strip = {piece.chunk, new QSGTransformNode, makeStrip(*piece.chunk, line)};
      strip.place->appendChildNode(strip.node);
      prependChildNode(strip.place);
    }
    QMatrix4x4 matrix;
    matrix.translate(static_cast<float>((piece.chunk->origin.x + piece.shift - origin.x) * scale),
                     static_cast<float>((piece.chunk->origin.y - origin.y) * scale));
    strip.place->setMatrix(matrix);
    strips_[key] = strip;
  }
  for (const auto& [key, gone] : before)
    delete gone.place;
}

// Vertices are left out where the line is nearly straight, so the place lies between two of them. In a gap no
// tip is drawn.
float LineNode::drawTip(const DrawnLine& line, const LineProgress& progress) {
  if (!tip_) {
    tip_ = new QSGGeometryNode;
    tip_->setGeometry(new QSGGeometry(LineMaterial::attributes(), 4));
    tip_->geometry()->setDrawingMode(QSGGeometry::DrawTriangleStrip);
    tip_->setFlag(OwnsGeometry);
    tip_->setMaterial(&material_);
    appendChildNode(tip_);
  }
  const double scale = pointsPerWorldUnit(line.level);
  TrackVertex from;
  TrackVertex to;
  float passed = static_cast<float>(progress.passed);
  for (const auto& [chunk, shift] : line.pieces) {
    const auto& points = chunk->points;
    if (progress.passed < points.front() || progress.passed >= points.back()) continue;
    const auto next = std::ranges::upper_bound(points, progress.passed);
    way_.clear();
    appendWay(way_, *chunk, static_cast<std::size_t>(next - points.begin()) - 1, line.line->points(),
              gapsOf(line), line.level);
    while (way_.back().point > progress.passed)
      way_.pop_back();
    passed = static_cast<float>(way_.back().point);
    if (way_.back().gap) break;
    const double east = chunk->origin.x + shift - origin_.x;
    const double south = chunk->origin.y - origin_.y;
    const double way = progress.place.x - chunk->origin.x;  // in whatever copy of the world
    from = {static_cast<float>(east * scale) + way_.back().at.x,
            static_cast<float>(south * scale) + way_.back().at.y};
    to = {static_cast<float>((east + way - std::round(way)) * scale),
          static_cast<float>((progress.place.y - origin_.y) * scale)};
    break;
  }
  const LineDirection direction = directionOf(from, to);
  StripWriter strip(static_cast<LineVertex*>(tip_->geometry()->vertexData()));
  strip.pair(from, direction, 1, -1, 0);
  strip.pair(to, direction, 1, 1, 0);
  tip_->markDirty(DirtyGeometry);
  return passed;
}

void LineNode::update(const MapFrame& frame, const DrawnLine& line) {
  if (line.version != version_) takePieces(line, frame.camera.centre);
  if (!line.progress && tip_) {
    delete tip_;
    tip_ = nullptr;
  }
  const float strongUntil = line.progress ? drawTip(line, *line.progress) : LineMaterial::everyPoint;

  const double scale = std::exp2(frame.camera.zoom - level_);
  const LineMaterial::Style style{line.color,
                                  mixed(line.color, frame.ground),
                                  static_cast<float>(line.width / 2),
                                  static_cast<float>(1 / frame.pixelRatio),
                                  static_cast<float>(scale),
                                  strongUntil};
  if (style != material_.style) {
    material_.style = style;
    for (const auto& [key, strip] : strips_)
      strip.node->markDirty(DirtyMaterial);
  }
  const QPointF at = frame.screenPoint(origin_);
  QMatrix4x4 matrix;
  matrix.translate(static_cast<float>(at.x()), static_cast<float>(at.y()));
  matrix.scale(static_cast<float>(scale), static_cast<float>(scale));
  if (matrix != this->matrix()) setMatrix(matrix);
}

}  // namespace fleetor
