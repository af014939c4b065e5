#pragma once

#include <cairo.h>

#include <memory>

#include "demo/map/shapes.h"

namespace fleetor::demo {

// 0xrrggbb.
using Colour = std::uint32_t;

constexpr Colour mixed(Colour a, Colour b, double t) {
  constexpr double half = 0.5;  // rounds: no part is below 0
  Colour result = 0;
  for (const int shift : {0, 8, 16}) {
    const double from = (a >> shift) & 0xff;
    const double to = (b >> shift) & 0xff;
    result |= static_cast<Colour>(from + (to - from) * t + half) << shift;
  }
  return result;
}

// A tile to draw on. Shapes are given on the sheet, widths in pixels of scale 1. A shape beyond the border is
// drawn just as on the neighbouring tile. For one thread.
class Canvas {
 public:
  static constexpr int kTilePixels = 256;

  // `scale` 1 or 2: how many pixels of the picture make one of the map.
  Canvas(const TileAddress& tile, int scale);

  const Box& box() const { return box_; }
  int zoom() const { return zoom_; }
  double pixels(double metres) const { return metres / metresPerPixel_; }
  Point pixel(Point onSheet) const {
    return {(onSheet.x - box_.left) / metresPerPixel_, (box_.top - onSheet.y) / metresPerPixel_};
  }
  // What this canvas shows of the sheet and a margin around, in pixels.
  Box boxWithMargin(double pixels) const { return box_.grownBy(pixels * metresPerPixel_); }

  // Into the current path.
  void addPolygon(const Shape& polygon);
  void addLine(const Shape& line);
  void addDisc(Point middle, double radius);

  void use(Colour colour, double alpha = 1);
  // Of the current path, which is gone afterwards.
  void fill(Colour colour, double alpha = 1);
  void stroke(Colour colour, double width, double alpha = 1);
  void paint(Colour colour, double alpha = 1);

  cairo_t* cairo() { return cairo_.get(); }
  cairo_surface_t* surface() { return surface_.get(); }

 private:
  struct Destroy {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  };

  Box box_;
  Box drawnBox_;
  int zoom_;
  double metresPerPixel_;
  std::unique_ptr<cairo_surface_t, Destroy> surface_;
  std::unique_ptr<cairo_t, Destroy> cairo_;
};

}  // namespace fleetor::demo
