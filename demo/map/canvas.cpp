#include "demo/map/canvas.h"

#include <png.h>

#include <new>
#include <vector>

namespace fleetor::demo {

Canvas::Canvas(const TileAddress& tile, int scale)
    : tile_(tile),
      box_(tile.box()),
      metresPerPixel_(tile.metres() / tilePixels),
      reach_(box_.grownBy(64 * metresPerPixel_)),
      surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, tilePixels * scale, tilePixels * scale)),
      cairo_(cairo_create(surface_.get())) {
  cairo_scale(cairo_.get(), scale, scale);
  cairo_set_line_join(cairo_.get(), CAIRO_LINE_JOIN_ROUND);
  cairo_set_line_cap(cairo_.get(), CAIRO_LINE_CAP_ROUND);
}

void Canvas::addPolygon(const Shape& polygon) {
  const Box whole = boxOf(polygon);
  if (polygon.size() < 3 || !whole.meets(reach_)) return;
  // Cairo counts in 24 bits of whole pixels: what lies far off must be cut away first.
  const bool inside = reach_.holds({whole.left, whole.bottom}) && reach_.holds({whole.right, whole.top});
  const Shape cut = inside ? Shape() : clipped(polygon, reach_);
  addLine(inside ? polygon : cut);
  if (inside || !cut.empty()) cairo_close_path(cairo());
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

void Canvas::fillAndStroke(Colour inside, Colour border, double width) {
  use(inside);
  cairo_fill_preserve(cairo());
  stroke(border, width);
}

// Not cairo's own writer: that packs at zlib's highest level, which takes several times as long.
std::string Canvas::png() {
  cairo_surface_flush(surface());
  png_struct* writer = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_info* info = png_create_info_struct(writer);
  std::string file;
  png_set_write_fn(
      writer, &file,
      [](png_struct* to, png_byte* data, std::size_t size) {
        static_cast<std::string*>(png_get_io_ptr(to))->append(reinterpret_cast<char*>(data), size);
      },
      nullptr);
  const int side = cairo_image_surface_get_width(surface());
  const auto size = static_cast<png_uint_32>(side);
  png_set_IHDR(writer, info, size, size, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_set_compression_level(writer, 4);
  png_set_filter(writer, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE | PNG_FILTER_SUB | PNG_FILTER_UP);
  png_write_info(writer, info);
  png_set_bgr(writer);
  png_set_filler(writer, 0, PNG_FILLER_AFTER);
  for (int y = 0; y < side; ++y)
    png_write_row(writer, cairo_image_surface_get_data(surface()) +
                              std::ptrdiff_t{y} * cairo_image_surface_get_stride(surface()));
  png_write_end(writer, nullptr);
  png_destroy_write_struct(&writer, &info);
  return file;
}

}  // namespace fleetor::demo
