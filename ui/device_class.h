#pragma once

#include <optional>

#include "platform/device.h"
#include "ui/geometry.h"

namespace fleetor {

/// The width in points at which a window that is resized changes its class. A touch screen that is long in
/// both directions is a tablet, also when it is held upright.
double deviceClassBorder(const Size& screen, bool isTouched);

/// The class in which the client starts: a pad on a tablet's screen, or in a window that opens wide. One that
/// is wide but low is a phone held sideways. `window`: its size where the user has chosen one. Sizes in
/// points.
Idiom deviceClassOf(const Size& screen, bool isTouched, const std::optional<Size>& window);

/// The class that a window has come to by being resized; none where that leaves the class as it is: a window
/// that is wide and low.
Idiom deviceClassAt(const Size& window, double border);

}  // namespace fleetor
