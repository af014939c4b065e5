#include "demo/map/atlas.h"

#include <iterator>
#include <numbers>

#include "demo/map/blocks.h"
#include "demo/map/countryside.h"
#include "demo/map/map_draft.h"
#include "demo/map/world.h"

namespace fleetor::demo {
namespace {

double halfWidth(RoadClass kind) {
  constexpr double halves[roadClasses] = {1.5, 2, 3.9, 5.2, 7, 9};
  return halves[static_cast<int>(kind)];
}

// Everything between the plan of the town and the finished atlas.
class Cartographer : public MapDraft {
 public:
  Cartographer(const Town& town, std::uint64_t seed)
      : MapDraft(hashOf(seed, 20)),
        town_(town),
        streets_(town.streets()),
        seed_(seed),
        plan_(planBlocks(town, hashOf(seed, 21))) {}

  void draw() {
    land = drawCountryside(*this, town_.river(), plan_.outline, gates(), hashOf(seed_, 23));
    areas.push_back({LandUse::builtUp, 0, 0, plan_.outline});
    name(NameKind::town, town_.name(), {0, 0}, 0);
    drawStreets();
    drawBlocks();
    drawParks();
    drawHouses();
    drawBanks();
    std::erase_if(trees, [&](const Tree& tree) { return contains(land.lake, tree.at); });
    std::ranges::stable_sort(areas, {}, &Area::use);
  }

  Countryside land;

 private:
  // Where main roads meet the ring.
  std::vector<Point> gates() const {
    std::vector<Point> found;
    for (const Junction& junction : streets_.junctions()) {
      bool ring = false;
      bool main = false;
      for (const std::uint32_t edge : junction.edges) {
        ring = ring || streets_.kindOf(streets_.edges()[edge]) == RoadClass::ring;
        main = main || streets_.kindOf(streets_.edges()[edge]) == RoadClass::main;
      }
      if (ring && main) found.push_back(junction.at);
    }
    return found;
  }

  void drawStreets() {
    std::vector<std::vector<const StreetEdge*>> edgesOf(streets_.streets().size());
    for (const StreetEdge& edge : streets_.edges()) {
      edgesOf[edge.street].push_back(&edge);
      roads.push_back({streets_.kindOf(edge), edge.bridge, edge.line.line()});
    }
    for (std::size_t i = 0; i < edgesOf.size(); ++i) {
      std::ranges::sort(edgesOf[i], {}, &StreetEdge::houseOffset);
      Shape line;
      for (const StreetEdge* edge : edgesOf[i]) {
        const Shape& part = edge->line.line();
        line.insert(line.end(), part.begin() + (line.empty() ? 0 : 1), part.end());
      }
      const Street& street = streets_.streets()[i];
      const RoadClass kind = street.kind;
      const int firstZoom = kind == RoadClass::residential ? 15 : kind == RoadClass::collector ? 14 : 13;
      nameLine(NameKind::street, firstZoom, street.name, std::move(line), 100 - 10 * static_cast<int>(kind));
    }
  }

  void drawBlocks() {
    // By Zone; a park is laid out separately.
    constexpr LandUse grounds[] = {LandUse::oldTown,  LandUse::housing, LandUse::housing, LandUse::park,
                                   LandUse::lawn,     LandUse::square,  LandUse::housing, LandUse::retail,
                                   LandUse::industry, LandUse::school,  LandUse::sports,  LandUse::cemetery};
    int schools = 0;
    for (const Block& block : plan_.blocks) {
      if (block.zone != Zone::park)
        areas.push_back({grounds[static_cast<int>(block.zone)], static_cast<std::uint8_t>(random.below(256)),
                         0, block.outline});
      const Point middle = centroidOf(block.outline);
      if (block.zone == Zone::retail) fillBlock(block.outline, 58, 34, 26, 0.6);
      if (block.zone == Zone::retail || block.zone == Zone::parking) layParking(block.outline);
      if (block.zone == Zone::industry) fillBlock(block.outline, 46, 30, 15, 0.72);
      if (block.zone == Zone::school) {
        layPitch(block.outline, 0.22);
        fillBlock(block.outline, 54, 15, 18, 0.55);
        constexpr const char* kinds[] = {"School", "College", "Grammar School"};
        name(NameKind::landmark, std::string(kinds[schools++ % 3]), middle, 60);
      }
      if (block.zone == Zone::sports) {
        layPitch(block.outline, -0.2);
        layPitch(block.outline, 0.22);
        name(NameKind::landmark, "Sports Ground", middle, 62);
      }
      if (block.zone == Zone::cemetery) {
        scatter(block.outline, 22, 0.7);
        name(NameKind::landmark, "Cemetery", middle, 61);
        layPath(block.outline);
      }
      if (block.zone == Zone::suburb || block.zone == Zone::terraces) layCourt(block);
      if (block.zone == Zone::square) {
        fillBlock(block.outline, 34, 22, 60, 0.5);
        name(NameKind::landmark, "Market Square", middle, 40);
      }
    }
  }

