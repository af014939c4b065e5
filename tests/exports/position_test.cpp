#include "exports/position.h"

#include "exports/qr_code.h"
#include "support/testing.h"

namespace fleetor::test {
namespace {

TEST(Position, IsWrittenInDegreesWithEveryCarry) {
  EXPECT_EQ(degreesText({50.06143, 19.93744}), "50°03′41.1″N 19°56′14.8″E");
  EXPECT_EQ(degreesText({-0.999999, -179.99999}), "01°00′00.0″S 180°00′00.0″W");
  EXPECT_EQ(decimalText({-33.8568, 151.2153}), "-33.856800, 151.215300");
  EXPECT_EQ(geoURL({50.06143, -19.9}), "geo:50.061430,-19.900000");
}

TEST(Position, NoTextBreaksOutOfAMail) {
  EXPECT_EQ(mailURL("a&b", "c d\n?é#%"), "mailto:?subject=a%26b&body=c%20d%0A%3F%C3%A9%23%25");
}

TEST(QrCode, HasItsThreeCornersWithinAQuietBorder) {
  const QrCode code = qrCodeOf("geo:50.061430,19.937440");
  ASSERT_GE(code.side, 21 + 8);
  const auto dark = [&](int x, int y) { return code.isDark(x, y); };
  const int last = code.side - 1;
  for (int i = 0; i <= last; ++i)
    for (const int edge : {0, 3, last - 3, last})
      EXPECT_FALSE(dark(edge, i) || dark(i, edge));
  for (int i = 4; i < 11; ++i)
    EXPECT_TRUE(dark(i, 4) && dark(4, i) && dark(last - i, 4) && dark(4, last - i));
  EXPECT_EQ(qrCodeOf(std::string(5000, 'x')).side, 0);
}

}  // namespace
}  // namespace fleetor::test
