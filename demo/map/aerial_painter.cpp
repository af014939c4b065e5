#include <map>

#include "demo/map/aerial_textures.h"
#include "demo/map/map_painter.h"
#include "demo/town/random.h"

namespace fleetor::demo {
namespace {

constexpr Colour kDeepSea = 0x17384a;
constexpr Colour kShallows = 0x3d7f86;
constexpr Colour kFreshWater = 0x2b4c53;
constexpr Colour kSand = 0xc2b48c;
constexpr Colour kWild = 0x66733f;
constexpr Colour kCanopy = 0x31492a;
constexpr Colour kCrops[] = {0x77853f, 0x96914f, 0x65793a, 0xa99b60, 0x587036,
                             0x8c8249, 0x8d7350, 0x839350, 0xb3a76a};
constexpr Colour kRoofs[] = {0x9a5b42, 0x8a4f3b, 0x66676b, 0x7a6353, 0xa66a4c, 0x74757a, 0x5c5a59};
constexpr Colour kLargeRoofs[] = {0xb2b1ab, 0x9b9d9f, 0xc4c2bb, 0x868b90};
constexpr Colour kCars[] = {0xe8e8e8, 0x2b2d31, 0x8d1f1f, 0x2d4b78, 0x9a9da1, 0xd0cfc8};
constexpr Colour kCrowns[] = {0x3c5a2c, 0x4a6a35, 0x56743f};
// Metres of shadow for a metre of height: the sun stands in the south-west.
constexpr Point kShadow{0.42, 0.5};

Colour groundOf(const Area& area) {
  switch (area.use) {
    case LandUse::field:
      return kCrops[area.tone % std::size(kCrops)];
    case LandUse::meadow:
      return mixed(0x6d8142, 0x7f8f4f, area.tone / 255.0);
    case LandUse::wood:
      return mixed(kCanopy, 0x3d5531, area.tone / 255.0);
    case LandUse::builtUp:
      return 0x7d7f66;
    case LandUse::housing:
      return mixed(0x6f7a4d, 0x7d8259, area.tone / 255.0);
    case LandUse::oldTown:
      return mixed(0x8d887c, 0x97907f, area.tone / 255.0);
    case LandUse::retail:
      return 0x92918c;
    case LandUse::industry:
      return mixed(0x95928b, 0x87867f, area.tone / 255.0);
    case LandUse::school:
      return 0x848665;
    case LandUse::sports:
      return 0x66803f;
    case LandUse::cemetery:
      return 0x6b7d4c;
    case LandUse::park:
      return 0x5f7a3c;
    case LandUse::square:
      return 0xb0a797;
    case LandUse::garden:
      return mixed(0x64793f, 0x8a8f5c, area.tone / 255.0);
    case LandUse::lawn:
      return 0x6d8545;
    case LandUse::parking:
      return 0x77777a;
    case LandUse::pitch:
      return 0x58893f;
    case LandUse::water:
      return kFreshWater;
  }
  return kWild;
}

class AerialPainter {
 public:
  AerialPainter(Canvas& canvas, const Atlas& atlas, const AerialTextures& textures, const TileAddress& tile)
      : canvas_(canvas), atlas_(atlas), textures_(textures), tile_(tile), zoom_(tile.zoom) {}

  void paint() {
    canvas_.paint(kDeepSea);
    for (const Shape& land : atlas_.continents())
      canvas_.addPolygon(land);
    canvas_.use(kWild);
    cairo_fill_preserve(canvas_.cairo());
    canvas_.stroke(kShallows, 3, 0.25);
    const Box reach = canvas_.boxWithMargin(64);
    if (atlas_.touchesIsland(reach)) {
      paintIsland();
      if (zoom_ >= 8) paintGround(reach);
    }
    textures_.paintGrain(canvas_, tile_);
    if (zoom_ < 8 || !atlas_.touchesIsland(reach)) return;
    paintRoads(reach);
    if (zoom_ >= 14) paintBuildings();
    if (zoom_ >= 16) paintTrees();
  }

 private:
  void paintIsland() {
    // Shallow water, softly: a wide brush needs no fine line.
    Shape rough;
    for (std::size_t i = 0; i < atlas_.coast().size(); i += zoom_ < 12 ? 24 : 8)
      rough.push_back(atlas_.coast()[i]);
    for (const double metres : {1500.0, 800.0, 320.0, 120.0}) {
      canvas_.addPolygon(rough);
      canvas_.stroke(kShallows, std::min(60.0, 2 * canvas_.pixels(metres)), 0.22);
    }
    canvas_.addPolygon(atlas_.coast());
    canvas_.fill(zoom_ < 11 ? kWild : kSand);
    if (zoom_ < 11) return;
    canvas_.addPolygon(atlas_.shore());
    canvas_.fill(kWild);
  }

