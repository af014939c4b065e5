#pragma once

#include "platform/device.h"
#include "ui/geometry.h"

namespace fleetor {

/// The class in which the client starts: a pad on a touch screen that is long in both directions, or in a
/// window that opens wide. One that is wide but low is a phone held sideways. Sizes in points.
Idiom deviceClassOf(const Size& screen, bool isTouched, const Size& window);

/// The class that a window has come to by being resized; none where that leaves the class as it is: a window
/// that is wide and low.
Idiom deviceClassAt(const Size& window);

}  // namespace fleetor
