#include "demo/map/canvas.h"

namespace fleetor::demo {

Canvas::Canvas(const TileAddress& tile, int scale)
    : box_(tile.box()),
      zoom_(tile.zoom),
      metresPerPixel_(demo::metresPerPixel(tile.zoom)),
      surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kTilePixels * scale, kTilePixels * scale)),
      cairo_(cairo_create(surface_.get())) {
  cairo_scale(cairo_.get(), scale, scale);
  cairo_set_line_join(cairo_.get(), CAIRO_LINE_JOIN_ROUND);
  cairo_set_line_cap(cairo_.get(), CAIRO_LINE_CAP_ROUND);
  // Cairo counts in 24 bits of whole pixels: what lies far off must be cut away first.
  drawnBox_ = boxWithMargin(64);
}

void Canvas::addPolygon(const Shape& polygon) {
  const Box whole = boxOf(polygon);
  if (polygon.size() < 3 || !whole.meets(drawnBox_)) return;
  const bool inside =
      drawnBox_.holds({whole.left, whole.bottom}) && drawnBox_.holds({whole.right, whole.top});
  const Shape cut = inside ? Shape() : clipped(polygon, drawnBox_);
  bool begun = false;
  for (const Point p : inside ? polygon : cut) {
    const Point at = pixel(p);
    if (begun)
      cairo_line_to(cairo(), at.x, at.y);
    else
      cairo_move_to(cairo(), at.x, at.y);
    begun = true;
  }
  if (begun) cairo_close_path(cairo());
}

void Canvas::addLine(const Shape& line) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    const Point at = pixel(line[i]);
    if (i == 0)
      cairo_move_to(cairo(), at.x, at.y);
    else
      cairo_line_to(cairo(), at.x, at.y);
  }
}

void Canvas::addDisc(Point middle, double radius) {
  const Point at = pixel(middle);
  cairo_new_sub_path(cairo());
  cairo_arc(cairo(), at.x, at.y, radius, 0, 2 * std::numbers::pi);
}

void Canvas::use(Colour colour, double alpha) {
  cairo_set_source_rgba(cairo(), ((colour >> 16) & 0xff) / 255.0, ((colour >> 8) & 0xff) / 255.0,
                        (colour & 0xff) / 255.0, alpha);
}

void Canvas::fill(Colour colour, double alpha) {
  use(colour, alpha);
  cairo_fill(cairo());
}

void Canvas::stroke(Colour colour, double width, double alpha) {
  use(colour, alpha);
  cairo_set_line_width(cairo(), width);
  cairo_stroke(cairo());
}

void Canvas::paint(Colour colour, double alpha) {
  use(colour, alpha);
  cairo_paint(cairo());
}

}  // namespace fleetor::demo