  // What lies behind the houses' gardens: grass and trees that belong to all.
  void layCourt(const Block& block) {
    const bool suburb = block.zone == Zone::suburb;
    Shape court = insetOf(block.outline, suburb ? 58 : 24);
    if (court.size() < 4 || areaOf(court) < 900) return;
    scatter(court, suburb ? 15 : 13, suburb ? 0.52 : 0.45);
    areas.push_back({LandUse::garden, static_cast<std::uint8_t>(random.below(100)), 0, std::move(court)});
  }

  void layParking(const Shape& block) {
    const Shape lot = insetOf(block, 16);
    if (lot.size() < 3 || areaOf(lot) < 0.3 * areaOf(block)) return;
    const Station side = longestSide(block);
    areas.push_back({LandUse::parking, static_cast<std::uint8_t>(random.below(256)),
                     static_cast<float>(std::atan2(side.direction.y, side.direction.x)), lot});
    name(NameKind::parking, "P", centroidOf(lot), 70);
  }

  void layPitch(const Shape& block, double shift) {
    const Station side = longestSide(block);
    const double room = std::sqrt(areaOf(block));
    const double half = std::min(50.0, room * 0.24);
    const Shape pitch = rectangleAt(side, -half, half, room * shift - half * 0.6, room * shift + half * 0.6);
    for (const Point corner : pitch)
      if (!contains(block, corner) || distanceTo(block, corner, true) < 14) return;
    reserve({lerp(pitch[0], pitch[3], 0.5), lerp(pitch[1], pitch[2], 0.5)}, half * 0.6 + 5);
    areas.push_back(
        {LandUse::pitch, 0, static_cast<float>(std::atan2(side.direction.y, side.direction.x)), pitch});
  }

  void scatter(const Shape& ground, double spacing, double share) {
    const Box box = boxOf(ground);
    for (double y = box.bottom; y < box.top; y += spacing)
      for (double x = box.left; x < box.right; x += spacing) {
        const Point at{x + random.between(0, spacing), y + random.between(0, spacing)};
        const bool clump = fractalNoise(hashOf(seed_, 24), at.x / 130, at.y / 130) < share;
        if (clump && contains(ground, at) && distanceTo(ground, at, true) > 13 && clearOfPaths(at))
          plant(at, 2.2, 5);
      }
  }
  bool clearOfPaths(Point at) const {
    return std::ranges::none_of(paths_, [&](const Shape& path) { return distanceTo(path, at, false) < 4.5; });
  }

  void pave(Shape line) {
    paths_.push_back(line);
    roads.push_back({RoadClass::path, false, std::move(line)});
  }

  // A round way inside, and ways in from the border.
  void layPath(const Shape& ground) {
    const Point middle = centroidOf(ground);
    Shape round;
    constexpr int points = 14;
    for (int i = 0; i < points; ++i) {
      const double angle = 2 * std::numbers::pi * i / points;
      const Point ray{std::cos(angle), std::sin(angle)};
      double reach = 10;
      while (contains(ground, middle + ray * (reach + 10)))
        reach += 10;
      round.push_back(middle + ray * (reach * random.between(0.55, 0.72)));
      if (i % 3 == 0) {
        const Point out = middle + ray * (reach + 6);
        const Point bend = lerp(round.back(), out, 0.5) + leftOf(ray) * random.between(-18, 18);
        pave(smoothed({round.back(), bend, out}, false));
        if (i % 6 == 0 && distanceToRoads(middle) > 40)
          pave(smoothed({middle + ray * 8, lerp(middle, round.back(), 0.5) + leftOf(ray) * 16, round.back()},
                        false));
      }
    }
    round = smoothed(std::move(round), true);
    round.push_back(round.front());
    pave(std::move(round));
  }

  double distanceToRoads(Point at) const {
    double best = 1e9;
    for (const Road& road : roads)
      if (road.kind != RoadClass::path && distanceBetween(road.line.front(), at) < 900)
        best = std::min(best, distanceTo(road.line, at, false));
    return best;
  }

  void drawParks() {
    for (const Park& park : town_.parks()) {
      const Shape& outline = park.outline;
      areas.push_back({LandUse::park, 0, 0, outline});
      name(NameKind::park, park.name, centroidOf(outline), 20);
      // A main road may run through: then each part is laid out on its own.
      for (const Block& block : plan_.blocks) {
        if (block.zone != Zone::park || !contains(outline, centroidOf(block.outline))) continue;
        layPath(block.outline);
        const Point middle = centroidOf(block.outline);
        if (areaOf(block.outline) > 60000)
          layPond(middle + Point{random.between(-50, 50), random.between(-50, 50)});
        scatter(block.outline, 11, 0.47);
      }
    }
  }

