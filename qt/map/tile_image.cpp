#include "qt/map/tile_image.h"

#include <QBuffer>
#include <QImageReader>
#include <QtEndian>

namespace fleetor {
namespace {

// No other format has any business here: some have readers with a long history of trouble.
bool isTileFormat(const QByteArray& format) {
  return format == "png" || format == "jpeg" || format == "webp";
}

// The reader makes room for a chunk as soon as its length is announced. In a whole file all of it is there.
bool hasWholeChunks(const QByteArray& png) {
  constexpr qsizetype frame = 12;  // length, name and checksum
  for (qsizetype at = 8; png.size() - at >= frame;) {
    const qsizetype length = qFromBigEndian<quint32>(png.constData() + at);
    if (length > png.size() - at - frame) return false;
    if (png.sliced(at + 4, 4) == "IEND") return true;
    at += frame + length;
  }
  return false;
}

// Each scan of a JPEG may go over the whole picture, however few its bytes are. Most files have ten or
// fewer.
constexpr qsizetype mostScans = 100;

}  // namespace

std::shared_ptr<const QtTileImage> decodeTile(QByteArray bytes, int longestSide) {
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  const QByteArray format = reader.format();
  if (!isTileFormat(format)) return nullptr;
  if (format == "png" && !hasWholeChunks(bytes)) return nullptr;
  if (format == "jpeg" && bytes.count("\xFF\xDA") > mostScans) return nullptr;
  const QSize size = reader.size();
  if (size.isEmpty() || size.width() > longestSide || size.height() > longestSide) return nullptr;
  QImage image = reader.read();
  if (image.isNull()) return nullptr;
  image.convertTo(image.hasAlphaChannel() ? QImage::Format_RGBA8888_Premultiplied : QImage::Format_RGBX8888);
  return std::make_shared<QtTileImage>(std::move(image));
}

}  // namespace fleetor
