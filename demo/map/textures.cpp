#include "demo/map/textures.h"

#include <numbers>

#include "demo/town/random.h"

namespace fleetor::demo {
namespace {

using Picture = std::shared_ptr<cairo_surface_t>;

constexpr int side = 2 * Canvas::tilePixels;

Picture emptyPicture() {
  return {cairo_image_surface_create(CAIRO_FORMAT_ARGB32, side, side), cairo_surface_destroy};
}

// Noise in [-0.5, 0.5) that continues where the picture repeats.
double wrappedNoise(std::uint64_t seed, int x, int y, int cell) {
  const auto corner = [&](int i, int j) {
    return static_cast<double>(hashOf(seed, i % (side / cell), j % (side / cell)) >> 11) * 0x1p-53 - 0.5;
  };
  const int i = x / cell;
  const int j = y / cell;
  const double u = static_cast<double>(x % cell) / cell;
  return std::lerp(std::lerp(corner(i, j), corner(i + 1, j), u),
                   std::lerp(corner(i, j + 1), corner(i + 1, j + 1), u),
                   static_cast<double>(y % cell) / cell);
}

Picture drawGrain() {
  Picture picture = emptyPicture();
  unsigned char* data = cairo_image_surface_get_data(picture.get());
  const int stride = cairo_image_surface_get_stride(picture.get());
  for (int y = 0; y < side; ++y)
    for (int x = 0; x < side; ++x) {
      const double light = 0.09 * wrappedNoise(1, x, y, 64) + 0.07 * wrappedNoise(2, x, y, 16) +
                           0.10 * wrappedNoise(3, x, y, 4);
      // Black or white with an alpha of few steps, so that the files stay small.
      const auto alpha = static_cast<unsigned char>(std::abs(std::round(light * 64)) * 4);
      unsigned char* pixel = data + std::ptrdiff_t{y} * stride + std::ptrdiff_t{x} * 4;
      pixel[0] = pixel[1] = pixel[2] = light < 0 ? 0 : alpha;
      pixel[3] = alpha;
    }
  cairo_surface_mark_dirty(picture.get());
  return picture;
}

Picture drawCanopy(double radius) {
  Picture picture = emptyPicture();
  const std::unique_ptr<cairo_t, void (*)(cairo_t*)> cairo(cairo_create(picture.get()), cairo_destroy);
  Random random(5);
  const auto disc = [&](double x, double y, double r, double red, double green, double blue, double alpha) {
    cairo_arc(cairo.get(), x, y, r, 0, 2 * std::numbers::pi);
    cairo_set_source_rgba(cairo.get(), red, green, blue, alpha);
    cairo_fill(cairo.get());
  };
  for (int left = static_cast<int>(0.75 * side * side / (radius * radius)); left > 0; --left) {
    const double x = random.between(0, side);
    const double y = random.between(0, side);
    const double r = radius * random.between(0.6, 1.25);
    const double light = random.between(-0.10, 0.12);
    // A crown over the border continues on the other side.
    for (const int dx : {-side, 0, side})
      for (const int dy : {-side, 0, side}) {
        if (std::max(std::abs(x + dx - side / 2.0), std::abs(y + dy - side / 2.0)) > side / 2.0 + 2 * r)
          continue;
        disc(x + dx + r * 0.35, y + dy - r * 0.4, r, 0.02, 0.05, 0.02, 0.28);
        disc(x + dx, y + dy, r, 0.22 + light, 0.33 + light, 0.17 + light * 0.7, 0.9);
      }
  }
  return picture;
}

void useRepeated(Canvas& canvas, const Picture& picture) {
  cairo_set_source_surface(canvas.cairo(), picture.get(), -(canvas.tile().x % 2) * Canvas::tilePixels,
                           -(canvas.tile().y % 2) * Canvas::tilePixels);
  cairo_pattern_set_extend(cairo_get_source(canvas.cairo()), CAIRO_EXTEND_REPEAT);
}

}  // namespace

void paintGrain(Canvas& canvas) {
  static const Picture grain = drawGrain();
  useRepeated(canvas, grain);
  // From high above, and over the sea, the repetition would be visible.
  cairo_paint_with_alpha(canvas.cairo(), canvas.zoom() < 10 ? 0.3 : canvas.zoom() < 14 ? 0.7 : 1);
}

void fillWithCanopy(Canvas& canvas) {
  static const Picture canopies[] = {drawCanopy(3.4), drawCanopy(6.8), drawCanopy(13.6), drawCanopy(27.2)};
  useRepeated(canvas, canopies[std::clamp(canvas.zoom() - 16, 0, 3)]);
  cairo_fill(canvas.cairo());
}

void fillWithFurrows(Canvas& canvas, double bearing) {
  // Counted from the market square, so that neighbouring tiles agree; six metres from furrow to furrow, but
  // never so close that they flicker.
  const Point square = canvas.pixel({0, 0});
  const double half = std::max(4.0, canvas.pixels(6)) / 2;
  const Point across{std::sin(bearing), std::cos(bearing)};
  // The whole furrows between there and here are left out: cairo's numbers are small.
  const Point near = across * std::remainder(dot(square, across), 2 * half);
  const Point to = near + across * half;
  cairo_pattern_t* pattern = cairo_pattern_create_linear(near.x, near.y, to.x, to.y);
  cairo_pattern_add_color_stop_rgba(pattern, 0, 0, 0, 0, 0.07);
  cairo_pattern_add_color_stop_rgba(pattern, 1, 1, 1, 1, 0.07);
  cairo_pattern_set_extend(pattern, CAIRO_EXTEND_REFLECT);
  cairo_set_source(canvas.cairo(), pattern);
  cairo_pattern_destroy(pattern);
  cairo_fill(canvas.cairo());
}

}  // namespace fleetor::demo
