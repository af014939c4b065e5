#include "demo/map/aerial_textures.h"

#include "demo/town/random.h"

namespace fleetor::demo {
namespace {

// Black or white over what lies below, in cairo's premultiplied form.
std::uint32_t shade(double light) {
  const auto alpha = static_cast<std::uint32_t>(std::min(255.0, std::abs(light) * 255));
  return light < 0 ? alpha << 24 : alpha << 24 | alpha << 16 | alpha << 8 | alpha;
}

double wrappedNoise(std::uint64_t seed, int x, int y, int side, int cell) {
  const int count = side / cell;
  const auto corner = [&](int i, int j) {
    return static_cast<double>(hashOf(seed, i % count, j % count) >> 11) * 0x1p-53;
  };
  const int i = x / cell;
  const int j = y / cell;
  const double u = static_cast<double>(x % cell) / cell;
  const double v = static_cast<double>(y % cell) / cell;
  return std::lerp(std::lerp(corner(i, j), corner(i + 1, j), u),
                   std::lerp(corner(i, j + 1), corner(i + 1, j + 1), u), v);
}

// One repeating picture as the source, its beginning at a tile's corner whose numbers divide by two.
void useRepeated(Canvas& canvas, cairo_surface_t* picture, const TileAddress& tile) {
  cairo_t* cairo = canvas.cairo();
  cairo_set_source_surface(cairo, picture, -(tile.x % 2) * Canvas::kTilePixels,
                           -(tile.y % 2) * Canvas::kTilePixels);
  cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_REPEAT);
}

}  // namespace

AerialTextures::AerialTextures() : grain_(drawGrain()) {
  for (std::size_t i = 0; i < canopies_.size(); ++i)
    canopies_[i] = drawCanopy(3.4 * std::exp2(static_cast<double>(i)));
}

AerialTextures::Picture AerialTextures::drawGrain() {
  Picture picture(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSide, kSide));
  unsigned char* data = cairo_image_surface_get_data(picture.get());
  const int stride = cairo_image_surface_get_stride(picture.get());
  for (int y = 0; y < kSide; ++y) {
    auto* row = reinterpret_cast<std::uint32_t*>(data + static_cast<std::ptrdiff_t>(y) * stride);
    for (int x = 0; x < kSide; ++x) {
      const double wide = wrappedNoise(1, x, y, kSide, 64) - 0.5;
      const double middle = wrappedNoise(2, x, y, kSide, 16) - 0.5;
      const double fine = wrappedNoise(3, x, y, kSide, 4) - 0.5;
      // In few steps, so that the files stay small.
      row[x] = shade(std::round((0.09 * wide + 0.07 * middle + 0.10 * fine) * 64) / 64);
    }
  }
  cairo_surface_mark_dirty(picture.get());
  return picture;
}

AerialTextures::Picture AerialTextures::drawCanopy(double radius) {
  Picture picture(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSide, kSide));
  const std::unique_ptr<cairo_t, void (*)(cairo_t*)> cairo(cairo_create(picture.get()), cairo_destroy);
  Random random(5);
  cairo_set_antialias(cairo.get(), CAIRO_ANTIALIAS_FAST);
  const int count = static_cast<int>(0.75 * kSide * kSide / (radius * radius));
  for (int i = 0; i < count; ++i) {
    const double x = random.between(0, kSide);
    const double y = random.between(0, kSide);
    const double r = radius * random.between(0.6, 1.25);
    const double light = random.between(-0.10, 0.12);
    // Crowns over the border come in again on the other side.
    for (const double dx : {-double{kSide}, 0.0, double{kSide}})
      for (const double dy : {-double{kSide}, 0.0, double{kSide}}) {
        if (std::abs(x + dx - kSide / 2.0) > kSide / 2.0 + 2 * r ||
            std::abs(y + dy - kSide / 2.0) > kSide / 2.0 + 2 * r)
          continue;
        cairo_arc(cairo.get(), x + dx + r * 0.35, y + dy - r * 0.4, r, 0, 2 * std::numbers::pi);
        cairo_set_source_rgba(cairo.get(), 0.02, 0.05, 0.02, 0.28);
        cairo_fill(cairo.get());
        cairo_arc(cairo.get(), x + dx, y + dy, r, 0, 2 * std::numbers::pi);
        cairo_set_source_rgba(cairo.get(), 0.22 + light, 0.33 + light, 0.17 + light * 0.7, 0.9);
        cairo_fill(cairo.get());
      }
  }
  return picture;
}

void AerialTextures::paintGrain(Canvas& canvas, const TileAddress& tile) const {
  useRepeated(canvas, grain_.get(), tile);
  // From high above, and over the sea, a tile's grain would only be seen to repeat.
  cairo_paint_with_alpha(canvas.cairo(), tile.zoom < 10 ? 0.3 : tile.zoom < 14 ? 0.7 : 1);
}

void AerialTextures::fillWithCanopy(Canvas& canvas, const TileAddress& tile, Colour colour) const {
  canvas.use(colour);
  cairo_fill_preserve(canvas.cairo());
  useRepeated(canvas, canopies_[static_cast<std::size_t>(std::clamp(tile.zoom - 16, 0, 3))].get(), tile);
  cairo_fill(canvas.cairo());
}

void AerialTextures::fillWithFurrows(Canvas& canvas, double bearing) {
  // Counted from the market square, so that neighbouring tiles agree; six metres from furrow to furrow, but
  // never so close that they flicker.
  const Point square = canvas.pixel({0, 0});
  const double half = std::max(4.0, canvas.pixels(6)) / 2;
  const Point across{std::sin(bearing), std::cos(bearing)};
  // The whole furrows between there and here are left out: cairo's numbers are small.
  const Point from = square - across * (2 * half * std::round(dot(square, across) / (2 * half)));
  const Point near = across * dot(from, across);
  const Point to = near + across * half;
  cairo_pattern_t* pattern = cairo_pattern_create_linear(near.x, near.y, to.x, to.y);
  cairo_pattern_add_color_stop_rgba(pattern, 0, 0, 0, 0, 0.07);
  cairo_pattern_add_color_stop_rgba(pattern, 1, 1, 1, 1, 0.07);
  cairo_pattern_set_extend(pattern, CAIRO_EXTEND_REFLECT);
  cairo_set_source(canvas.cairo(), pattern);
  cairo_pattern_destroy(pattern);
  cairo_fill_preserve(canvas.cairo());
}

}  // namespace fleetor::demo
