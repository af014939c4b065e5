#include "demo/map/map_painter.h"

namespace fleetor::demo {
namespace {

class MapPainter {
 public:
  MapPainter(Canvas& canvas, const Atlas& atlas, const Palette& palette)
      : canvas_(canvas), atlas_(atlas), palette_(palette), zoom_(canvas.zoom()) {}

  void paint() {
    canvas_.paint(palette_.sea);
    for (const Shape& land : atlas_.continents())
      canvas_.addPolygon(land);
    canvas_.fill(palette_.land);
    const Box reach = canvas_.boxWithMargin(64);
    if (!atlas_.touchesIsland(reach)) return;
    paintIsland();
    if (zoom_ < 8) return;
    paintAreas(reach);
    if (zoom_ >= 16) paintTrees(false);
    paintRoads(reach);
    if (zoom_ >= 15) paintBuildings();
    if (zoom_ >= 17) paintTrees(true);
  }

 private:
  void paintIsland() {
    canvas_.addPolygon(atlas_.coast());
    if (zoom_ < 11) {
      canvas_.fill(palette_.land);
      return;
    }
    canvas_.fill(palette_.sand);
    canvas_.addPolygon(atlas_.shore());
    canvas_.fill(palette_.land);
  }

  bool shows(const Area& area) const {
    switch (area.use) {
      case LandUse::field:
        return zoom_ >= 12;
      case LandUse::meadow:
        return zoom_ >= 11;
      case LandUse::wood:
        return zoom_ >= 9;
      case LandUse::builtUp:
      case LandUse::park:
      case LandUse::water:
        return true;
      case LandUse::garden:
        return zoom_ >= 17;
      case LandUse::parking:
      case LandUse::pitch:
        return zoom_ >= 15;
      default:
        return zoom_ >= 13;
    }
  }

  Colour colourOf(const Area& area) const {
    const Colour base = palette_.uses[static_cast<std::size_t>(area.use)];
    if (area.use == LandUse::field) return palette_.fields[area.tone % palette_.fields.size()];
    if (area.use == LandUse::garden) return mixed(base, palette_.tree, (area.tone % 8) / 40.0);
    return base;
  }

  // Areas of one colour that follow each other are filled together.
  void paintAreas(const Box& reach) {
    const auto ids = atlas_.areasIn(reach);
    // The town and the villages lie over the hedges.
    fillAreas(ids, LandUse::field, LandUse::wood);
    if (zoom_ >= 14) paintHedges(ids);
    fillAreas(ids, LandUse::builtUp, LandUse::water);
    if (zoom_ >= 14) paintEdges(ids);
  }

  void fillAreas(const std::vector<std::uint32_t>& ids, LandUse first, LandUse last) {
    bool open = false;
    Colour colour = 0;
    for (const std::uint32_t id : ids) {
      const Area& area = atlas_.areas()[id];
      if (area.use < first || area.use > last || !shows(area)) continue;
      const Colour next = colourOf(area);
      if (open && next != colour) canvas_.fill(colour);
      open = true;
      colour = next;
      canvas_.addPolygon(area.outline);
    }
    if (open) canvas_.fill(colour);
    if (last != LandUse::wood || zoom_ < 12) return;
    // Neighbouring woods are one: no bright hair between them.
    for (const std::uint32_t id : ids)
      if (const Area& area = atlas_.areas()[id]; area.use == LandUse::wood) canvas_.addPolygon(area.outline);
    canvas_.stroke(palette_.uses[static_cast<std::size_t>(LandUse::wood)], 1.5);
  }

  void paintHedges(const std::vector<std::uint32_t>& ids) {
    for (const std::uint32_t id : ids)
      if (const Area& area = atlas_.areas()[id]; area.use <= LandUse::meadow)
        canvas_.addPolygon(area.outline);
    canvas_.stroke(palette_.hedge, zoom_ >= 16 ? 2 : 1);
  }

  // Banks, the lines of parking bays and pitches.
  void paintEdges(const std::vector<std::uint32_t>& ids) {
    for (const std::uint32_t id : ids) {
      const Area& area = atlas_.areas()[id];
      if (!shows(area)) continue;
      if (area.use == LandUse::water) {
        canvas_.addPolygon(area.outline);
        canvas_.stroke(mixed(palette_.sea, 0x35668a, 0.28), 1.2);
      } else if (area.use == LandUse::pitch) {
        canvas_.addPolygon(area.outline);
        canvas_.stroke(mixed(palette_.uses[static_cast<std::size_t>(LandUse::pitch)], 0xffffff, 0.6), 1);
      } else if (area.use == LandUse::parking && zoom_ >= 17) {
        paintBays(area);
      }
    }
  }

