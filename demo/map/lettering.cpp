#include "demo/map/lettering.h"

#include <string>

namespace fleetor::demo {
namespace {

constexpr double kDrawnSize = 200;
constexpr std::u32string_view kCharacters =
    U" ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-'.åäöæøÅÄÖÆØéè";

std::string utf8Of(char32_t c) {
  if (c < 0x80) return {static_cast<char>(c)};
  return {static_cast<char>(0xc0 | (c >> 6)), static_cast<char>(0x80 | (c & 0x3f))};
}

Lettering::Letter drawnLetter(cairo_t* cairo, char32_t c) {
  const std::string text = utf8Of(c);
  cairo_text_extents_t extents;
  cairo_text_extents(cairo, text.c_str(), &extents);
  cairo_new_path(cairo);
  cairo_move_to(cairo, 0, 0);
  cairo_text_path(cairo, text.c_str());
  Lettering::Letter letter;
  letter.advance = extents.x_advance / kDrawnSize;
  if (c == U' ') return letter;
  cairo_save(cairo);
  cairo_scale(cairo, kDrawnSize, kDrawnSize);  // reads the path back in units of the size
  letter.outline.reset(cairo_copy_path(cairo), cairo_path_destroy);
  cairo_restore(cairo);
  return letter;
}

}  // namespace

Lettering::Lettering() {
  const std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> surface(
      cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1), cairo_surface_destroy);
  const std::unique_ptr<cairo_t, void (*)(cairo_t*)> cairo(cairo_create(surface.get()), cairo_destroy);
  const std::unique_ptr<cairo_font_options_t, void (*)(cairo_font_options_t*)> plain(
      cairo_font_options_create(), cairo_font_options_destroy);
  cairo_font_options_set_hint_style(plain.get(), CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(plain.get(), CAIRO_HINT_METRICS_OFF);
  cairo_set_font_options(cairo.get(), plain.get());
  cairo_set_font_size(cairo.get(), kDrawnSize);
  for (const Face face : {Face::regular, Face::bold, Face::italic}) {
    cairo_select_font_face(cairo.get(), "Open Sans",
                           face == Face::italic ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
                           face == Face::bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    for (const char32_t c : kCharacters)
      letters_.emplace(std::pair(face, c), drawnLetter(cairo.get(), c));
  }
}

std::vector<const Lettering::Letter*> Lettering::letters(std::string_view utf8, Face face) const {
  std::vector<const Letter*> found;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    auto c = static_cast<char32_t>(static_cast<unsigned char>(utf8[i]));
    if (c >= 0xc0 && i + 1 < utf8.size())
      c = ((c & 0x1f) << 6) | (static_cast<unsigned char>(utf8[++i]) & 0x3f);
    if (const auto letter = letters_.find({face, c}); letter != letters_.end())
      found.push_back(&letter->second);
  }
  return found;
}

}  // namespace fleetor::demo
