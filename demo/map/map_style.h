#pragma once

#include <array>
#include <string_view>

#include "demo/map/atlas.h"
#include "demo/map/canvas.h"

namespace fleetor::demo {

enum class MapLook : std::uint8_t { standard, dark, satellite };

struct RoadColours {
  Colour surface;
  Colour border;
};

struct TextColours {
  Colour ink;
  Colour halo;
};

// The colours of a map that is drawn rather than photographed.
struct Palette {
  Colour sea;
  Colour land;
  Colour sand;
  std::array<Colour, 18> uses;  // by LandUse
  std::array<Colour, 3> fields;
  Colour hedge;
  Colour wall;
  Colour roof;
  Colour largeRoof;
  Colour tree;
  Colour bay;     // the lines between parking bays
  Colour bridge;  // the border of one
  std::array<RoadColours, kRoadClasses> roads;
};

const Palette& paletteOf(MapLook look);
TextColours textColours(MapLook look, NameKind kind);

// Of the whole road in pixels; 0 where a map of this zoom leaves it out.
double roadWidth(RoadClass kind, int zoom);

}  // namespace fleetor::demo
