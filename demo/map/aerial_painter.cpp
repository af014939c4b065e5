#include "demo/map/map_painter.h"

namespace fleetor::demo {

void paintAerial(Canvas& canvas, const Atlas& atlas) {
  paintMap(canvas, atlas, paletteOf(MapLook::standard));
}

}  // namespace fleetor::demo
