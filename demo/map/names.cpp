#include "demo/map/names.h"

#include <optional>

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

struct Lettered {
  double size = 0;  // 0: not on a map of this zoom
  Face face = Face::regular;
  double spacing = 0;  // added between letters, in sizes
};

// By NameKind. The size grows from the first zoom to the last.
constexpr struct {
  int firstZoom, lastZoom;
  double firstSize, lastSize;
  Face face;
  double spacing;
} letterings[] = {
    {3, 13, 11.5, 21, Face::bold, 0.02},       // town
    {11, 16, 10.5, 14, Face::regular, 0.02},   // village
    {11, 17, 12, 13, Face::italic, 0.06},      // water
    {12, 19, 10.5, 15, Face::italic, 0.12},    // river
    {14, 19, 10.5, 13, Face::regular, 0.01},   // park
    {15, 19, 10, 12, Face::regular, 0},        // landmark
    {13, 19, 9.7, 15.5, Face::regular, 0.02},  // street
    {18, 19, 8.8, 11.5, Face::regular, 0},     // house
    {16, 19, 11, 12, Face::bold, 0},           // parking
    {3, 8, 11.5, 14.5, Face::italic, 0.14},    // sea
    {3, 9, 10, 12, Face::regular, 0},          // city
};

Lettered letteringOf(const Name& name, int zoom) {
  const auto& [first, last, firstSize, lastSize, face, spacing] = letterings[static_cast<int>(name.kind)];
  if (zoom < std::max(first, name.firstZoom) || zoom > last) return {};
  const double t = static_cast<double>(zoom - first) / (last - first);
  return {std::lerp(firstSize, lastSize, t * t), face, spacing};
}

bool hasDot(const Name& name, int zoom) {
  return name.kind == NameKind::city || (name.kind == NameKind::town && zoom <= 9);
}

// Lays out one zoom. Works in metres; sizes are turned into them.
class NamePlacer {
 public:
  NamePlacer(const Atlas& atlas, const Lettering& lettering, int zoom)
      : atlas_(atlas),
        lettering_(lettering),
        zoom_(zoom),
        pixel_(TileAddress{zoom, 0, 0}.metres() / Canvas::tilePixels),
        takenIndex_(48 * pixel_) {}

  std::vector<PlacedName> place() {
    std::vector<const Name*> order;
    for (const Name& name : atlas_.names())
      if (letteringOf(name, zoom_).size > 0) order.push_back(&name);
    std::ranges::stable_sort(order, {}, &Name::rank);
    for (const Name* name : order) {
      if (name->line.empty())
        placeAtPoint(*name);
      else
        placeAlong(*name);
    }
    return std::move(placed_);
  }

 private:
  double widthOf(const std::vector<const Lettering::Letter*>& letters, const Lettered& type) const {
    double width = 0;
    for (const auto* letter : letters)
      width += (letter->advance + type.spacing) * type.size * pixel_;
    return width;
  }

  bool isFree(const Box& box) const {
    return std::ranges::none_of(takenIndex_.within(box),
                                [&](std::uint32_t id) { return taken_[id].meets(box); });
  }
  void take(const Box& box) {
    takenIndex_.add(static_cast<std::uint32_t>(taken_.size()), box);
    taken_.push_back(box);
  }

  void placeAtPoint(const Name& name) {
    const Lettered type = letteringOf(name, zoom_);
    const auto letters = lettering_.letters(name.text, type.face);
    const double width = widthOf(letters, type);
    const double size = type.size * pixel_;
    const double lift = hasDot(name, zoom_) ? 0.95 * size : 0;
    const Point start = name.at + Point{-width / 2, lift - 0.36 * size};
    Box box{start.x, start.y - 0.25 * size, start.x + width, start.y + 0.85 * size};
    if (lift > 0) box.include(name.at + Point{0, -4 * pixel_});
    const double margin = (name.kind == NameKind::house ? 1.5 : 4) * pixel_;
    if (!isFree(box.grownBy(margin))) return;
    take(box);
    PlacedName placed{&name, type.size, box, {}};
    Point pen = start;
    for (const auto* letter : letters) {
      placed.letters.push_back({letter, pen, 0});
      pen.x += (letter->advance + type.spacing) * size;
    }
    placed_.push_back(std::move(placed));
  }

