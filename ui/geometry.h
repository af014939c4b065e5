#pragma once

namespace fleetor {

/// Components from 0 to 1.
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;

  friend bool operator==(const Color&, const Color&) = default;
};

inline constexpr Color whiteColor{1, 1, 1, 1};
inline constexpr Color clearColor{0, 0, 0, 0};

/// Points.
struct Size {
  double width = 0;
  double height = 0;

  friend bool operator==(const Size&, const Size&) = default;
};

/// Points; the origin is the top left corner.
struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace fleetor