  bool shows(const Area& area) const {
    if (area.use == LandUse::field || area.use == LandUse::meadow) return zoom_ >= 11;
    if (area.use == LandUse::garden) return zoom_ >= 16;
    if (area.use == LandUse::wood || area.use == LandUse::builtUp || area.use == LandUse::park ||
        area.use == LandUse::water)
      return true;
    return zoom_ >= 12;
  }

  void paintGround(const Box& reach) {
    const auto ids = atlas_.areasIn(reach);
    const bool together = zoom_ < 13;
    if (together) paintParcels(ids);
    for (const std::uint32_t id : ids) {
      const Area& area = atlas_.areas()[id];
      if (!shows(area) || (together && area.use <= LandUse::wood)) continue;
      canvas_.addPolygon(area.outline);
      if (area.use == LandUse::wood) {
        // Neighbouring woods are one: no bright hair between them.
        canvas_.use(groundOf(area));
        cairo_set_line_width(canvas_.cairo(), 2);
        cairo_stroke_preserve(canvas_.cairo());
      }
      if (area.use == LandUse::wood && zoom_ >= 16) {
        textures_.fillWithCanopy(canvas_, tile_, groundOf(area));
      } else {
        canvas_.use(groundOf(area));
        cairo_fill_preserve(canvas_.cairo());
        if (area.use == LandUse::field && zoom_ >= 15) AerialTextures::fillWithFurrows(canvas_, area.bearing);
        if (area.use == LandUse::pitch && zoom_ >= 15)
          AerialTextures::fillWithFurrows(canvas_, area.bearing + 1.5708);
      }
      if (zoom_ >= 13 && (area.use == LandUse::field || area.use == LandUse::meadow))
        canvas_.stroke(kCanopy, std::max(0.7, canvas_.pixels(3.5)), 0.55);
      else if (area.use == LandUse::water)
        canvas_.stroke(0x24392f, std::max(0.8, canvas_.pixels(2.5)), 0.6);
      else if (area.use == LandUse::garden && zoom_ >= 17)
        canvas_.stroke(kCanopy, canvas_.pixels(0.7), 0.45);
      else if (area.use == LandUse::pitch && zoom_ >= 16)
        canvas_.stroke(0xe9efe0, std::max(0.7, canvas_.pixels(0.3)), 0.8);
      cairo_new_path(canvas_.cairo());
      if (area.use == LandUse::parking && zoom_ >= 17) parkCars(area);
    }
  }

  // Thousands of them from high above: those of one colour at once.
  void paintParcels(const std::vector<std::uint32_t>& ids) {
    std::map<Colour, std::vector<const Shape*>> parcels;
    for (const std::uint32_t id : ids)
      if (const Area& area = atlas_.areas()[id]; area.use <= LandUse::wood && shows(area)) {
        Area coarse;
        coarse.use = area.use;
        coarse.tone = area.use == LandUse::field ? area.tone : area.tone & 0xc0;
        parcels[groundOf(coarse)].push_back(&area.outline);
      }
    for (const auto& [colour, outlines] : parcels) {
      for (const Shape* outline : outlines)
        canvas_.addPolygon(*outline);
      canvas_.fill(colour);
    }
  }

  void parkCars(const Area& area) {
    const Point along{std::cos(area.bearing), std::sin(area.bearing)};
    const Box box = boxOf(area.outline);
    const Point middle = centroidOf(area.outline);
    const double reach = std::hypot(box.right - box.left, box.top - box.bottom) / 2;
    const int rows = static_cast<int>(reach / 16);
    const int bays = static_cast<int>(reach / 2.5);
    std::vector<Shape> cars[std::size(kCars)];
    for (int row = -rows; row <= rows; ++row)
      for (int bay = -bays; bay <= bays; ++bay)
        for (const int side : {-1, 1}) {
          const Station here{middle + along * (bay * 2.5) + leftOf(along) * (row * 16.0 + side * 2.5), along};
          if (!contains(area.outline, here.at) || distanceTo(area.outline, here.at, true) < 5) continue;
          canvas_.addLine({here.at + along * -1.25 + leftOf(along) * -2.4,
                           here.at + along * -1.25 + leftOf(along) * 2.4});
          const std::uint64_t dice = hashOf(area.tone, row + 100, bay + 500, side + 1);
          if (dice % 100 < 58)
            cars[dice / 100 % std::size(kCars)].push_back(
                {here.at + along * -0.9 + leftOf(along) * -2.0, here.at + along * 0.9 + leftOf(along) * -2.0,
                 here.at + along * 0.9 + leftOf(along) * 2.0, here.at + along * -0.9 + leftOf(along) * 2.0});
        }
    canvas_.stroke(0xe4e4de, canvas_.pixels(0.15), 0.7);
    for (std::size_t i = 0; i < std::size(kCars); ++i) {
      for (const Shape& car : cars[i])
        canvas_.addPolygon(car);
      canvas_.fill(kCars[i]);
    }
  }