  void placeAlong(const Name& name) {
    const Lettered type = letteringOf(name, zoom_);
    const auto letters = lettering_.letters(name.text, type.face);
    const double width = widthOf(letters, type);
    const Walk ahead(smoothed(name.line, false));
    if (ahead.length() < width + 14 * pixel_) return;
    const Walk behind(smoothed(Shape(name.line.rbegin(), name.line.rend()), false));
    const double every = (zoom_ >= 17 ? 520 : 380) * pixel_ + width;
    const int repeats = std::max(1, static_cast<int>(ahead.length() / every));
    const double share = ahead.length() / repeats;
    for (int i = 0; i < repeats; ++i)
      for (const double shift : {0.0, 0.12, -0.12, 0.25, -0.25, 0.36, -0.36}) {
        const double middle = (i + 0.5 + shift) * share;
        if (middle < width / 2 + 5 * pixel_ || middle > ahead.length() - width / 2 - 5 * pixel_) continue;
        const Point way = ahead.at(middle + width / 2).at - ahead.at(middle - width / 2).at;
        // Read from left to right, or upwards.
        const bool upright = std::abs(way.x) > 0.03 * lengthOf(way) ? way.x > 0 : way.y > 0;
        const double start = (upright ? middle : ahead.length() - middle) - width / 2;
        if (auto placed = letteredLine(name, type, letters, upright ? ahead : behind, start)) {
          placed_.push_back(std::move(*placed));
          break;
        }
      }
  }

  std::optional<PlacedName> letteredLine(const Name& name, const Lettered& type,
                                         const std::vector<const Lettering::Letter*>& letters,
                                         const Walk& walk, double start) {
    const double size = type.size * pixel_;
    PlacedName placed{&name, type.size, {}, {}};
    std::vector<Box> boxes;
    double along = start;
    double first = 0;
    double last = 0;
    for (const auto* letter : letters) {
      const double advance = (letter->advance + type.spacing) * size;
      // The direction over the breadth of two letters: a kink in the street is a bend in its name.
      const Point from = walk.at(along - size * 0.5).at;
      const Point to = walk.at(along + advance + size * 0.5).at;
      const double angle = std::atan2(to.y - from.y, to.x - from.x);
      if (placed.letters.empty()) first = last = angle;
      const auto turn = [](double a, double b) {
        return std::abs(std::remainder(a - b, 2 * std::numbers::pi));
      };
      if (turn(angle, last) > 0.3 || turn(angle, first) > 1.0) return std::nullopt;
      last = angle;
      const Point middle = walk.at(along + advance / 2).at;
      const Point way{std::cos(angle), std::sin(angle)};
      const Point pen = middle - way * (advance / 2) - leftOf(way) * (0.35 * size);
      placed.letters.push_back({letter, pen, angle});
      Box box;
      box.include(middle);
      boxes.push_back(box.grownBy(0.58 * size));
      placed.box.include(middle - Point{size, size});
      placed.box.include(middle + Point{size, size});
      along += advance;
    }
    for (const Box& box : boxes)
      if (!isFree(box.grownBy(2.5 * pixel_))) return std::nullopt;
    for (const Box& box : boxes)
      take(box);
    return placed;
  }

  const Atlas& atlas_;
  const Lettering& lettering_;
  int zoom_;
  double pixel_;
  std::vector<PlacedName> placed_;
  std::vector<Box> taken_;
  PlaceIndex takenIndex_;
};

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

void NameBoard::paint(Canvas& canvas, MapStyle style) const {
  const int zoom = canvas.zoom();
  Level& level = levels_[static_cast<std::size_t>(zoom)];
  std::call_once(level.once, [&] {
    level.names = NamePlacer(atlas_, lettering_, zoom).place();
    level.index = PlaceIndex(canvas.tile().metres());
    // With the halos that the letters have around them.
    for (std::uint32_t i = 0; i < level.names.size(); ++i)
      level.index.add(i, level.names[i].box.grownBy(canvas.tile().metres() / 64));
  });
  cairo_t* cairo = canvas.cairo();
  for (const std::uint32_t id : level.index.within(canvas.box())) {
    const PlacedName& placed = level.names[id];
    const Name& name = *placed.name;
    const TextColours colours = textColours(style, name.kind);
    if (hasDot(name, zoom)) {
      canvas.addDisc(name.at, name.kind == NameKind::town ? 4 : 2.6);
      canvas.use(colours.halo);
      cairo_fill_preserve(cairo);
      canvas.stroke(colours.ink, 1.6);
    }
    if (name.kind == NameKind::parking) {
      canvas.addDisc(name.at, 0.72 * placed.size);
      canvas.fill(colours.halo);
    }
    for (const PlacedLetter& letter : placed.letters) {
      if (!letter.letter->outline) continue;
      const Point at = canvas.pixel(letter.at);
      cairo_save(cairo);
      cairo_translate(cairo, at.x, at.y);
      cairo_rotate(cairo, -letter.angle);
      cairo_scale(cairo, placed.size, placed.size);
      cairo_append_path(cairo, letter.letter->outline.get());
      cairo_restore(cairo);
    }
    if (name.kind != NameKind::parking) {
      canvas.use(colours.halo, 0.85);
      cairo_set_line_width(cairo, name.kind == NameKind::house ? 1.8 : 2.8);
      cairo_stroke_preserve(cairo);
    }
    canvas.fill(colours.ink);
  }
}

}  // namespace fleetor::demo
