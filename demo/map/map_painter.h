#pragma once

#include "demo/map/atlas.h"
#include "demo/map/canvas.h"
#include "demo/map/map_style.h"

namespace fleetor::demo {

// Draws the ground, the water, the roads and the buildings of a tile; no names. Both from any thread.
void paintMap(Canvas& canvas, const Atlas& atlas, const Palette& palette);
void paintAerial(Canvas& canvas, const TileAddress& tile, const Atlas& atlas);

}  // namespace fleetor::demo