  // The road as it is, not as a map widens it.
  double widthOf(RoadClass kind) const {
    constexpr double metres[kRoadClasses] = {2.2, 3.2, 7.2, 9.6, 13, 17};
    constexpr double least[kRoadClasses] = {0, 0, 0.5, 0.7, 1.1, 1.5};
    const int first = kind >= RoadClass::main ? 9 : kind >= RoadClass::residential ? 12 : 15;
    return zoom_ < first
               ? 0
               : std::max(least[static_cast<int>(kind)], canvas_.pixels(metres[static_cast<int>(kind)]));
  }

  void paintRoads(const Box& reach) {
    constexpr Colour surfaces[kRoadClasses] = {0xb3a686, 0x9d9580, 0x85847f, 0x7d7d7b, 0x747576, 0x6d6e70};
    const auto ids = atlas_.roadsIn(reach);
    const auto add = [&](RoadClass kind, bool bridge) {
      for (const std::uint32_t id : ids)
        if (const Road& road = atlas_.roads()[id]; road.kind == kind && road.bridge == bridge)
          canvas_.addLine(road.line);
    };
    for (int i = 0; i < kRoadClasses; ++i) {
      const auto kind = static_cast<RoadClass>(i);
      const double width = widthOf(kind);
      if (width <= 0) continue;
      if (zoom_ >= 16 && kind >= RoadClass::residential) {  // pavements
        add(kind, false);
        canvas_.stroke(0xa9a59a, width + 2 * canvas_.pixels(1.6), 0.8);
      }
    }
    for (int i = 0; i < kRoadClasses; ++i) {
      const auto kind = static_cast<RoadClass>(i);
      const double width = widthOf(kind);
      if (width <= 0) continue;
      add(kind, false);
      canvas_.stroke(zoom_ < 15 ? mixed(surfaces[i], 0xc9c6bb, 0.5) : surfaces[i], width);
    }
    cairo_set_line_cap(canvas_.cairo(), CAIRO_LINE_CAP_BUTT);
    for (int i = 0; i < kRoadClasses; ++i) {
      const auto kind = static_cast<RoadClass>(i);
      const double width = widthOf(kind);
      if (width <= 0) continue;
      add(kind, true);
      canvas_.stroke(0xb7b4ac, width + 2 * std::max(0.5, canvas_.pixels(1.5)));
      add(kind, true);
      canvas_.stroke(surfaces[i], width);
    }
    if (zoom_ >= 17) paintLanes(ids);
    cairo_set_line_cap(canvas_.cairo(), CAIRO_LINE_CAP_ROUND);
  }

  void paintLanes(const std::vector<std::uint32_t>& ids) {
    const double dash[] = {canvas_.pixels(3), canvas_.pixels(5)};
    for (const RoadClass kind : {RoadClass::collector, RoadClass::main, RoadClass::ring}) {
      const double width = widthOf(kind);
      std::vector<double> sides{0};
      if (kind == RoadClass::ring) sides = {-canvas_.pixels(4.2), canvas_.pixels(4.2)};
      cairo_set_dash(canvas_.cairo(), dash, 2, 0);
      for (const double side : sides)
        for (const std::uint32_t id : ids) {
          const Road& road = atlas_.roads()[id];
          if (road.kind != kind) continue;
          canvas_.addLine(side == 0 ? road.line : movedAside(road.line, side * metresPerPixel(zoom_)));
        }
      canvas_.stroke(0xe6e4da, std::max(0.6, canvas_.pixels(0.22)), 0.75);
      cairo_set_dash(canvas_.cairo(), nullptr, 0, 0);
      if (kind != RoadClass::ring) continue;
      for (const std::uint32_t id : ids)
        if (const Road& road = atlas_.roads()[id]; road.kind == kind) canvas_.addLine(road.line);
      canvas_.stroke(0xd9cfa2, std::max(0.8, width * 0.045), 0.8);
    }
  }

