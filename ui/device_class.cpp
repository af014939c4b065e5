#include "ui/device_class.h"

#include <algorithm>

namespace fleetor {

namespace {
constexpr double padScreen = 600;  // the smaller side
constexpr double padOpening = 900;
constexpr double border = 720;
constexpr double lowest = 480;
}  // namespace

Idiom deviceClassOf(const Size& screen, bool isTouched, const Size& window) {
  if (isTouched && std::min(screen.width, screen.height) >= padScreen) return Idiom::pad;
  return window.width >= padOpening && window.height >= lowest ? Idiom::pad : Idiom::phone;
}

Idiom deviceClassAt(const Size& window) {
  if (window.width < border) return Idiom::phone;
  return window.height < lowest ? Idiom::unspecified : Idiom::pad;
}

}  // namespace fleetor
