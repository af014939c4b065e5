#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace fleetor {

// A page to print. Places and lengths are millimetres from the upper left corner, colours 0xRRGGBB.

struct PagePoint {
  double x = 0;
  double y = 0;

  friend bool operator==(const PagePoint&, const PagePoint&) = default;
};

struct PageBox {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
};

/// A text in one line, in the middle of the height of its box; what is too long ends in an ellipsis.
struct PageText {
  enum class Align { start, centre, end };

  PageBox box;
  std::string text;
  double points = 9;  ///< size of the letters
  bool bold = false;
  Align align = Align::start;
  std::uint32_t colour = 0x1b252d;
};

struct PageArea {
  PageBox box;
  std::uint32_t colour = 0;
};

struct PageLine {
  std::vector<PagePoint> points;
  double width = 0.2;
  std::uint32_t colour = 0;
};

/// Areas are drawn first, then lines, then texts. Texts mirror in languages that are read from the right;
/// areas and lines do not, for maps and hours run the same way everywhere.
struct Page {
  double width = 210;
  double height = 297;
  std::string title;  ///< of the document
  std::vector<PageArea> areas;
  std::vector<PageLine> lines;
  std::vector<PageText> texts;
};

}  // namespace fleetor
