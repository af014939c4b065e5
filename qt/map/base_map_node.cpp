#include "qt/map/base_map_node.h"

#include <QQuickWindow>
#include <QSGFlatColorMaterial>
#include <QSGOpacityNode>
#include <QSGSimpleTextureNode>
#include <cmath>
#include <utility>

#include "qt/map/tile_image.h"

namespace fleetor {

namespace {

constexpr int texturesPerFrame = 4;
constexpr std::uint64_t textureRounds = 120;  // updates for which a texture waits to be drawn again
constexpr double gridStep = 64;               // points, at a whole zoom

}  // namespace

class BaseMapNode::TileNode final : public QSGOpacityNode {
 public:
  TileNode() {
    picture_ = new QSGSimpleTextureNode;
    picture_->setFiltering(QSGTexture::Linear);
    appendChildNode(picture_);
  }

  void show(QSGTexture& texture, const QRectF& place, const DrawnTile& tile) {
    if (picture_->texture() != &texture) picture_->setTexture(&texture);
    if (picture_->rect() != place) picture_->setRect(place);
    const QSizeF side = texture.textureSize();
    const QRectF part(tile.left * side.width(), tile.top * side.height(), tile.part * side.width(),
                      tile.part * side.height());
    if (picture_->sourceRect() != part) picture_->setSourceRect(part);
    setOpacity(tile.opacity);
  }

 private:
  QSGSimpleTextureNode* picture_;
};

BaseMapNode::BaseMapNode() : ground_(new QSGSimpleRectNode), grid_(new QSGGeometryNode), tiles_(new QSGNode) {
  grid_->setGeometry(new QSGGeometry(QSGGeometry::defaultAttributes_Point2D(), 0));
  grid_->geometry()->setDrawingMode(QSGGeometry::DrawTriangles);
  grid_->setMaterial(new QSGFlatColorMaterial);
  grid_->setFlags(OwnsGeometry | OwnsMaterial);
  for (QSGNode* node : {static_cast<QSGNode*>(ground_), static_cast<QSGNode*>(grid_), tiles_})
    appendChildNode(node);
}

bool BaseMapNode::update(const MapFrame& frame, const std::vector<DrawnTile>& tiles, QQuickWindow& window) {
  ++round_;
  drawGround(frame);
  return drawTiles(frame, tiles, window);
}

void BaseMapNode::drawGround(const MapFrame& frame) {
  ground_->setRect({{0, 0}, frame.size});
  ground_->setColor(frame.ground);
  auto* const material = static_cast<QSGFlatColorMaterial*>(grid_->material());
  if (material->color() != frame.grid) {
    material->setColor(frame.grid);
    grid_->markDirty(DirtyMaterial);
  }
  const double step = gridStep / pointsPerWorldUnit(std::round(frame.camera.zoom));
  const double pixel = 1 / frame.pixelRatio;
  std::vector<QRectF> rects;
  const double scale = pointsPerWorldUnit(frame.camera.zoom);
  const double left = frame.camera.centre.x - frame.size.width() / 2 / scale;
  const double top = frame.camera.centre.y - frame.size.height() / 2 / scale;
  for (double x = std::ceil(left / step); (x * step - left) * scale < frame.size.width(); ++x)
    rects.emplace_back(onPixels((x * step - left) * scale, frame.pixelRatio), 0, pixel, frame.size.height());
  for (double y = std::ceil(top / step); (y * step - top) * scale < frame.size.height(); ++y)
    rects.emplace_back(0, onPixels((y * step - top) * scale, frame.pixelRatio), frame.size.width(), pixel);
  QSGGeometry& geometry = *grid_->geometry();
  geometry.allocate(static_cast<int>(rects.size() * 6));
  QSGGeometry::Point2D* vertex = geometry.vertexDataAsPoint2D();
  for (const QRectF& rect : rects)
    for (const QPointF& corner : {rect.topLeft(), rect.topRight(), rect.bottomLeft(), rect.bottomLeft(),
                                  rect.topRight(), rect.bottomRight()})
      (vertex++)->set(static_cast<float>(corner.x()), static_cast<float>(corner.y()));
  grid_->markDirty(DirtyGeometry);
}

bool BaseMapNode::drawTiles(const MapFrame& frame, const std::vector<DrawnTile>& tiles,
                            QQuickWindow& window) {
  int room = textures_.empty() ? static_cast<int>(tiles.size()) : texturesPerFrame;
  bool more = false;
  QSGNode* next = tiles_->firstChild();
  for (const DrawnTile& tile : tiles) {
    auto found = textures_.find(tile.image.get());
    if (found == textures_.end()) {
      if (room-- <= 0) {
        more = true;
        continue;
      }
      const QImage& image = static_cast<const QtTileImage&>(*tile.image).image();
      std::unique_ptr<QSGTexture> texture(window.createTextureFromImage(image));
      if (!texture) continue;
      found = textures_.emplace(tile.image.get(), Texture{tile.image, std::move(texture), 0}).first;
    }
    found->second.round = round_;
    QPointF from = frame.screenPoint(tile.origin);
    QPointF to = frame.screenPoint({tile.origin.x + tile.size, tile.origin.y + tile.size});
    if (frame.steady) {
      from = onPixels(from, frame.pixelRatio);
      to = onPixels(to, frame.pixelRatio);
    }
    auto* const node = next ? static_cast<TileNode*>(next) : new TileNode;
    node->show(*found->second.texture, {from, to}, tile);
    if (!next) tiles_->appendChildNode(node);  // the software renderer needs its texture by then
    next = node->nextSibling();
  }
  while (next) {
    QSGNode* const after = next->nextSibling();
    delete next;
    next = after;
  }
  std::erase_if(textures_, [this](const auto& entry) { return entry.second.round + textureRounds < round_; });
  return more;
}

}  // namespace fleetor
