#pragma once

#include <cairo.h>

#include <array>
#include <memory>

#include "demo/map/canvas.h"

namespace fleetor::demo {

// What a photograph has and a map has not: grain, the crowns of a wood, furrows. The pictures repeat every
// few tiles and begin at a tile's corner, so that tiles join. Read-only after construction, from any thread.
class AerialTextures {
 public:
  AerialTextures();

  // Over the whole tile.
  void paintGrain(Canvas& canvas, const TileAddress& tile) const;
  // These two fill the current path; the first takes it, the second leaves it.
  void fillWithCanopy(Canvas& canvas, const TileAddress& tile, Colour colour) const;
  static void fillWithFurrows(Canvas& canvas, double bearing);

 private:
  struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  };
  using Picture = std::unique_ptr<cairo_surface_t, Destroy>;

  static constexpr int kSide = 512;

  static Picture drawGrain();
  static Picture drawCanopy(double radius);

  Picture grain_;
  std::array<Picture, 4> canopies_;  // for zooms 16 to 19
};

}  // namespace fleetor::demo
