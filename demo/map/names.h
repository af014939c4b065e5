#pragma once

#include <array>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "demo/map/atlas.h"
#include "demo/map/canvas.h"

namespace fleetor::demo {

enum class Face { regular, bold, italic };

// The outlines of a typeface's letters, so that names can bend along streets and are the same on every tile.
// Read-only after construction, from any thread.
class Lettering {
 public:
  struct Letter {
    // One unit is the size of the type; y downwards from the base line. None for a blank.
    std::shared_ptr<cairo_path_t> outline;
    double advance = 0;
  };

  Lettering();
  // One letter for each character of the text; characters that are not expected in names are left out.
  std::vector<const Letter*> letters(std::string_view utf8, Face face) const;

 private:
  std::map<std::pair<Face, std::string>, Letter> letters_;
};

struct PlacedLetter {
  const Lettering::Letter* letter = nullptr;
  Point at;          // the beginning of its base line
  double angle = 0;  // counter-clockwise from east
};

struct PlacedName {
  const Name* name = nullptr;
  double size = 0;  // of the type, pixels
  Box box;
  std::vector<PlacedLetter> letters;
};

// Places the names of a whole zoom level at once, none over another, and draws on each tile those that it
// shows, so that neighbouring tiles agree. A zoom is laid out when it is first needed. From any thread.
class NameBoard {
 public:
  explicit NameBoard(const Atlas& atlas) : atlas_(atlas) {}

  void paint(Canvas& canvas, MapStyle style) const;

 private:
  struct Level {
    std::once_flag once;
    std::vector<PlacedName> names;
    PlaceIndex index{1};
  };

  const Atlas& atlas_;
  Lettering lettering_;
  mutable std::array<Level, 20> levels_;
};

}  // namespace fleetor::demo
