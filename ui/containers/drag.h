#pragma once

#include <cmath>

namespace fleetor {

/// A horizontal drag at the moment when the finger is lifted.
struct Drag {
  double moved = 0;  ///< points from where it began
  double speed = 0;  ///< points a second, 0 for a finger that has rested

  /// The direction in which what was dragged goes on: -1 or 1, or 0 for back to where it was. A fast finger
  /// decides by its direction, a slow one by having moved further than `needed` points.
  int direction(double needed) const {
    constexpr double fast = 300;
    const int way = moved < 0 ? -1 : 1;
    if (std::abs(speed) >= fast) return speed * way > 0 ? way : 0;
    return std::abs(moved) > needed ? way : 0;
  }
};

}  // namespace fleetor
