#pragma once

#include <cairo.h>

#include <memory>
#include <string>

#include "demo/map/map_style.h"
#include "demo/map/shapes.h"

namespace fleetor::demo {

// A tile to draw on. Shapes are given in the town's plane, widths in pixels of scale 1. A shape beyond the
// border is drawn just as on the neighbouring tile. For one thread.
class Canvas {
 public:
  static constexpr int tilePixels = 256;

  // `scale` 1 or 2: how many pixels of the picture make one of the map.
  Canvas(const TileAddress& tile, int scale);

  const TileAddress& tile() const { return tile_; }
  int zoom() const { return tile_.zoom; }
  const Box& box() const { return box_; }
  // What this canvas shows of the plane and a margin of 64 pixels.
  const Box& reach() const { return reach_; }
  double pixels(double metres) const { return metres / metresPerPixel_; }
  Point pixel(Point inTown) const {
    return {(inTown.x - box_.left) / metresPerPixel_, (box_.top - inTown.y) / metresPerPixel_};
  }

  // Into the current path.
  void addPolygon(const Shape& polygon);
  void addLine(const Shape& line);
  void addDisc(Point middle, double radius);

  void use(Colour colour, double alpha = 1);
  // Of the current path, which is gone afterwards.
  void fill(Colour colour, double alpha = 1);
  void stroke(Colour colour, double width, double alpha = 1);
  void fillAndStroke(Colour inside, Colour border, double width);

  cairo_t* cairo() { return cairo_.get(); }
  cairo_surface_t* surface() { return surface_.get(); }
  // The picture as a PNG file.
  std::string png();

 private:
  struct Destroy {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  };

  TileAddress tile_;
  Box box_;
  double metresPerPixel_;
  Box reach_;
  std::unique_ptr<cairo_surface_t, Destroy> surface_;
  std::unique_ptr<cairo_t, Destroy> cairo_;
};

}  // namespace fleetor::demo
