#include "demo/map/map_painter.h"

#include <map>

#include "demo/map/textures.h"
#include "demo/town/random.h"

namespace fleetor::demo {
namespace {

using Ids = std::vector<std::uint32_t>;

constexpr Colour carColours[] = {0xe8e8e8, 0x2b2d31, 0x8d1f1f, 0x2d4b78, 0x9a9da1, 0xd0cfc8};
// Metres of shadow for a metre of height in a photograph, where the sun stands in the south-west; and by how
// many metres a map leans its buildings northwards.
constexpr Point shadow{0.42, 0.5};
constexpr Point lean{0, 0.32};

// By LandUse. A photograph shows them one zoom earlier.
constexpr int firstZooms[] = {12, 11, 9, 0, 13, 13, 13, 13, 13, 13, 13, 0, 13, 17, 13, 15, 15, 0};

class MapPainter {
 public:
  MapPainter(Canvas& canvas, const Atlas& atlas, const Palette& palette)
      : canvas_(canvas), atlas_(atlas), palette_(palette), aerial_(palette.aerial), zoom_(canvas.zoom()) {}

  void paint() {
    canvas_.use(palette_.sea);
    cairo_paint(canvas_.cairo());
    const bool island = atlas_.touchesIsland(canvas_.reach());
    paintLand(island);
    if (island && zoom_ >= 8) paintAreas();
    if (aerial_) paintGrain(canvas_);
    if (!island || zoom_ < 8) return;
    paintRoads();
    if (zoom_ >= 15 || (aerial_ && zoom_ == 14)) paintBuildings();
    if (zoom_ >= 16) paintTrees();
  }

 private:
  void paintLand(bool island) {
    for (const Shape& land : atlas_.continents())
      canvas_.addPolygon(land);
    canvas_.stroke(palette_.shallows, 6, 0.4);
    for (const Shape& land : atlas_.continents())
      canvas_.addPolygon(land);
    canvas_.fill(palette_.land);
    if (!island) return;
    // Shallow water, softly: a wide brush needs no fine line.
    Shape rough;
    for (std::size_t i = 0; i < atlas_.coast().size(); i += zoom_ < 12 ? 24 : 8)
      rough.push_back(atlas_.coast()[i]);
    for (const double metres : {1500.0, 800.0, 320.0, 120.0}) {
      canvas_.addPolygon(rough);
      canvas_.stroke(palette_.shallows, std::min(60.0, 2 * canvas_.pixels(metres)), 0.22);
    }
    canvas_.addPolygon(atlas_.coast());
    canvas_.fill(zoom_ < 11 ? palette_.land : palette_.sand);
    if (zoom_ < 11) return;
    canvas_.addPolygon(atlas_.shore());
    canvas_.fill(palette_.land);
  }

  bool shows(const Area& area) const {
    return zoom_ >= firstZooms[static_cast<int>(area.use)] - (aerial_ ? 1 : 0);
  }

  Colour colourOf(const Area& area) const {
    const Colour base = palette_.uses[static_cast<std::size_t>(area.use)];
    if (area.use == LandUse::field) return palette_.fields[area.tone % palette_.fields.size()];
    if (area.use == LandUse::garden) return mixed(base, palette_.trees[0], (area.tone % 8) / 40.0);
    return aerial_ && area.use != LandUse::wood && area.use <= LandUse::oldTown
               ? mixed(base, palette_.sand, (area.tone % 8) / 50.0)
               : base;
  }

  void paintAreas() {
    const Ids ids = atlas_.areasIn(canvas_.reach());
    // The town and the villages lie over the hedges.
    fillAreas(ids, LandUse::field, LandUse::wood);
    if (zoom_ >= (aerial_ ? 13 : 14)) {
      addAreas(ids, LandUse::field, LandUse::meadow);
      canvas_.stroke(palette_.hedge, zoom_ >= 16 ? 2 : 1);
    }
    if (zoom_ >= 12) {
      // Neighbouring woods are one: no bright line between them.
      addAreas(ids, LandUse::wood, LandUse::wood);
      canvas_.stroke(palette_.uses[static_cast<std::size_t>(LandUse::wood)], 2);
    }
    if (aerial_ && zoom_ >= 15) paintTextures(ids);
    fillAreas(ids, LandUse::builtUp, LandUse::water);
    if (zoom_ >= 14) paintEdges(ids);
  }

  void addAreas(const Ids& ids, LandUse first, LandUse last) {
    for (const std::uint32_t id : ids)
      if (const Area& area = atlas_.areas()[id]; area.use >= first && area.use <= last)
        canvas_.addPolygon(area.outline);
  }

  // Those of one use and one colour at once.
  void fillAreas(const Ids& ids, LandUse first, LandUse last) {
    std::map<std::pair<LandUse, Colour>, std::vector<const Shape*>> outlines;
    for (const std::uint32_t id : ids)
      if (const Area& area = atlas_.areas()[id]; area.use >= first && area.use <= last && shows(area))
        outlines[{area.use, colourOf(area)}].push_back(&area.outline);
    for (const auto& [key, shapes] : outlines) {
      for (const Shape* shape : shapes)
        canvas_.addPolygon(*shape);
      canvas_.fill(key.second);
    }
  }

