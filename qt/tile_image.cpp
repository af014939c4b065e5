#include "qt/tile_image.h"

#include <QBuffer>
#include <QImageReader>

namespace fleetor {
namespace {

// No other format has any business here: some have readers with a long history of trouble.
bool isTileFormat(const QByteArray& format) {
  return format == "png" || format == "jpeg" || format == "webp";
}

}  // namespace

std::shared_ptr<const QtTileImage> decodeTile(QByteArray bytes, int longestSide) {
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  if (!isTileFormat(reader.format())) return nullptr;
  const QSize size = reader.size();
  if (size.isEmpty() || size.width() > longestSide || size.height() > longestSide) return nullptr;
  QImage image = reader.read();
  if (image.isNull()) return nullptr;
  image.convertTo(image.hasAlphaChannel() ? QImage::Format_RGBA8888_Premultiplied : QImage::Format_RGBX8888);
  return std::make_shared<QtTileImage>(std::move(image));
}

}  // namespace fleetor