  void paintBuildings() {
    const auto ids = atlas_.buildingsIn(canvas_.box().grownBy(30));
    if (zoom_ == 14) {  // a few colours at once: there are thousands
      const Colour roofs[] = {kRoofs[0], kRoofs[1], kRoofs[2], kLargeRoofs[0]};
      for (std::size_t tone = 0; tone < std::size(roofs); ++tone) {
        for (const std::uint32_t id : ids)
          if (const Building& building = atlas_.buildings()[id];
              (building.large ? 3U : building.tone % 3U) == tone)
            canvas_.addPolygon(building.outline);
        canvas_.fill(mixed(roofs[tone], 0x9a958c, 0.35));
      }
      return;
    }
    for (const std::uint32_t id : ids) {
      const Building& building = atlas_.buildings()[id];
      const Point cast = kShadow * static_cast<double>(building.height);
      const Shape& base = building.outline;
      for (std::size_t i = 0, j = base.size() - 1; i < base.size(); j = i++) {
        // Every piece in the same sense, so that overlaps count once.
        Shape side{base[j], base[i], base[i] + cast, base[j] + cast};
        if (areaOf(side) < 0) std::ranges::reverse(side);
        canvas_.addPolygon(side);
      }
      Shape top = base;
      for (Point& p : top)
        p = p + cast;
      canvas_.addPolygon(top);
    }
    canvas_.fill(0x0b1210, 0.42);
    paintRoofs(ids);
  }

  void paintRoofs(const std::vector<std::uint32_t>& ids) {
    for (const std::uint32_t id : ids)
      paintRoof(atlas_.buildings()[id]);
  }

  void paintRoof(const Building& building) {
    const Shape& base = building.outline;
    const Colour tone = building.large ? kLargeRoofs[building.tone % std::size(kLargeRoofs)]
                                       : kRoofs[building.tone % std::size(kRoofs)];
    const Colour roof = mixed(tone, 0xb5ab9c, std::floor(building.tone / 16.0) / 60);
    canvas_.addPolygon(base);
    canvas_.fill(roof);
    if (zoom_ < 16 || base.size() != 4) return;
    if (building.large) {
      canvas_.addPolygon(base);
      canvas_.stroke(mixed(roof, 0x40413f, 0.5), 0.8);
      return;
    }
    // A gable along the longer axis; the half that looks away from the sun lies in its own shade.
    const bool turned = distanceBetween(base[0], base[1]) < distanceBetween(base[1], base[2]);
    const std::size_t first = turned ? 1 : 0;
    const auto corner = [&](std::size_t i) { return base[(first + i) % 4]; };
    const Point ridgeA = lerp(corner(1), corner(2), 0.5);
    const Point ridgeB = lerp(corner(0), corner(3), 0.5);
    const bool shadedFirst = dot(corner(0) - corner(3), kShadow) > 0;
    canvas_.addPolygon(shadedFirst ? Shape{corner(0), corner(1), ridgeA, ridgeB}
                                   : Shape{ridgeB, ridgeA, corner(2), corner(3)});
    canvas_.fill(0x14110e, 0.26);
  }

  void paintTrees() {
    const auto ids = atlas_.treesIn(canvas_.box().grownBy(14));
    const auto discs = [&](Point shift, double share, int tone) {
      for (const std::uint32_t id : ids) {
        const Tree& tree = atlas_.trees()[id];
        if (tone < 0 || tree.tone % 3 == tone)
          canvas_.addDisc(tree.at + shift * static_cast<double>(tree.radius),
                          canvas_.pixels(tree.radius) * share);
      }
    };
    discs({0.75, 0.85}, 1, -1);
    canvas_.fill(0x0b1210, 0.38);
    for (int tone = 0; tone < 3; ++tone) {
      discs({}, 1, tone);
      canvas_.fill(kCrowns[tone]);
    }
    if (zoom_ < 17) return;
    discs({-0.25, -0.28}, 0.55, -1);
    canvas_.fill(0x9bb36a, 0.3);
  }

  Canvas& canvas_;
  const Atlas& atlas_;
  const AerialTextures& textures_;
  TileAddress tile_;
  int zoom_;
};

}  // namespace

void paintAerial(Canvas& canvas, const TileAddress& tile, const Atlas& atlas) {
  static const AerialTextures textures;
  AerialPainter(canvas, atlas, textures, tile).paint();
}

}  // namespace fleetor::demo
