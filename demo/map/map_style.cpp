#include "demo/map/map_style.h"

namespace fleetor::demo {
namespace {

constexpr Palette kStandard{
    .sea = 0xa9d3ea,
    .land = 0xeef0df,
    .sand = 0xf3e9cb,
    // field, meadow, wood, builtUp, housing, oldTown
    .uses = {0xf0f0dc, 0xe2ecca, 0xc3ddac, 0xefece6, 0xf1efea, 0xf0ebe2,
             // retail, industry, school, sports, cemetery, park
             0xf6ecea, 0xebe9ef, 0xf3eedb, 0xd7e9c0, 0xd3e2c4, 0xcbe6b3,
             // square, garden, lawn, parking, pitch, water
             0xf3eee6, 0xe4ecd6, 0xd9e9c4, 0xe9e8e8, 0xb5dba0, 0xa9d3ea},
    .fields = {0xf3f0da, 0xedefd6, 0xf6efd5},
    .hedge = 0xd3ddb9,
    .wall = 0xc9c1b4,
    .roof = 0xe4ded4,
    .largeRoof = 0xdedbd9,
    .tree = 0xa9d191,
    .bay = 0xffffff,
    .bridge = 0x8c8880,
    .roads = {{{0xd8cdb6, 0xd8cdb6},
               {0xffffff, 0xdcd7cd},
               {0xffffff, 0xd9d4ca},
               {0xffffff, 0xcfc8ba},
               {0xffeaa6, 0xe3c36f},
               {0xffcd7d, 0xdf9f49}}},
};

constexpr Palette kDark{
    .sea = 0x132a40,
    .land = 0x1e2729,
    .sand = 0x35352f,
    .uses = {0x1f2829, 0x1f2d2a, 0x1b342b, 0x222932, 0x242b35, 0x282d36, 0x2d2c37, 0x2a2d38, 0x2c2e34,
             0x20372f, 0x223530, 0x1d3b2f, 0x2e323a, 0x24322f, 0x213530, 0x2b313b, 0x275040, 0x132a40},
    .fields = {0x21292a, 0x1f2a28, 0x252a29},
    .hedge = 0x2a3a33,
    .wall = 0x1c222b,
    .roof = 0x363f4c,
    .largeRoof = 0x3a4250,
    .tree = 0x2b5643,
    .bay = 0x465160,
    .bridge = 0x0a0e13,
    .roads = {{{0x3f4a4b, 0x3f4a4b},
               {0x3b4554, 0x1b222b},
               {0x414c5c, 0x1b222b},
               {0x4c586a, 0x191f28},
               {0x75683f, 0x1a1c1e},
               {0x94703a, 0x1c1a18}}},
};

struct WidthRow {
  double widths[18 - 8];  // zooms 8 to 17; doubled with every further zoom
};

// By RoadClass.
constexpr WidthRow kWidths[] = {
    {{0, 0, 0, 0, 0, 0, 0.6, 0.9, 1.4, 2.6}},           {{0, 0, 0, 0, 0, 0, 0, 1.0, 2.2, 5}},
    {{0, 0, 0, 0, 0.6, 1.2, 2.4, 4.4, 7.2, 11.5}},      {{0, 0, 0, 0.8, 1.4, 2.4, 3.8, 6.0, 9.4, 15.5}},
    {{0, 0.7, 1.0, 1.5, 2.3, 3.4, 5.0, 7.6, 12, 20.5}}, {{0, 0.9, 1.4, 2.0, 3.0, 4.2, 6.0, 9.0, 14.5, 26}},
};

}  // namespace

const Palette& paletteOf(MapLook look) {
  return look == MapLook::dark ? kDark : kStandard;
}

TextColours textColours(MapLook look, NameKind kind) {
  const bool dark = look != MapLook::standard;
  const Colour halo = look == MapLook::satellite ? 0x10181c : dark ? 0x171d25 : 0xffffff;
  switch (kind) {
    case NameKind::sea:
    case NameKind::water:
    case NameKind::river:
      return look == MapLook::standard ? TextColours{0x3f7da6, 0xcfe6f3}
                                       : TextColours{0x8fbede, dark ? 0x10222f : halo};
    case NameKind::park:
      return dark ? TextColours{0x93c9a2, halo} : TextColours{0x3d7a3c, halo};
    case NameKind::landmark:
      return dark ? TextColours{0xb9b3cf, halo} : TextColours{0x6f6187, halo};
    case NameKind::parking:
      return {0xffffff, 0x4a78b8};
    case NameKind::house:
      return dark ? TextColours{0x97a2b1, halo} : TextColours{0x86796a, halo};
    case NameKind::town:
    case NameKind::city:
    case NameKind::village:
      return dark ? TextColours{0xeef2f7, halo} : TextColours{0x2c2f36, halo};
    case NameKind::street:
      break;
  }
  return dark ? TextColours{0xd3dae3, halo} : TextColours{0x55504a, halo};
}

double roadWidth(RoadClass kind, int zoom) {
  const auto& widths = kWidths[static_cast<int>(kind)].widths;
  if (zoom < 8) return 0;
  return zoom <= 17 ? widths[zoom - 8] : widths[9] * std::exp2(zoom - 17);
}

}  // namespace fleetor::demo
