#pragma once

#include "demo/map/canvas.h"

namespace fleetor::demo {

// What an aerial photograph has and a map has not. The textures repeat every two tiles, so that tiles join.

// Over the whole tile.
void paintGrain(Canvas& canvas);
// Tree crowns inside the current path, which is gone afterwards; zoom 16 and up.
void fillWithCanopy(Canvas& canvas);
// Furrows inside the current path, which is gone afterwards.
void fillWithFurrows(Canvas& canvas, double bearing);

}  // namespace fleetor::demo
