#include "qt/map/line_layer.h"

#include <QVariant>
#include <algorithm>
#include <cmath>
#include <utility>

namespace fleetor {

namespace {

// Filling a strip's pixels takes several times as long as copying as many from a picture.
constexpr double fewPixels = 1.0 / 8;    // of the map's
constexpr double mostPixels = 16 << 20;  // of a picture
constexpr double longestSide = 4096;     // pixels: what any graphics chip has textures for

/// A whole number of pixels for all ratios in quarters.
double wholeInPixels(double points) {
  return std::ceil(points / 4) * 4;
}

class LinesNode final : public QSGNode {
 public:
  void update(const MapFrame& frame, const std::vector<DrawnLine>& lines) {
    const bool same = std::ranges::equal(
        lines, nodes_, {}, [](const DrawnLine& line) { return line.line.get(); },
        [](const auto& entry) { return entry.first; });
    if (!same) {
      removeAllChildNodes();
      const auto before = std::exchange(nodes_, {});
      for (const DrawnLine& line : lines) {
        const auto kept =
            std::ranges::find(before, line.line.get(), &std::pair<const TrackLine*, LineNode*>::first);
        nodes_.emplace_back(line.line.get(), kept == before.end() ? new LineNode : kept->second);
        appendChildNode(nodes_.back().second);
      }
      for (const auto& [line, node] : before)
        if (!node->parent()) delete node;
    }
    for (std::size_t i = 0; i < lines.size(); ++i)
      nodes_[i].second->update(frame, lines[i]);
  }

 private:
  std::vector<std::pair<const TrackLine*, LineNode*>> nodes_;  // as drawn
};

}  // namespace

LineLayer::LineLayer(QQuickItem& map) : QQuickItem(&map) {
  setFlag(ItemHasContents);
}

QSizeF LineLayer::marginOf(const MapFrame& frame) {
  // Not less than the lines are chosen for: the picture is drawn anew when they are, and not once more.
  return {wholeInPixels(frame.size.width() * MapLines::ahead),
          wholeInPixels(frame.size.height() * MapLines::ahead)};
}

bool LineLayer::shows(const MapFrame& frame, const MapLines& lines) const {
  if (!kept_ || lines_ != &lines || version_ != lines.version() || mapSize_ != frame.size ||
      drawn_.pixelRatio != frame.pixelRatio || drawn_.camera.zoom != frame.camera.zoom)
    return false;
  const QPointF away =
      drawn_.screenPoint(frame.camera.centre) - QPointF(drawn_.size.width() / 2, drawn_.size.height() / 2);
  const QSizeF margin = marginOf(frame);
  return std::abs(away.x()) <= margin.width() && std::abs(away.y()) <= margin.height();
}

void LineLayer::show(const MapFrame& frame, const MapLines& lines) {
  const QSizeF margin = marginOf(frame);
  const QSizeF whole(wholeInPixels(frame.size.width()) + 2 * margin.width(),
                     wholeInPixels(frame.size.height()) + 2 * margin.height());
  const QSizeF pixels = whole * frame.pixelRatio;
  const bool moves = lines_ == &lines && drawn_.camera.centre != frame.camera.centre;
  const bool keep = frame.steady && (kept_ || moves) && !lines.progressed() &&
                    std::max(pixels.width(), pixels.height()) <= longestSide &&
                    pixels.width() * pixels.height() <= mostPixels &&
                    lines.pixels() > frame.size.width() * frame.size.height() * fewPixels;
  if (!keep || !shows(frame, lines)) {
    lines_ = &lines;
    version_ = lines.version();
    mapSize_ = frame.size;
    drawn_ = frame;
    if (keep) drawn_.size = frame.size + 2 * margin;
    setKept(keep);
    setSize(keep ? whole : frame.size);
    update();
  }
  if (keep) {
    const double scale = pointsPerWorldUnit(frame.camera.zoom);
    const WorldPoint from = drawn_.camera.centre;
    const WorldPoint to = frame.camera.centre;
    setPosition({onPixels((from.x - to.x) * scale, frame.pixelRatio) - margin.width(),
                 onPixels((from.y - to.y) * scale, frame.pixelRatio) - margin.height()});
  } else {
    setPosition({});
  }
}

void LineLayer::clear() {
  lines_ = nullptr;
  setKept(false);
  update();
}

// What QML calls item.layer: a live one is drawn anew only when something in it has changed.
void LineLayer::setKept(bool kept) {
  if (std::exchange(kept_, kept) == kept) return;
  auto* const layer = property("layer").value<QObject*>();
  Q_ASSERT(layer);
  layer->setProperty("enabled", kept);
}

QSGNode* LineLayer::updatePaintNode(QSGNode* before, UpdatePaintNodeData*) {
  if (!lines_) {
    delete before;
    return nullptr;
  }
  auto* const node = before ? static_cast<LinesNode*>(before) : new LinesNode;
  node->update(drawn_, lines_->drawn());
  return node;
}

void LineLayer::itemChange(ItemChange change, const ItemChangeData& data) {
  if (change == ItemVisibleHasChanged && !data.boolValue) setKept(false);
  QQuickItem::itemChange(change, data);
}

}  // namespace fleetor
