#include "ui/device_class.h"

#include <algorithm>

namespace fleetor {

namespace {
constexpr double padScreen = 600;  // the smaller side
constexpr double padOpening = 900;
constexpr double resizedPad = 720;
constexpr double lowest = 480;

bool isTablet(const Size& screen, bool isTouched) {
  return isTouched && std::min(screen.width, screen.height) >= padScreen;
}
}  // namespace

double deviceClassBorder(const Size& screen, bool isTouched) {
  return isTablet(screen, isTouched) ? padScreen : resizedPad;
}

Idiom deviceClassOf(const Size& screen, bool isTouched, const std::optional<Size>& window) {
  const bool tablet = isTablet(screen, isTouched);
  if (!window) return tablet ? Idiom::pad : Idiom::phone;
  return window->width >= (tablet ? padScreen : padOpening) && window->height >= lowest ? Idiom::pad
                                                                                        : Idiom::phone;
}

Idiom deviceClassAt(const Size& window, double border) {
  if (window.width < border) return Idiom::phone;
  return window.height < lowest ? Idiom::unspecified : Idiom::pad;
}

}  // namespace fleetor
