#include "qt/map/tile_image.h"

#include <QBuffer>
#include <QImageReader>
#include <QtEndian>

namespace fleetor {
namespace {

// Tiles come in these formats. The readers of others have a long history of security faults.
bool isTileFormat(const QByteArray& format) {
  return format == "png" || format == "jpeg" || format == "webp";
}

// All that a picture needs of a PNG: a text of a few bytes may unpack to megabytes. Empty if a chunk is cut,
// since the reader allocates the length that a chunk announces.
QByteArray withoutTexts(const QByteArray& png) {
  constexpr qsizetype frame = 12;  // length, name and checksum
  QByteArray kept = png.left(8);
  for (qsizetype at = 8; png.size() - at >= frame;) {
    const qsizetype length = qFromBigEndian<quint32>(png.constData() + at);
    if (length > png.size() - at - frame) return {};
    const QByteArray name = png.sliced(at + 4, 4);
    if (name != "tEXt" && name != "zTXt" && name != "iTXt") kept += png.sliced(at, frame + length);
    if (name == "IEND") return kept;
    at += frame + length;
  }
  return {};
}

// A scan of a few bytes may go over all pixels of a JPEG. Most files have ten or fewer.
constexpr qsizetype mostScans = 100;

}  // namespace

std::shared_ptr<const QtTileImage> decodeTile(QByteArray bytes, int longestSide) {
  if (bytes.startsWith("\x89PNG")) bytes = withoutTexts(bytes);
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  const QByteArray format = reader.format();
  if (!isTileFormat(format)) return nullptr;
  if (format == "jpeg" && bytes.count("\xFF\xDA") > mostScans) return nullptr;
  const QSize size = reader.size();
  if (size.isEmpty() || size.width() > longestSide || size.height() > longestSide) return nullptr;
  QImage image = reader.read();
  if (image.isNull()) return nullptr;
  image.convertTo(image.hasAlphaChannel() ? QImage::Format_RGBA8888_Premultiplied : QImage::Format_RGBX8888);
  return std::make_shared<QtTileImage>(std::move(image));
}

}  // namespace fleetor
