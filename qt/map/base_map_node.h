#pragma once

#include <QSGGeometryNode>
#include <QSGSimpleRectNode>
#include <QSGTexture>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "map/tile_board.h"
#include "qt/map/map_frame.h"

class QQuickWindow;

namespace fleetor {

/// Draws what lies beneath the lines of a map: the ground with its grid and the tiles. Render thread; at sync
/// the main thread waits.
class BaseMapNode final : public QSGNode {
 public:
  BaseMapNode();

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
