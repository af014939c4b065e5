#include <map>
#include <numbers>

#include "demo/map/countryside.h"
#include "demo/map/map_draft.h"

namespace fleetor::demo {
namespace {

class Settler {
 public:
  Settler(MapDraft& draft, const Countryside& land) : draft_(draft), land_(land) {}

  void drawVillages() {
    for (const Village& village : land_.villages) {
      draft_.name(NameKind::village, village.name, village.at, 10);
      std::vector<Shape> lanes;
      for (const Road& road : land_.roads) {
        if (distanceTo(road.line, village.at, false) > 30) continue;
        const Walk walk(road.line);
        const bool fromHere =
            distanceBetween(road.line.front(), village.at) < distanceBetween(road.line.back(), village.at);
        const double reach = std::min(walk.length() / 2, draft_.random.between(260, 520));
        lanes.push_back(fromHere ? walk.between(0, reach)
                                 : walk.between(walk.length() - reach, walk.length()));
      }
      const std::size_t through = lanes.size();
      const int wanted = 5 + static_cast<int>(draft_.random.below(4));
      const double turn = draft_.random.between(0, 1);
      for (int i = 0; i < wanted; ++i) {
        const double angle = turn + 2 * std::numbers::pi * (i + draft_.random.between(-0.2, 0.2)) / wanted;
        const Point ray{std::cos(angle), std::sin(angle)};
        // Not where a road leaves already.
        const Point probe = village.at + ray * 150;
        if (std::ranges::any_of(lanes,
                                [&](const Shape& lane) { return distanceTo(lane, probe, false) < 80; }))
          continue;
        const double reach = draft_.random.between(180, 420);
        const double bend = draft_.random.between(-90, 90);
        lanes.push_back(smoothed({village.at, village.at + ray * (reach * 0.5) + leftOf(ray) * (bend * 0.4),
                                  village.at + ray * reach + leftOf(ray) * bend},
                                 false));
      }
      Shape ground = ringAround(village.at, 40, [&](Point ray) {
        double reach = 70;
        for (double r = 70; r < 560; r += 25)
          if (std::ranges::any_of(lanes, [&](const Shape& lane) {
                return distanceTo(lane, village.at + ray * r, false) < 62;
              }))
            reach = r;
        return ray * reach;
      });
      draft_.areas.push_back({LandUse::builtUp, 1, 0, smoothed(std::move(ground), true)});
      for (const Shape& lane : lanes)
        draft_.reserve(lane, 4.5);
      for (std::size_t i = 0; i < lanes.size(); ++i) {
        if (i >= through) draft_.roads.push_back({RoadClass::residential, false, false, lanes[i]});
        const Walk walk(lanes[i]);
        for (const bool left : {true, false})
          draft_.buildAlong({walk, left, 0, i < through ? 5.2 : 3.9, Housing::detached, nullptr, false});
      }
    }
  }

  void drawCountryRoads() {
    std::map<std::string, Shape> whole;
    for (std::size_t i = 0; i < land_.roads.size(); ++i) {
      const Road& road = land_.roads[i];
      draft_.roads.push_back(road);
      Shape& line = whole[land_.roadNames[i]];
      const bool goesOn = !line.empty() && distanceBetween(line.back(), road.line.front()) < 1;
      if (!line.empty() && !goesOn) {
        draft_.nameLine(NameKind::street, 14, land_.roadNames[i], line, 65);
        line.clear();
      }
      line.insert(line.end(), road.line.begin(), road.line.end());
      const Walk walk(road.line);
      if (!road.bridge)
        for (double metres = 500; metres < walk.length() - 500; metres += 420)
          if (draft_.random.chance(0.42)) settleFarm(walk.at(metres));
      for (const bool left : {true, false})
        if (draft_.random.chance(0.35)) draft_.plantAlong(walk, 9, left, 13, 0.6);
    }
    for (auto& [text, line] : whole)
      draft_.nameLine(NameKind::street, 14, text, std::move(line), 65);
  }

  void settleFarm(const Station& road) {
    const double side = draft_.random.chance(0.5) ? 1 : -1;
    const Station yard{road.at + leftOf(road.direction) * (side * draft_.random.between(70, 160)),
                       unitOf(road.direction + leftOf(road.direction) * draft_.random.between(-0.4, 0.4))};
    if (std::ranges::any_of(land_.roads,
                            [&](const Road& other) { return distanceTo(other.line, yard.at, false) < 45; }))
      return;
    if (!draft_.build(rectangleAt(yard, -22, -8, -6, 6), 7, false, nullptr, 0)) return;
    draft_.build(rectangleAt(yard, 8, 18, -24, 14), 9, true, nullptr, 0);
    draft_.build(rectangleAt(yard, -20, 2, 22, 33), 8, true, nullptr, 0);
    draft_.areas.push_back({LandUse::garden, 90, 0, rectangleAt(yard, -34, 30, -32, 42)});
    for (int i = 0; i < 14; ++i) {
      const double angle = draft_.random.between(0, 2 * std::numbers::pi);
      const Point at = yard.at + Point{std::cos(angle), std::sin(angle)} * draft_.random.between(30, 48);
      if (draft_.isFree(at)) draft_.plant(at, 2.5, 5);
    }
    draft_.roads.push_back(
        {RoadClass::drive, false, false,
         smoothed({road.at, lerp(road.at, yard.at, 0.6) + road.direction * 12, yard.at}, false)});
  }

 private:
  MapDraft& draft_;
  const Countryside& land_;
};

}  // namespace

void settleCountryside(MapDraft& draft, const Countryside& land) {
  Settler settler(draft, land);
  settler.drawVillages();
  settler.drawCountryRoads();
}

}  // namespace fleetor::demo