  void layPond(Point middle) {
    Shape pond = smoothed(ringAround(middle, 24,
                                     [&](Point ray) {
                                       const double size =
                                           30 + 75 * fractalNoise(hashOf(seed_, 25), ray.x + middle.x,
                                                                  ray.y + middle.y);
                                       return Point{ray.x * size * 1.25, ray.y * size * 0.8};
                                     }),
                          true);
    for (const Point p : pond)
      if (distanceToRoads(p) < 16) return;
    std::erase_if(roads, [&](const Road& road) {
      return road.kind == RoadClass::path &&
             std::ranges::any_of(road.line, [&](Point p) { return contains(pond, p); });
    });
    reserve({middle + Point{-60, 0}, middle + Point{60, 0}}, 55);
    Shape around = pond;
    for (Point& p : around)
      p = middle + (p - middle) * 1.22;
    around.push_back(around.front());
    pave(std::move(around));
    areas.push_back({LandUse::water, 1, 0, std::move(pond)});
  }

  void drawHouses() {
    for (const RoadClass wanted :
         {RoadClass::ring, RoadClass::main, RoadClass::collector, RoadClass::residential})
      for (std::size_t i = 0; i < streets_.edges().size(); ++i) {
        const StreetEdge& edge = streets_.edges()[i];
        const RoadClass kind = streets_.kindOf(edge);
        if (kind != wanted || edge.bridge) continue;
        const Walk& walk = edge.line;
        for (const std::size_t side : {0U, 1U}) {
          const std::uint32_t index = plan_.besides[i][side];
          if (index != BlockPlan::none) buildBeside(walk, edge, kind, side == 0, plan_.blocks[index]);
          if (kind >= RoadClass::collector) plantAlong(walk, halfWidth(kind) + 1.6, side == 0, 17, 0.7);
        }
      }
    // Workshops and back houses in the yards of the old town.
    for (const Block& block : plan_.blocks)
      if (block.zone == Zone::oldTown) {
        fillBlock(insetOf(block.outline, 22), 15, 9, 9, 0.5, false);
        scatter(insetOf(block.outline, 18), 13, 0.42);
      }
  }

  void buildBeside(const Walk& walk, const StreetEdge& edge, RoadClass kind, bool left, const Block& block) {
    Frontage frontage{walk, left, edge.houseOffset, halfWidth(kind), Housing::detached, &block.outline, true};
    const double middle = lengthOf(centroidOf(block.outline));
    if (block.zone == Zone::oldTown || (block.zone == Zone::riverside && middle < 900))
      frontage.housing = Housing::closedRows;
    else if (block.zone == Zone::terraces || (block.zone == Zone::riverside && middle < 1800))
      frontage.housing = Housing::openRows;
    else if (block.zone != Zone::suburb && block.zone != Zone::riverside)
      return;
    if (kind == RoadClass::ring && frontage.housing == Housing::detached) frontage.halfWidth += 8;
    buildAlong(frontage);
  }

  // Promenades on both banks through the town, with trees.
  void drawBanks() {
    for (const double side : {1.0, -1.0}) {
      Shape line;
      for (const Point p : movedAside(town_.river(), side * (Town::riverWidth / 2 + 9)))
        if (contains(plan_.outline, p)) line.push_back(p);
      if (line.size() < 2) continue;
      const std::size_t before = trees.size();
      plantAlong(Walk(line), 4.5, side > 0, 14, 0.8);
      // None on a bridge.
      const auto first = trees.begin() + static_cast<std::ptrdiff_t>(before);
      trees.erase(std::remove_if(first, trees.end(),
                                 [this](const Tree& tree) { return distanceToRoads(tree.at) < 13; }),
                  trees.end());
      pave(std::move(line));
    }
  }

  const Town& town_;
  const StreetNetwork& streets_;
  std::uint64_t seed_;
  BlockPlan plan_;
  std::vector<Shape> paths_;
};

}  // namespace

Atlas::Atlas(const Town& town, std::uint64_t seed) {
  World world = drawWorld(hashOf(seed, 41));
  continents_ = std::move(world.lands);
  Cartographer cartographer(town, hashOf(seed, 40));
  cartographer.draw();
  coast_ = std::move(cartographer.land.coast);
  shore_ = std::move(cartographer.land.shore);
  areas_ = std::move(cartographer.areas);
  roads_ = std::move(cartographer.roads);
  buildings_ = std::move(cartographer.buildings);
  trees_ = std::move(cartographer.trees);
  names_ = std::move(cartographer.names);
  std::ranges::move(world.names, std::back_inserter(names_));
  index();
}

void Atlas::index() {
  // From the north southwards, so that a tall building hides what stands behind it.
  std::ranges::stable_sort(buildings_, std::greater<>(),
                           [](const Building& b) { return boxOf(b.outline).bottom; });
  for (std::uint32_t i = 0; i < areas_.size(); ++i)
    areaIndex_.add(i, boxOf(areas_[i].outline));
  for (std::uint32_t i = 0; i < roads_.size(); ++i)
    roadIndex_.add(i, boxOf(roads_[i].line));
  for (std::uint32_t i = 0; i < buildings_.size(); ++i)
    buildingIndex_.add(i, boxOf(buildings_[i].outline));
  for (std::uint32_t i = 0; i < trees_.size(); ++i)
    treeIndex_.add(i, Box{trees_[i].at.x, trees_[i].at.y, trees_[i].at.x, trees_[i].at.y});
}

}  // namespace fleetor::demo
