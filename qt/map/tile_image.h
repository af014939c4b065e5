#pragma once

#include <QByteArray>
#include <QImage>
#include <cstddef>
#include <memory>
#include <utility>

#include "map/tile_loader.h"

namespace fleetor {

/// The image of a tile, ready to become a texture: RGBA8888_Premultiplied, or RGBX8888 when it is opaque.
class QtTileImage final : public TileImage {
 public:
  explicit QtTileImage(QImage image) : image_(std::move(image)) {}
  std::size_t sizeInBytes() const override { return static_cast<std::size_t>(image_.sizeInBytes()); }
  const QImage& image() const { return image_; }

 private:
  QImage image_;
};

/// The image in a tile server's answer; null if that is not a whole PNG, JPEG or WebP, has a side of more
/// than `longestSide` pixels, or is a JPEG of more than 100 scans. Any thread.
std::shared_ptr<const QtTileImage> decodeTile(QByteArray bytes, int longestSide);

}  // namespace fleetor
