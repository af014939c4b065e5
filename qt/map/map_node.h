#pragma once

#include <QColor>
#include <QSGGeometryNode>
#include <QSGSimpleRectNode>
#include <QSGTexture>
#include <QSizeF>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "map/camera.h"
#include "map/tile_board.h"

class QQuickWindow;

namespace fleetor {

/// All that a map shows in one frame, but for its markers.
struct MapFrame {
  CameraPosition camera;
  QSizeF size;            ///< points
  double pixelRatio = 1;  ///< pixels a point
  bool steady = true;     ///< the zoom stays as it is: everything lies on whole pixels
  QColor ground;          ///< where there is no tile
  QColor grid;            ///< of the lines on the ground

  QPointF screenPoint(WorldPoint point) const;  ///< x is not wrapped
};

/// The nearest place where a pixel begins.
double onPixels(double points, double pixelRatio);

/// Draws what lies beneath the lines of a map: the ground with its grid and the tiles. Render thread; at sync
/// the main thread waits.
class MapNode final : public QSGNode {
 public:
  MapNode();

  /// True when the textures of some tiles are still to be made: call again in the next frame.
  bool update(const MapFrame& frame, const std::vector<DrawnTile>& tiles, QQuickWindow& window);

 private:
  class TileNode;
  struct Texture {
    std::shared_ptr<const TileImage> image;
    std::unique_ptr<QSGTexture> texture;
    std::uint64_t round = 0;  // the update that last drew it
  };

  void drawGround(const MapFrame& frame);
  bool drawTiles(const MapFrame& frame, const std::vector<DrawnTile>& tiles, QQuickWindow& window);

  QSGSimpleRectNode* ground_;
  QSGGeometryNode* grid_;
  QSGNode* tiles_;
  std::unordered_map<const TileImage*, Texture> textures_;
  std::uint64_t round_ = 0;
};

}  // namespace fleetor
