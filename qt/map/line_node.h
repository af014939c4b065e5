#pragma once

#include <QSGGeometryNode>
#include <QSGTransformNode>
#include <map>
#include <utility>

#include "qt/map/line_material.h"
#include "qt/map/map_lines.h"

namespace fleetor {

struct MapFrame;

/// One line: a strip of triangles for every chunk that is drawn, each at a fixed place beneath one transform,
/// which is all that changes when the map moves. Render thread; at sync the main thread waits.
class LineNode final : public QSGTransformNode {
 public:
  void update(const MapFrame& frame, const DrawnLine& line);

 private:
  using Key = std::pair<const TrackChunk*, double>;  // and the copy of the world
  struct Strip {
    std::shared_ptr<const TrackChunk> chunk;  // keeps its address from being used for another
    QSGTransformNode* place = nullptr;
    QSGGeometryNode* node = nullptr;
  };

  void takePieces(const DrawnLine& line, WorldPoint origin);
  QSGGeometryNode* makeStrip(const TrackChunk& chunk, const DrawnLine& line);
  /// Draws the way from the last vertex that was passed, and returns which of the line's points that is.
  float drawTip(const DrawnLine& line, const LineProgress& progress);

  LineMaterial material_;
  int level_ = 0;
  std::uint64_t version_ = 0;  // 0: nothing yet
  WorldPoint origin_;
  TrackGaps gaps_;
  std::map<Key, Strip> strips_;
  std::vector<TrackStep> way_;      // that the tip is on; keeps its memory
  QSGGeometryNode* tip_ = nullptr;  // while something travels along the line
};

}  // namespace fleetor
