#pragma once

#include <array>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "demo/map/atlas.h"
#include "demo/map/canvas.h"
#include "demo/map/lettering.h"
#include "demo/map/map_style.h"

namespace fleetor::demo {

// Places the names of a whole zoom level at once, none over another, and draws on each tile what it shows of
// them: so that neighbouring tiles agree. A zoom is laid out when it is first asked for. From any thread.
class NameBoard {
 public:
  explicit NameBoard(const Atlas& atlas) : atlas_(atlas) {}

  void paint(Canvas& canvas, MapLook look) const;

  struct PlacedLetter {
    const Lettering::Letter* letter = nullptr;
    Point at;          // the beginning of its base line on the sheet
    double angle = 0;  // counter-clockwise from east
  };
  struct PlacedName {
    const Name* name = nullptr;
    double size = 0;  // of the type, pixels
    Box box;          // on the sheet
    std::vector<PlacedLetter> letters;
  };
  // In the order of placing.
  const std::vector<PlacedName>& placedAt(int zoom) const;

 private:
  friend class NamePlacer;

  struct Level {
    std::once_flag once;
    std::vector<PlacedName> names;
    std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> byTile;
  };

  const Level& level(int zoom) const;

  const Atlas& atlas_;
  Lettering lettering_;
  mutable std::array<Level, 20> levels_;
};

}  // namespace fleetor::demo