  void paintBays(const Area& area) {
    const Point along{std::cos(area.bearing), std::sin(area.bearing)};
    const Point across = leftOf(along);
    const Box box = boxOf(area.outline);
    const Point middle = centroidOf(area.outline);
    const double reach = std::hypot(box.right - box.left, box.top - box.bottom) / 2;
    for (double y = -std::floor(reach / 16) * 16; y < reach; y += 16)
      for (double x = -std::floor(reach / 2.5) * 2.5; x < reach; x += 2.5) {
        const Point from = middle + along * x + across * (y - 5);
        const Point to = middle + along * x + across * (y + 5);
        if (contains(area.outline, from) && contains(area.outline, to)) canvas_.addLine({from, to});
      }
    cairo_set_line_cap(canvas_.cairo(), CAIRO_LINE_CAP_BUTT);
    canvas_.stroke(palette_.bay, canvas_.pixels(0.25), 0.9);
    cairo_set_line_cap(canvas_.cairo(), CAIRO_LINE_CAP_ROUND);
  }

  void paintRoads(const Box& reach) {
    const std::vector<std::uint32_t> ids = atlas_.roadsIn(reach);
    const auto add = [&](int kind, bool bridge) {
      bool any = false;
      for (const std::uint32_t id : ids) {
        const Road& road = atlas_.roads()[id];
        if (static_cast<int>(road.kind) != kind || road.bridge != bridge) continue;
        canvas_.addLine(road.line);
        any = true;
      }
      return any;
    };
    const auto width = [&](int kind) { return roadWidth(static_cast<RoadClass>(kind), zoom_); };
    const auto border = [&](int kind) {
      return width(kind) < 2 ? 0 : std::min(3.0, 0.9 + 0.05 * width(kind));
    };
    for (int kind = 0; kind < kRoadClasses; ++kind)
      if (border(kind) > 0 && add(kind, false))
        canvas_.stroke(palette_.roads[static_cast<std::size_t>(kind)].border, width(kind) + 2 * border(kind));
    for (int kind = 0; kind < kRoadClasses; ++kind)
      if (width(kind) > 0 && add(kind, false))
        canvas_.stroke(palette_.roads[static_cast<std::size_t>(kind)].surface, width(kind));
    // Over the water, and over the ends of the roads on both banks.
    for (int kind = 0; kind < kRoadClasses; ++kind) {
      const RoadColours& colours = palette_.roads[static_cast<std::size_t>(kind)];
      if (width(kind) <= 0) continue;
      cairo_set_line_cap(canvas_.cairo(), CAIRO_LINE_CAP_BUTT);
      if (border(kind) > 0 && add(kind, true))
        canvas_.stroke(palette_.bridge, width(kind) + 2 * border(kind) + 0.8);
      cairo_set_line_cap(canvas_.cairo(), CAIRO_LINE_CAP_ROUND);
      if (add(kind, true)) canvas_.stroke(colours.surface, width(kind));
    }
  }

  void paintBuildings() {
    const bool raised = zoom_ >= 17;
    constexpr double kLean = 0.32;  // metres northwards for a metre of height
    const auto ids = atlas_.buildingsIn(canvas_.box().grownBy(30));
    if (!raised) {
      for (const bool large : {false, true}) {
        for (const std::uint32_t id : ids)
          if (const Building& building = atlas_.buildings()[id]; building.large == large)
            canvas_.addPolygon(building.outline);
        canvas_.use(large ? palette_.largeRoof : palette_.roof);
        cairo_fill_preserve(canvas_.cairo());
        canvas_.stroke(palette_.wall, zoom_ == 15 ? 0.4 : 0.7);
      }
      return;
    }
    for (const std::uint32_t id : ids) {
      const Building& building = atlas_.buildings()[id];
      const Point lift{0, building.height * kLean};
      const Colour roof = mixed(building.large ? palette_.largeRoof : palette_.roof, palette_.wall,
                                (building.tone % 16) / 50.0);
      Shape top = building.outline;
      for (Point& p : top)
        p = p + lift;
      for (std::size_t i = 0, j = top.size() - 1; i < top.size(); j = i++)
        canvas_.addPolygon({building.outline[j], building.outline[i], top[i], top[j]});
      canvas_.addPolygon(building.outline);
      cairo_set_fill_rule(canvas_.cairo(), CAIRO_FILL_RULE_WINDING);
      canvas_.fill(palette_.wall);
      canvas_.addPolygon(top);
      canvas_.use(roof);
      cairo_fill_preserve(canvas_.cairo());
      canvas_.stroke(mixed(roof, palette_.wall, 0.7), 0.8);
    }
  }

  // Low ones stand under the roads' level, tall crowns over the roofs' edges.
  void paintTrees(bool crowns) {
    if (crowns != (zoom_ >= 17)) return;
    for (const std::uint32_t id : atlas_.treesIn(canvas_.box().grownBy(8))) {
      const Tree& tree = atlas_.trees()[id];
      canvas_.addDisc(tree.at, canvas_.pixels(tree.radius));
    }
    canvas_.fill(palette_.tree, 0.75);
  }

  Canvas& canvas_;
  const Atlas& atlas_;
  const Palette& palette_;
  int zoom_;
};

}  // namespace

void paintMap(Canvas& canvas, const Atlas& atlas, const Palette& palette) {
  MapPainter(canvas, atlas, palette).paint();
}

}  // namespace fleetor::demo
