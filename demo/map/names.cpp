#include "demo/map/names.h"

#include <optional>

namespace fleetor::demo {
namespace {

struct Lettered {
  double size = 0;  // 0: not on a map of this zoom
  Face face = Face::regular;
  double spacing = 0;  // added between letters, in sizes
};

Lettered streetLettering(RoadClass road, int zoom) {
  constexpr int kFirstZoom[roadClasses] = {99, 99, 15, 14, 13, 13};
  if (zoom < kFirstZoom[static_cast<int>(road)]) return {};
  const double weight = road >= RoadClass::main ? 1 : road == RoadClass::collector ? 0.5 : 0;
  const double base = zoom <= 14   ? 9.6
                      : zoom == 15 ? 9.8
                      : zoom == 16 ? 10.4
                      : zoom == 17 ? 11.5
                      : zoom == 18 ? 13
                                   : 15.5;
  return {base + weight, Face::regular, 0.02};
}

Lettered letteringOf(const Name& name, int zoom) {
  const auto between = [zoom](int low, int high) { return zoom >= low && zoom <= high; };
  switch (name.kind) {
    case NameKind::town:
      if (between(3, 13))
        return {zoom < 6 ? 11.5 : zoom < 9 ? 13 : zoom < 11 ? 15 : zoom < 13 ? 18 : 21, Face::bold, 0.02};
      break;
    case NameKind::city:
      if (between(name.rank <= 22 ? 3 : name.rank <= 26 ? 5 : 6, 9))
        return {zoom < 6 ? 10.0 : 11.5, Face::regular, 0};
      break;
    case NameKind::sea:
      if (between(3, 8)) return {zoom < 5 ? 11.5 : 14.0, Face::italic, 0.14};
      break;
    case NameKind::village:
      if (between(11, 16)) return {zoom == 11 ? 10.5 : zoom < 14 ? 12.0 : 14, Face::regular, 0.02};
      break;
    case NameKind::water:
      if (between(11, 17)) return {12, Face::italic, 0.06};
      break;
    case NameKind::river:
      if (between(12, 19)) return {zoom < 15 ? 11.0 : 14, Face::italic, 0.12};
      break;
    case NameKind::park:
      if (between(14, 19)) return {zoom < 16 ? 10.8 : 12.5, Face::regular, 0.01};
      break;
    case NameKind::landmark:
      if (between(name.rank <= 40 ? 15 : 16, 19)) return {zoom < 17 ? 10.5 : 11.5, Face::regular, 0};
      break;
    case NameKind::parking:
      if (between(16, 19)) return {11, Face::bold, 0};
      break;
    case NameKind::house:
      if (between(18, 19)) return {zoom == 18 ? 8.8 : 11.5, Face::regular, 0};
      break;
    case NameKind::street:
      return streetLettering(name.road, zoom);
  }
  return {};
}

bool hasDot(const Name& name, int zoom) {
  return name.kind == NameKind::city || (name.kind == NameKind::town && zoom <= 9);
}

std::uint64_t tileKey(int x, int y) {
  return static_cast<std::uint64_t>(static_cast<std::uint32_t>(x)) << 32 | static_cast<std::uint32_t>(y);
}

}  // namespace

// Lays out one zoom. Works in metres of the sheet; sizes are turned into them.
class NamePlacer {
 public:
  NamePlacer(const Atlas& atlas, const Lettering& lettering, int zoom)
      : atlas_(atlas), lettering_(lettering), zoom_(zoom), pixel_(metresPerPixel(zoom)) {}

  void place(NameBoard::Level& level) {
    std::vector<const Name*> order;
    for (const Name& name : atlas_.names())
      if (letteringOf(name, zoom_).size > 0) order.push_back(&name);
    const auto rank = [](const Name* name) { return name->kind == NameKind::house ? 1000 : name->rank; };
    std::ranges::stable_sort(order, {}, rank);
    for (const Name* name : order) {
      if (name->line.empty())
        placeAtPoint(*name);
      else
        placeAlong(*name);
    }
    level.names = std::move(placed_);
    for (std::uint32_t i = 0; i < level.names.size(); ++i)
      enter(level, i);
  }

 private:
  void enter(NameBoard::Level& level, std::uint32_t id) const {
    const TileAddress origin{zoom_, 0, 0};
    const Point corner = origin.topLeft();
    const Box box = level.names[id].box.grownBy(4 * pixel_);
    const double side = origin.metres();
    for (int y = static_cast<int>((corner.y - box.top) / side);
         y <= static_cast<int>((corner.y - box.bottom) / side); ++y)
      for (int x = static_cast<int>((box.left - corner.x) / side);
           x <= static_cast<int>((box.right - corner.x) / side); ++x)
        level.byTile[tileKey(x, y)].push_back(id);
  }

  double widthOf(const std::vector<const Lettering::Letter*>& letters, const Lettered& type) const {
    double width = 0;
    for (const auto* letter : letters)
      width += (letter->advance + type.spacing) * type.size * pixel_;
    return width;
  }

  template <class Visit>
  bool visitCells(const Box& box, Visit visit) {
    const double cell = 48 * pixel_;
    for (auto y = static_cast<int>(std::floor(box.bottom / cell));
         y <= static_cast<int>(std::floor(box.top / cell)); ++y)
      for (auto x = static_cast<int>(std::floor(box.left / cell));
           x <= static_cast<int>(std::floor(box.right / cell)); ++x)
        if (!visit(cells_[tileKey(x, y)])) return false;
    return true;
  }

  bool isFree(const Box& box) {
    return visitCells(box, [&](const std::vector<Box>& taken) {
      return std::ranges::none_of(taken, [&](const Box& other) { return other.meets(box); });
    });
  }
  void take(const Box& box) {
    visitCells(box, [&](std::vector<Box>& taken) {
      taken.push_back(box);
      return true;
    });
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
    NameBoard::PlacedName placed{&name, type.size, box, {}};
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

  std::optional<NameBoard::PlacedName> letteredLine(const Name& name, const Lettered& type,
                                                    const std::vector<const Lettering::Letter*>& letters,
                                                    const Walk& walk, double start) {
    const double size = type.size * pixel_;
    NameBoard::PlacedName placed{&name, type.size, {}, {}};
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
  std::vector<NameBoard::PlacedName> placed_;
  std::unordered_map<std::uint64_t, std::vector<Box>> cells_;
};

const NameBoard::Level& NameBoard::level(int zoom) const {
  Level& level = levels_[static_cast<std::size_t>(zoom)];
  std::call_once(level.once, [&] { NamePlacer(atlas_, lettering_, zoom).place(level); });
  return level;
}

const std::vector<NameBoard::PlacedName>& NameBoard::placedAt(int zoom) const {
  return level(zoom).names;
}

void NameBoard::paint(Canvas& canvas, MapLook look) const {
  const TileAddress& tile = canvas.tile();
  const Level& level = this->level(tile.zoom);
  const auto found = level.byTile.find(tileKey(tile.x, tile.y));
  if (found == level.byTile.end()) return;
  cairo_t* cairo = canvas.cairo();
  for (const std::uint32_t id : found->second) {
    const PlacedName& placed = level.names[id];
    const Name& name = *placed.name;
    const TextColours colours = textColours(look, name.kind);
    if (hasDot(name, tile.zoom)) {
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
