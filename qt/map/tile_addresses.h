#pragma once

#include <string>

#include "map/tile_loader.h"

namespace fleetor {

/// The addresses of the tiles and what their owners require in return.
struct TileAddresses {
  /// Templates: {z}, {x} and {y} stand for the tile, {scale} for 1 or 2, {r} for nothing or "@2x". An empty
  /// one means that there are no such tiles.
  std::string standard;
  std::string dark;
  std::string satellite;
  std::string attribution;  ///< of the standard and the dark tiles; must be seen beside them
  std::string satelliteAttribution;
  std::string userAgent;  ///< sent with each request
  int maximumZoom = 19;

  /// What the program was built with: the FLEETOR_TILES_ variables of the build. {service} in a template
  /// stands for that address, which has no trailing slash.
  static TileAddresses compiledIn(const std::string& serviceURL);

  /// The standard one where there is no dark one.
  const std::string& urlTemplate(MapStyle style) const;
};

}  // namespace fleetor
