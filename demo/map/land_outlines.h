#pragma once

#include <vector>

#include "demo/map/shapes.h"

namespace fleetor::demo {

// The coasts of the world on the sheet, good for zooms up to 9 or so.
std::vector<Shape> landOutlines();

}  // namespace fleetor::demo
