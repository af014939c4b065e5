// The bytes of a tile server's answer, made into a picture: whatever they are, it is within its bounds and
// ready to become a texture.

#include <zlib.h>

#include <QCoreApplication>
#include <string>

#include "fuzzing.h"
#include "qt/map/tile_image.h"

namespace {

using namespace fleetor;

constexpr int side = 64;

std::size_t number(const std::string& bytes, std::size_t at) {
  std::size_t value = 0;
  for (std::size_t i = at; i < at + 4; ++i)
    value = value << 8 | static_cast<unsigned char>(bytes[i]);
  return value;
}

/// A PNG with the right checksums: with wrong ones nothing of it would be looked at.
std::string withChecksums(std::string png) {
  for (std::size_t at = 8, left = 0; at + 12 <= png.size(); at += left + 12) {
    left = number(png, at);
    if (left > png.size() - at - 12) break;
    const auto sum = crc32(0, reinterpret_cast<const Bytef*>(&png[at + 4]), static_cast<uInt>(left + 4));
    for (std::size_t i = 0; i < 4; ++i)
      png[at + 8 + left + i] = static_cast<char>(sum >> (24 - 8 * i));
  }
  return png;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static int argc = 1;
  static char name[] = "fuzz", *argv[] = {name, nullptr};
  static const QCoreApplication application(argc, argv);
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});

  std::string bytes = Bytes(data, size).rest();
  if (bytes.starts_with("\x89PNG")) bytes = withChecksums(std::move(bytes));
  const auto tile = decodeTile(QByteArray::fromStdString(bytes), side);
  if (!tile) return 0;
  const QImage& image = tile->image();
  require(image.width() > 0 && image.width() <= side && image.height() > 0 && image.height() <= side,
          "it fits");
  require(image.sizeInBytes() == qsizetype{4} * image.width() * image.height(), "four bytes a pixel");
  require(
      image.format() == QImage::Format_RGBX8888 || image.format() == QImage::Format_RGBA8888_Premultiplied,
      "it can be drawn");
  const uchar* const end = image.constBits() + image.sizeInBytes();
  for (const uchar* pixel = image.constBits(); pixel < end; pixel += 4)
    require(pixel[0] <= pixel[3] && pixel[1] <= pixel[3] && pixel[2] <= pixel[3],
            "no colour exceeds its alpha");
  return 0;
}
