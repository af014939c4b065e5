#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <span>

#include "demo/map/atlas.h"

namespace fleetor::demo {

// 0xrrggbb.
using Colour = std::uint32_t;

inline Colour mixed(Colour a, Colour b, double t) {
  Colour result = 0;
  for (const int shift : {0, 8, 16}) {
    const double from = (a >> shift) & 0xff;
    const double to = (b >> shift) & 0xff;
    result |= static_cast<Colour>(std::lround(from + (to - from) * t)) << shift;
  }
  return result;
}

enum class MapStyle : std::uint8_t { standard, dark, satellite };

struct RoadColours {
  Colour surface;
  Colour border;
};

struct TextColours {
  Colour ink;
  Colour halo;
};

struct Palette {
  bool aerial = false;  // with shadows, textures and cars
  Colour sea = 0;
  Colour shallows = 0;
  Colour land = 0;
  Colour sand = 0;
  std::array<Colour, 18> uses{};  // by LandUse
  std::span<const Colour> fields;
  Colour hedge = 0;
  Colour bank = 0;
  Colour wall = 0;
  std::span<const Colour> roofs;
  std::span<const Colour> largeRoofs;
  std::span<const Colour> trees;
  Colour bay = 0;     // the lines between parking bays
  Colour bridge = 0;  // the border of one
  std::array<RoadColours, roadClasses> roads{};
};

const Palette& paletteOf(MapStyle style);
TextColours textColours(MapStyle style, NameKind kind);

// Of the whole road in pixels; 0 where a map of this zoom leaves it out.
double roadWidth(RoadClass kind, int zoom);

}  // namespace fleetor::demo
