#include "demo/map/blocks.h"

#include "demo/town/random.h"

namespace fleetor::demo {
namespace {

// An edge in one of its two directions: twice its index, plus one backwards.
using HalfEdge = std::uint32_t;

class BlockFinder {
 public:
  explicit BlockFinder(const StreetNetwork& streets)
      : streets_(streets), around_(streets.junctions().size()) {
    for (std::uint32_t i = 0; i < streets.junctions().size(); ++i)
      for (const std::uint32_t edge : streets.junctions()[i].edges)
        for (const HalfEdge half : {edge * 2, edge * 2 + 1})
          if (start(half) == i) around_[i].push_back(half);
    for (auto& spokes : around_)
      std::ranges::sort(spokes, {}, [this](HalfEdge half) {
        const Point way = point(half, 1) - point(half, 0);
        return std::atan2(way.y, way.x);
      });
  }

  BlockPlan find() {
    BlockPlan plan;
    plan.besides.assign(streets_.edges().size(), {BlockPlan::none, BlockPlan::none});
    std::vector<bool> walked(streets_.edges().size() * 2, false);
    for (HalfEdge first = 0; first < walked.size(); ++first) {
      if (walked[first]) continue;
      Shape outline;
      std::vector<HalfEdge> sides;
      for (HalfEdge half = first; !walked[half]; half = nextAlongBlock(half)) {
        walked[half] = true;
        sides.push_back(half);
        for (std::size_t i = 0; i + 1 < edge(half).line.line().size(); ++i)
          outline.push_back(point(half, i));
      }
      if (areaOf(outline) <= 0) {
        if (outline.size() > plan.outline.size()) plan.outline.assign(outline.rbegin(), outline.rend());
        continue;
      }
      for (const HalfEdge half : sides)
        plan.besides[half / 2][half % 2] = static_cast<std::uint32_t>(plan.blocks.size());
      plan.blocks.push_back({std::move(outline), Zone::suburb});
    }
    return plan;
  }

 private:
  const StreetEdge& edge(HalfEdge half) const { return streets_.edges()[half / 2]; }
  std::uint32_t start(HalfEdge half) const { return half % 2 == 0 ? edge(half).from : edge(half).to; }
  Point point(HalfEdge half, std::size_t i) const {
    const Shape& line = edge(half).line.line();
    return half % 2 == 0 ? line[i] : line[line.size() - 1 - i];
  }
  // Turns as far left as it can, so that the block stays on the left.
  HalfEdge nextAlongBlock(HalfEdge half) const {
    const HalfEdge back = half ^ 1U;
    const auto& spokes = around_[start(back)];
    const auto at = static_cast<std::size_t>(std::ranges::find(spokes, back) - spokes.begin());
    return spokes[(at + spokes.size() - 1) % spokes.size()];
  }

  const StreetNetwork& streets_;
  std::vector<std::vector<HalfEdge>> around_;
};

Zone zoneOf(const Shape& outline, Random random) {
  const double distance = lengthOf(centroidOf(outline));
  const double hectares = areaOf(outline) / 10000;
  const double dice = random.unit();
  const auto drawn = [dice](double from, double share) { return dice >= from && dice < from + share; };
  if (distance > 2500 && drawn(0, 0.10)) return Zone::industry;
  if (distance > 900 && hectares > 3 && drawn(0.10, 0.035)) return Zone::school;
  if (distance > 1400 && hectares > 3.5 && drawn(0.14, 0.03)) return Zone::sports;
  if (distance > 700 && hectares > 2 && drawn(0.18, 0.04)) return Zone::retail;
  if (distance > 1500 && hectares > 3 && drawn(0.23, 0.012)) return Zone::cemetery;
  if (hectares < 3 && drawn(0.25, 0.025)) return Zone::parking;
  if (distance < 750) return Zone::oldTown;
  return distance + 500 * (random.unit() - 0.5) < 1750 ? Zone::terraces : Zone::suburb;
}

}  // namespace

BlockPlan planBlocks(const Town& town, std::uint64_t seed) {
  BlockPlan plan = BlockFinder(town.streets()).find();
  std::size_t central = 0;
  for (std::size_t i = 0; i < plan.blocks.size(); ++i) {
    Block& block = plan.blocks[i];
    const Point middle = centroidOf(block.outline);
    const auto onBank = [&](Point p) {
      return distanceTo(town.river(), p, false) < Town::riverWidth / 2 + 14;
    };
    const bool inPark =
        std::ranges::any_of(town.parks(), [&](const Park& park) { return contains(park.outline, middle); });
    if (inPark)
      block.zone = Zone::park;
    else if (onBank(middle) || std::ranges::any_of(block.outline, onBank))
      block.zone = Zone::riverside;
    else
      block.zone = zoneOf(block.outline, Random(hashOf(seed, i)));
    if (block.zone == Zone::oldTown && lengthOf(middle) < lengthOf(centroidOf(plan.blocks[central].outline)))
      central = i;
  }
  plan.blocks[central].zone = Zone::square;
  return plan;
}

}  // namespace fleetor::demo
