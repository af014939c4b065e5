#include "demo/map/lettering.h"

#include <algorithm>

namespace fleetor::demo {
namespace {

constexpr double drawnSize = 200;
constexpr std::string_view characters =
    " ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-'.åäöæøÅÄÖÆØéè";

// Takes the first character, of one or two bytes, off the text.
std::string takeCharacter(std::string_view& utf8) {
  const std::size_t length = static_cast<unsigned char>(utf8[0]) < 0x80 ? 1 : 2;
  std::string character(utf8.substr(0, length));
  utf8.remove_prefix(std::min(utf8.size(), length));
  return character;
}

Lettering::Letter drawnLetter(cairo_t* cairo, const std::string& text) {
  cairo_text_extents_t extents;
  cairo_text_extents(cairo, text.c_str(), &extents);
  cairo_new_path(cairo);
  cairo_move_to(cairo, 0, 0);
  cairo_text_path(cairo, text.c_str());
  Lettering::Letter letter;
  letter.advance = extents.x_advance / drawnSize;
  if (text == " ") return letter;
  cairo_save(cairo);
  cairo_scale(cairo, drawnSize, drawnSize);  // reads the path back in units of the size
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
  cairo_set_font_size(cairo.get(), drawnSize);
  for (const Face face : {Face::regular, Face::bold, Face::italic}) {
    cairo_select_font_face(cairo.get(), "Open Sans",
                           face == Face::italic ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
                           face == Face::bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    for (std::string_view rest = characters; !rest.empty();) {
      const std::string character = takeCharacter(rest);
      letters_.emplace(std::pair(face, character), drawnLetter(cairo.get(), character));
    }
  }
}

std::vector<const Lettering::Letter*> Lettering::letters(std::string_view utf8, Face face) const {
  std::vector<const Letter*> found;
  while (!utf8.empty())
    if (const auto letter = letters_.find({face, takeCharacter(utf8)}); letter != letters_.end())
      found.push_back(&letter->second);
  return found;
}

}  // namespace fleetor::demo
