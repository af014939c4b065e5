#pragma once

#include <QQuickItem>
#include <cstdint>

#include "qt/map/line_node.h"
#include "qt/map/map_frame.h"
#include "qt/map/map_lines.h"

namespace fleetor {

/// The lines on a map. While the map is moved and not zoomed, many of them are kept as a picture that reaches
/// beyond the map's edges: a frame then costs the same whatever is drawn, until the map leaves the picture or
/// the lines change. A few lines are drawn in every frame, which costs less than the picture. So are all
/// lines until the map is moved: without a picture the first frame of a long line costs least.
///
/// The picture takes at most 64 MB, and as much again for what draws it; for a phone of 390 x 780 points with
/// 3 pixels each it is 22 MB. It is freed when the map is hidden. Main thread only.
class LineLayer final : public QQuickItem {
  Q_OBJECT

 public:
  explicit LineLayer(QQuickItem& map);

  /// Follows the map. Call it right before a frame is put together; `lines` is read until the next call.
  void show(const MapFrame& frame, const MapLines& lines);
  /// Forgets the lines.
  void clear();

 protected:
  QSGNode* updatePaintNode(QSGNode* before, UpdatePaintNodeData* data) override;
  void itemChange(ItemChange change, const ItemChangeData& data) override;

 private:
  /// How far the picture shows beyond each edge of the map, in points.
  static QSizeF marginOf(const MapFrame& frame);
  bool shows(const MapFrame& frame, const MapLines& lines) const;
  void setKept(bool kept);

  const MapLines* lines_ = nullptr;
  MapFrame drawn_;             // of the picture: with its margin, and the camera that it was drawn for
  QSizeF mapSize_;             // for which it was drawn
  std::uint64_t version_ = 0;  // of the lines in it
  bool kept_ = false;          // there is a picture
};

}  // namespace fleetor