  void paintTextures(const Ids& ids) {
    for (const std::uint32_t id : ids)
      if (const Area& area = atlas_.areas()[id]; area.use == LandUse::field) {
        canvas_.addPolygon(area.outline);
        fillWithFurrows(canvas_, area.bearing);
      }
    if (zoom_ < 16) return;
    addAreas(ids, LandUse::wood, LandUse::wood);
    fillWithCanopy(canvas_);
  }

  void paintEdges(const Ids& ids) {
    for (const std::uint32_t id : ids) {
      const Area& area = atlas_.areas()[id];
      if (!shows(area)) continue;
      if (area.use == LandUse::parking && zoom_ >= 17) paintBays(area);
      if (area.use != LandUse::water && area.use != LandUse::pitch) continue;
      canvas_.addPolygon(area.outline);
      canvas_.stroke(area.use == LandUse::water ? palette_.bank : mixed(colourOf(area), 0xffffff, 0.6), 1.2);
    }
  }

  void paintBays(const Area& area) {
    const Point along{std::cos(area.bearing), std::sin(area.bearing)};
    const Box box = boxOf(area.outline);
    const double reach = std::hypot(box.right - box.left, box.top - box.bottom) / 2;
    std::map<Colour, std::vector<Shape>> cars;
    const int rows = static_cast<int>(reach / 16);
    const int bays = static_cast<int>(reach / 2.5);
    for (int row = -rows; row <= rows; ++row)
      for (int bay = -bays; bay <= bays; ++bay)
        for (const int side : {-1, 1}) {
          const Station middle{
              centroidOf(area.outline) + along * (bay * 2.5) + leftOf(along) * (row * 16 + side * 2.5),
              along};
          if (!contains(area.outline, middle.at) || distanceTo(area.outline, middle.at, true) < 5) continue;
          canvas_.addLine({middle.at + along * -1.25 + leftOf(along) * -2.4,
                           middle.at + along * -1.25 + leftOf(along) * 2.4});
          const std::uint64_t dice = hashOf(area.tone, row, bay, side);
          if (aerial_ && dice % 100 < 58)
            cars[carColours[dice / 100 % std::size(carColours)]].push_back(
                rectangleAt(middle, -0.9, 0.9, -2, 2));
        }
    canvas_.stroke(palette_.bay, canvas_.pixels(0.2), 0.9);
    for (const auto& [colour, shapes] : cars) {
      for (const Shape& car : shapes)
        canvas_.addPolygon(car);
      canvas_.fill(colour);
    }
  }

  void paintRoads() {
    const Ids ids = atlas_.roadsIn(canvas_.reach());
    const auto stroke = [&](RoadClass kind, bool bridge, Colour colour, double width) {
      for (const std::uint32_t id : ids)
        if (const Road& road = atlas_.roads()[id]; road.kind == kind && road.bridge == bridge)
          canvas_.addLine(road.line);
      canvas_.stroke(colour, width);
    };
    for (const bool bridge : {false, true})
      for (const bool border : {true, false})
        for (int i = 0; i < roadClasses; ++i) {
          const auto kind = static_cast<RoadClass>(i);
          const RoadColours& colours = palette_.roads[static_cast<std::size_t>(i)];
          const double width = roadWidth(kind, zoom_);
          const double edge = 2 * std::min(3.0, 0.9 + 0.05 * width) + (bridge ? 0.8 : 0);
          if (width <= 0 || (border && width < 2)) continue;
          // The border of a bridge ends with it; its surface covers the ends of the roads on both banks.
          cairo_set_line_cap(canvas_.cairo(), bridge && border ? CAIRO_LINE_CAP_BUTT : CAIRO_LINE_CAP_ROUND);
          stroke(kind, bridge,
                 !border  ? colours.surface
                 : bridge ? palette_.bridge
                          : colours.border,
                 border ? width + edge : width);
        }
    if (!aerial_ || zoom_ < 17) return;
    const double dash[] = {canvas_.pixels(3), canvas_.pixels(5)};
    cairo_set_dash(canvas_.cairo(), dash, 2, 0);
    cairo_set_line_cap(canvas_.cairo(), CAIRO_LINE_CAP_BUTT);
    for (const RoadClass kind : {RoadClass::collector, RoadClass::main, RoadClass::ring})
      for (const bool bridge : {false, true})
        stroke(kind, bridge, 0xcccbc3, std::max(0.6, canvas_.pixels(0.22)));
    cairo_set_dash(canvas_.cairo(), nullptr, 0, 0);
    cairo_set_line_cap(canvas_.cairo(), CAIRO_LINE_CAP_ROUND);
  }

