#include "qt/map/tile_image.h"

#include <sys/resource.h>

#include <QBuffer>

#include "support/testing.h"

namespace fleetor {
namespace {

long mostMegabytes() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024;
}

TEST(TileImage, TakesNoMoreMemoryThanItsBytesAndPixels) {
  QImage image(2, 2, QImage::Format_RGB32);
  image.setText(QStringLiteral("Comment"), QString(10'000, u'a'));  // 50 bytes in the file
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  ASSERT_TRUE(png.contains("zTXt"));
  const auto decoded = decodeTile(png, 256);
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->image().textKeys().size(), 0);
  const QByteArray length = QByteArray::fromHex("3fffffff");  // announced for a chunk behind the head
  const long before = mostMegabytes();
  EXPECT_FALSE(decodeTile(png.left(33) + length + "zTXt" + png.mid(33), 256));
  EXPECT_LT(mostMegabytes(), before + 100);
}

TEST(TileImage, RefusesAPictureOfVeryManyScans) {
  // Eight grey pixels a side, refined by scans of twelve bytes that add nothing.
  const QByteArray ofOnes = QByteArray::fromHex("ffd8ffdb004300") + QByteArray(64, 1);
  const QByteArray head = ofOnes + QByteArray::fromHex(
                                       "ffc2000b080008000801011100"
                                       "ffc40014000100000000000000000000000000000000"
                                       "ffc400141001000000000000000000000000000000e0"
                                       "ffda000801010000000000");
  const QByteArray scan = QByteArray::fromHex("ffda0008010100013f000000");
  EXPECT_TRUE(decodeTile(head + scan.repeated(99) + "\xFF\xD9", 256));
  EXPECT_FALSE(decodeTile(head + scan.repeated(100) + "\xFF\xD9", 256));
}

}  // namespace
}  // namespace fleetor
