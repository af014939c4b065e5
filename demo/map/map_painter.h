#pragma once

#include "demo/map/canvas.h"

namespace fleetor::demo {

// Draws the ground, the water, the roads and the buildings of a tile; no names. From any thread.
void paintMap(Canvas& canvas, const Atlas& atlas, const Palette& palette);

}  // namespace fleetor::demo