  // The outline, where it stands after being moved, and all between: in the same sense, so that overlaps
  // count once.
  void addExtrusion(const Shape& base, Point by) {
    Shape top = base;
    for (Point& p : top)
      p = p + by;
    for (std::size_t i = 0, j = base.size() - 1; i < base.size(); j = i++) {
      Shape side{base[j], base[i], top[i], top[j]};
      if (areaOf(side) < 0) std::ranges::reverse(side);
      canvas_.addPolygon(side);
    }
    canvas_.addPolygon(base);
    canvas_.addPolygon(top);
  }

  Colour roofOf(const Building& building) const {
    const auto& roofs = building.large ? palette_.largeRoofs : palette_.roofs;
    return roofs[building.tone % roofs.size()];
  }

  void paintBuildings() {
    const Ids ids = atlas_.buildingsIn(canvas_.box().grownBy(30));
    if (aerial_ && zoom_ >= 15) {
      for (const std::uint32_t id : ids) {
        const Building& building = atlas_.buildings()[id];
        addExtrusion(building.outline, shadow * static_cast<double>(building.height));
      }
      canvas_.fill(0x0b1210, 0.42);
    }
    if (zoom_ < 17 && !(aerial_ && zoom_ == 16)) {
      // Those of one colour at once: there are thousands.
      std::map<Colour, std::vector<const Shape*>> outlines;
      for (const std::uint32_t id : ids)
        outlines[roofOf(atlas_.buildings()[id])].push_back(&atlas_.buildings()[id].outline);
      for (const auto& [roof, shapes] : outlines) {
        for (const Shape* shape : shapes)
          canvas_.addPolygon(*shape);
        canvas_.fillAndStroke(roof, mixed(roof, palette_.wall, aerial_ ? 0.2 : 1), zoom_ <= 15 ? 0.4 : 0.7);
      }
      return;
    }
    for (const std::uint32_t id : ids) {
      if (aerial_)
        paintRoof(atlas_.buildings()[id]);
      else
        paintRaised(atlas_.buildings()[id]);
    }
  }

  void paintRaised(const Building& building) {
    const Point lift = lean * static_cast<double>(building.height);
    const Colour roof = roofOf(building);
    addExtrusion(building.outline, lift);
    canvas_.fill(palette_.wall);
    Shape top = building.outline;
    for (Point& p : top)
      p = p + lift;
    canvas_.addPolygon(top);
    canvas_.fillAndStroke(roof, mixed(roof, palette_.wall, 0.7), 0.8);
  }

  // From above. A small one has a gable along its longer axis; the half away from the sun lies in the shade.
  void paintRoof(const Building& building) {
    const Shape& base = building.outline;
    const Colour roof = mixed(roofOf(building), 0xb5ab9c, std::floor(building.tone / 16.0) / 60);
    canvas_.addPolygon(base);
    if (building.large || base.size() != 4) {
      canvas_.fillAndStroke(roof, mixed(roof, palette_.wall, 0.5), 0.8);
      return;
    }
    canvas_.fill(roof);
    const std::size_t first = distanceBetween(base[0], base[1]) < distanceBetween(base[1], base[2]) ? 1 : 0;
    const auto corner = [&](std::size_t i) { return base[(first + i) % 4]; };
    const Point ridgeA = lerp(corner(1), corner(2), 0.5);
    const Point ridgeB = lerp(corner(0), corner(3), 0.5);
    const bool shadedFirst = dot(corner(0) - corner(3), shadow) > 0;
    canvas_.addPolygon(shadedFirst ? Shape{corner(0), corner(1), ridgeA, ridgeB}
                                   : Shape{ridgeB, ridgeA, corner(2), corner(3)});
    canvas_.fill(0x14110e, 0.26);
  }

  void paintTrees() {
    const Ids ids = atlas_.treesIn(canvas_.box().grownBy(14));
    const std::size_t tones = palette_.trees.size();
    const auto addCrowns = [&](Point shift, double share, std::size_t tone, std::size_t of) {
      for (const std::uint32_t id : ids)
        if (const Tree& tree = atlas_.trees()[id]; tree.tone % of == tone)
          canvas_.addDisc(tree.at + shift * static_cast<double>(tree.radius),
                          canvas_.pixels(tree.radius) * share);
    };
    if (aerial_) {
      addCrowns({0.75, 0.85}, 1, 0, 1);
      canvas_.fill(0x0b1210, 0.38);
    }
    for (std::size_t tone = 0; tone < tones; ++tone) {
      addCrowns({}, 1, tone, tones);
      canvas_.fill(palette_.trees[tone]);
    }
    if (!aerial_ || zoom_ < 17) return;
    addCrowns({-0.25, -0.28}, 0.55, 0, 1);
    canvas_.fill(0x9bb36a, 0.3);
  }

  Canvas& canvas_;
  const Atlas& atlas_;
  const Palette& palette_;
  bool aerial_;
  int zoom_;
};

}  // namespace

void paintMap(Canvas& canvas, const Atlas& atlas, const Palette& palette) {
  MapPainter(canvas, atlas, palette).paint();
}

}  // namespace fleetor::demo
