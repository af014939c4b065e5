#include "ui/device_class.h"

#include <gtest/gtest.h>

namespace fleetor::test {
namespace {

TEST(DeviceClass, IsDecidedByATouchScreenOrTheWidthInWhichTheWindowOpens) {
  struct Case {
    Size screen;
    bool isTouched;
    Size window;
    Idiom expected;
  };
  for (const auto& [screen, isTouched, window, expected] :
       {Case{{600, 960}, true, {390, 844}, Idiom::pad},
        {{599, 960}, true, {390, 844}, Idiom::phone},
        {{1920, 1080}, false, {390, 844}, Idiom::phone},
        {{1920, 1080}, false, {899, 700}, Idiom::phone},
        {{1920, 1080}, false, {900, 700}, Idiom::pad},
        {{932, 430}, true, {932, 430}, Idiom::phone}})  // held sideways
    EXPECT_EQ(deviceClassOf(screen, isTouched, window), expected)
        << screen.width << 'x' << screen.height << ' ' << window.width << 'x' << window.height;
}

}  // namespace
}  // namespace fleetor::test
