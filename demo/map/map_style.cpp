#include "demo/map/map_style.h"

namespace fleetor::demo {
namespace {

constexpr Colour standardFields[] = {0xf3f0da, 0xedefd6, 0xf6efd5};
constexpr Colour standardRoofs[] = {0xe4ded4, 0xe0dacf, 0xddd6cb};
constexpr Colour standardLargeRoofs[] = {0xdedbd9, 0xd9d5d1};
constexpr Colour standardTrees[] = {0xb9d8a5};

constexpr Palette standardPalette{
    .sea = 0xa9d3ea,
    .shallows = 0xb4daee,
    .land = 0xeef0df,
    .sand = 0xf3e9cb,
    // field, meadow, wood, builtUp, housing, oldTown
    .uses = {0xf0f0dc, 0xe2ecca, 0xc3ddac, 0xefece6, 0xf1efea, 0xf0ebe2,
             // retail, industry, school, sports, cemetery, park
             0xf6ecea, 0xebe9ef, 0xf3eedb, 0xd7e9c0, 0xd3e2c4, 0xcbe6b3,
             // square, garden, lawn, parking, pitch, water
             0xf3eee6, 0xe4ecd6, 0xd9e9c4, 0xe9e8e8, 0xb5dba0, 0xa9d3ea},
    .fields = standardFields,
    .hedge = 0xd3ddb9,
    .bank = 0x89b5cf,
    .wall = 0xc9c1b4,
    .roofs = standardRoofs,
    .largeRoofs = standardLargeRoofs,
    .trees = standardTrees,
    .bay = 0xffffff,
    .bridge = 0x8c8880,
    .roads = {{{0xd8cdb6, 0xd8cdb6},
               {0xffffff, 0xdcd7cd},
               {0xffffff, 0xd9d4ca},
               {0xffffff, 0xcfc8ba},
               {0xffeaa6, 0xe3c36f},
               {0xffcd7d, 0xdf9f49}}},
};

constexpr Colour darkFields[] = {0x21292a, 0x1f2a28, 0x252a29};
constexpr Colour darkRoofs[] = {0x363f4c, 0x333b47, 0x303843};
constexpr Colour darkLargeRoofs[] = {0x3a4250, 0x363e4a};
constexpr Colour darkTrees[] = {0x294c3e};

constexpr Palette darkPalette{
    .sea = 0x132a40,
    .shallows = 0x16304a,
    .land = 0x1e2729,
    .sand = 0x35352f,
    .uses = {0x1f2829, 0x1f2d2a, 0x1b342b, 0x222932, 0x242b35, 0x282d36, 0x2d2c37, 0x2a2d38, 0x2c2e34,
             0x20372f, 0x223530, 0x1d3b2f, 0x2e323a, 0x24322f, 0x213530, 0x2b313b, 0x275040, 0x132a40},
    .fields = darkFields,
    .hedge = 0x2a3a33,
    .bank = 0x1d3b55,
    .wall = 0x1c222b,
    .roofs = darkRoofs,
    .largeRoofs = darkLargeRoofs,
    .trees = darkTrees,
    .bay = 0x465160,
    .bridge = 0x0a0e13,
    .roads = {{{0x3f4a4b, 0x3f4a4b},
               {0x3b4554, 0x1b222b},
               {0x414c5c, 0x1b222b},
               {0x4c586a, 0x191f28},
               {0x75683f, 0x1a1c1e},
               {0x94703a, 0x1c1a18}}},
};

constexpr Colour crops[] = {0x77853f, 0x96914f, 0x65793a, 0xa99b60, 0x587036,
                            0x8c8249, 0x8d7350, 0x839350, 0xb3a76a};
constexpr Colour tiledRoofs[] = {0x9a5b42, 0x8a4f3b, 0x66676b, 0x7a6353, 0xa66a4c, 0x74757a, 0x5c5a59};
constexpr Colour flatRoofs[] = {0xb2b1ab, 0x9b9d9f, 0xc4c2bb, 0x868b90};
constexpr Colour crowns[] = {0x3c5a2c, 0x4a6a35, 0x56743f};

constexpr Palette aerialPalette{
    .aerial = true,
    .sea = 0x17384a,
    .shallows = 0x3d7f86,
    .land = 0x66733f,
    .sand = 0xc2b48c,
    .uses = {0x77853f, 0x758747, 0x36502d, 0x7d7f66, 0x757e52, 0x928c80, 0x92918c, 0x8f8d86, 0x848665,
             0x66803f, 0x6b7d4c, 0x5f7a3c, 0xb0a797, 0x74824a, 0x6d8545, 0x77777a, 0x58893f, 0x2b4c53},
    .fields = crops,
    .hedge = 0x4b5f35,
    .bank = 0x27413a,
    .wall = 0x40413f,
    .roofs = tiledRoofs,
    .largeRoofs = flatRoofs,
    .trees = crowns,
    .bay = 0xd0d0cb,
    .bridge = 0xb7b4ac,
    .roads = {{{0xb3a686, 0xb3a686},
               {0x9d9580, 0xa9a59a},
               {0x85847f, 0xa9a59a},
               {0x7d7d7b, 0xa9a59a},
               {0x747576, 0xa9a59a},
               {0x6d6e70, 0xa9a59a}}},
};

// By RoadClass, for zooms 8 to 17; doubled with every further zoom.
constexpr double widths[roadClasses][10] = {
    {0, 0, 0, 0, 0, 0, 0.6, 0.9, 1.4, 2.6},           {0, 0, 0, 0, 0, 0, 0, 1.0, 2.2, 5},
    {0, 0, 0, 0, 0.6, 1.2, 2.4, 4.4, 7.2, 11.5},      {0, 0, 0, 0.8, 1.4, 2.4, 3.8, 6.0, 9.4, 15.5},
    {0, 0.7, 1.0, 1.5, 2.3, 3.4, 5.0, 7.6, 12, 20.5}, {0, 0.9, 1.4, 2.0, 3.0, 4.2, 6.0, 9.0, 14.5, 26},
};

}  // namespace

const Palette& paletteOf(MapStyle style) {
  const Palette* const palettes[] = {&standardPalette, &darkPalette, &aerialPalette};
  return *palettes[static_cast<int>(style)];
}

TextColours textColours(MapStyle style, NameKind kind) {
  // Standard and dark, by NameKind.
  constexpr Colour inks[][2] = {{0x2c2f36, 0xeef2f7}, {0x2c2f36, 0xeef2f7}, {0x3f7da6, 0x8fbede},
                                {0x3f7da6, 0x8fbede}, {0x3d7a3c, 0x93c9a2}, {0x6f6187, 0xb9b3cf},
                                {0x55504a, 0xd3dae3}, {0x86796a, 0x97a2b1}, {0xffffff, 0xffffff},
                                {0x3f7da6, 0x8fbede}, {0x2c2f36, 0xeef2f7}};
  constexpr Colour halos[] = {0xffffff, 0x171d25, 0x10181c};
  constexpr Colour waterHalos[] = {0xcfe6f3, 0x10222f, 0x10222f};
  const bool water = kind == NameKind::sea || kind == NameKind::water || kind == NameKind::river;
  const auto index = static_cast<std::size_t>(style);
  const Colour halo = water ? waterHalos[index] : kind == NameKind::parking ? 0x4a78b8 : halos[index];
  return {inks[static_cast<std::size_t>(kind)][style == MapStyle::standard ? 0 : 1], halo};
}

double roadWidth(RoadClass kind, int zoom) {
  const auto& ofKind = widths[static_cast<int>(kind)];
  if (zoom < 8) return 0;
  return zoom <= 17 ? ofKind[zoom - 8] : ofKind[9] * std::exp2(zoom - 17);
}

}  // namespace fleetor::demo
