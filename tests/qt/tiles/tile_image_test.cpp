#include "qt/tile_image.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <QBuffer>

namespace fleetor {
namespace {

long mostMegabytes() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024;
}

TEST(TileImage, NoPictureTakesMoreMemoryThanItsBytesAndPixelsDo) {
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  QImage(2, 2, QImage::Format_RGB32).save(&buffer, "PNG");
  ASSERT_TRUE(decodeTile(png, 256));
  const QByteArray length = QByteArray::fromHex("3fffffff");  // announced for a chunk behind the head
  const long before = mostMegabytes();
  EXPECT_FALSE(decodeTile(png.left(33) + length + "zTXt" + png.mid(33), 256));
  EXPECT_LT(mostMegabytes(), before + 100);
}

}  // namespace
}  // namespace fleetor
