#include "demo/map/countryside.h"

#include <numbers>

#include "demo/town/random.h"
#include "demo/town/street_names.h"

namespace fleetor::demo {
namespace {

constexpr double meanRadius = 14500;
constexpr double townRadius = 4700;
constexpr int coastPoints = 1600;

struct Village {
  std::string name;
  Point at;
};

class Surveyor {
 public:
  Surveyor(MapDraft& draft, const Shape& townRiver, const Shape& townOutline, const std::vector<Point>& gates,
           std::uint64_t seed)
      : draft_(draft),
        townRiver_(townRiver),
        town_(townOutline),
        gates_(gates),
        seed_(seed),
        random_(hashOf(seed, 1)) {}

  Countryside draw() {
    drawCoast();
    drawRiver();
    draft_.reserve(land_.river, Town::riverWidth / 2 + 16);
    draft_.areas.push_back({LandUse::water, 0, 0, land_.riverBanks});
    draft_.areas.push_back({LandUse::water, 0, 0, land_.lake});
    draft_.name(NameKind::water, "Vel Mere", centroidOf(land_.lake), 15);
    draft_.nameLine(NameKind::river, 0, "River Lark", land_.river, 18);
    placeVillages();
    drawRoads();
    for (const Village& village : villages_)
      drawVillage(village);
    for (const Road& road : roads_)
      drawRoadsides(road);
    draft_.roads.insert(draft_.roads.end(), roads_.begin(), roads_.end());
    divide({{-22000, -22000}, {22000, -22000}, {22000, 22000}, {-22000, 22000}}, random_.between(0.1, 0.6));
    return std::move(land_);
  }

 private:
  double coastRadius(double angle) const {
    const double x = std::cos(angle);
    const double y = std::sin(angle);
    const double bays = fractalNoise(hashOf(seed_, 2), 1.5 * x + 9, 1.5 * y + 9) - 0.5;
    const double rocks = fractalNoise(hashOf(seed_, 3), 14 * x + 50, 14 * y + 50) - 0.5;
    return meanRadius * (1 + 0.12 * x * x) * (1 + 0.75 * bays + 0.09 * rocks);
  }
  bool onLand(Point p, double margin) const {
    return lengthOf(p) < coastRadius(std::atan2(p.y, p.x)) - margin;
  }

  void drawCoast() {
    const auto radius = [this](Point ray) { return coastRadius(std::atan2(ray.y, ray.x)); };
    land_.coast = smoothed(ringAround({}, coastPoints, [&](Point ray) { return ray * radius(ray); }), true);
    const auto sand = [this](Point ray) {
      return 130 * std::max(0.12, smoothNoise(hashOf(seed_, 4), 9 * ray.x, 9 * ray.y) * 1.6 - 0.5);
    };
    land_.shore = smoothed(
        ringAround({}, coastPoints, [&](Point ray) { return ray * (radius(ray) - sand(ray)); }), true);
  }

  // Winds on from an end of the town's river, step by step, the slower to turn the nearer the town.
  Shape windOn(Point from, Point before, double steps, std::uint64_t salt) const {
    Shape line;
    Point way = unitOf(from - before);
    for (int i = 0; i < steps; ++i) {
      const double bend = (smoothNoise(hashOf(seed_, salt), i / 9.0, 0.5) - 0.5) * std::min(1.0, i / 8.0);
      const double aim = std::atan2(0.0, way.x < 0 ? -1.0 : 1.0) + 2.0 * bend;
      way = unitOf(lerp(way, {std::cos(aim), std::sin(aim)}, 0.25));
      from = from + way * 200;
      line.push_back(from);
    }
    return line;
  }

  void drawRiver() {
    const Shape west = windOn(townRiver_.front(), townRiver_[1], 18, 5);
    const Shape east = windOn(townRiver_.back(), townRiver_[townRiver_.size() - 2], 75, 6);
    land_.river.assign(west.rbegin(), west.rend());
    land_.river.insert(land_.river.end(), townRiver_.begin(), townRiver_.end());
    land_.river.insert(land_.river.end(), east.begin(), east.end());

    Shape left;
    Shape right;
    for (std::size_t i = 0; i < land_.river.size(); ++i) {
      const Point p = land_.river[i];
      const Point way =
          unitOf(land_.river[std::min(i + 1, land_.river.size() - 1)] - land_.river[i > 0 ? i - 1 : 0]);
      const double ripple = 6 * (smoothNoise(hashOf(seed_, 7), p.x / 180, 0) - 0.5);
      const double seaward = std::max(0.0, (p.x - 6200) / 7000);
      const double half =
          Town::riverWidth / 2 + (std::abs(p.x) > 4500 ? ripple : 0) + 190 * seaward * seaward;
      left.push_back(p + leftOf(way) * half);
      right.push_back(p - leftOf(way) * half);
    }
    land_.riverBanks = left;
    land_.riverBanks.insert(land_.riverBanks.end(), right.rbegin(), right.rend());

    const Point middle = land_.river.front() + Point{-1100, 0};
    land_.lake = smoothed(ringAround(middle, 140,
                                     [this](Point ray) {
                                       const double size =
                                           0.6 + 0.8 * fractalNoise(hashOf(seed_, 8), 1.6 * ray.x + 5,
                                                                    1.6 * ray.y + 5);
                                       return Point{ray.x * 1350, ray.y * 850} * size;
                                     }),
                          true);
  }

  void placeVillages() {
    StreetNames names(hashOf(seed_, 9));
    for (int tries = 0; tries < 4000 && villages_.size() < 22; ++tries) {
      const double angle = random_.between(0, 2 * std::numbers::pi);
      const Point at = Point{std::cos(angle), std::sin(angle)} * random_.between(6300, 16000);
      const auto near = [&](const Village& other) { return distanceBetween(other.at, at) < 2600; };
      if (!onLand(at, 700) || distanceTo(land_.river, at, false) < 650 ||
          distanceTo(land_.lake, at, true) < 700 || contains(land_.lake, at) ||
          std::ranges::any_of(villages_, near))
        continue;
      villages_.push_back({names.nextVillage(), at});
    }
  }

  bool passable(Point a, Point b) const {
    for (double t = 0.02; t < 0.99; t += 0.04) {
      const Point p = lerp(a, b, t);
      if (!onLand(p, 250) || contains(land_.lake, p) || (t > 0.05 && contains(town_, p))) return false;
    }
    return true;
  }

  Shape windingRoad(Point a, Point b, std::uint64_t salt) const {
    const double length = distanceBetween(a, b);
    const int steps = std::max(3, static_cast<int>(length / 320));
    Shape line;
    for (int i = 0; i <= steps; ++i) {
      const double t = static_cast<double>(i) / steps;
      const double sway = (fractalNoise(hashOf(seed_, salt), t * length / 1500, 0.5) - 0.5) * 4 * t * (1 - t);
      line.push_back(lerp(a, b, t) + leftOf(unitOf(b - a)) * (sway * std::min(700.0, 0.22 * length)));
    }
    return smoothed(std::move(line), false);
  }

  void drawRoads() {
    // Gates and villages are joined unless a third place is nearer to both: a relative neighbourhood graph.
    std::vector<Point> places = gates_;
    for (const Village& village : villages_)
      places.push_back(village.at);
    for (std::size_t i = 0; i < places.size(); ++i)
      for (std::size_t j = std::max(i + 1, gates_.size()); j < places.size(); ++j) {
        const double length = distanceBetween(places[i], places[j]);
        const bool fromGate = i < gates_.size();
        bool direct = length < 8500 && passable(places[i], places[j]);
        for (std::size_t k = fromGate ? gates_.size() : 0; k < places.size() && direct; ++k)
          direct = k == i || k == j ||
                   std::max(distanceBetween(places[i], places[k]), distanceBetween(places[j], places[k])) >=
                       length;
        if (!direct || (fromGate && nearestGate(places[j]) != i)) continue;
        const Village& village = villages_[j - gates_.size()];
        addRoad(windingRoad(places[i], places[j], hashOf(i, j)), fromGate, village.name + " Road");
      }
  }

  std::size_t nearestGate(Point village) const {
    const auto distance = [&](Point gate) { return distanceBetween(gate, village); };
    return static_cast<std::size_t>(std::ranges::min_element(gates_, {}, distance) - gates_.begin());
  }

  // A road crosses the river on a bridge.
  void addRoad(const Shape& line, bool main, const std::string& name) {
    const Walk walk(line);
    const auto wet = [&](double metres) {
      return contains(land_.riverBanks, walk.at(metres).at) || contains(land_.lake, walk.at(metres).at);
    };
    constexpr double step = 10;
    double begin = 0;
    bool bridge = false;
    for (double metres = 0; metres < walk.length(); metres += step) {
      const bool over = wet(metres) || wet(metres + 2 * step) || wet(metres - 2 * step);
      const bool last = metres + step >= walk.length();
      if ((over == bridge && !last) || metres <= begin) continue;
      const double end = last ? walk.length() : metres;
      roads_.push_back({main ? RoadClass::main : RoadClass::collector, bridge, walk.between(begin, end)});
      begin = metres;
      bridge = over;
    }
    draft_.nameLine(NameKind::street, 14, name, line, 65);
  }

  void drawVillage(const Village& village) {
    draft_.name(NameKind::village, village.name, village.at, 10);
    std::vector<Shape> lanes;
    for (const Road& road : roads_) {
      if (distanceTo(road.line, village.at, false) > 30) continue;
      const Walk walk(road.line);
      const bool fromHere =
          distanceBetween(road.line.front(), village.at) < distanceBetween(road.line.back(), village.at);
      const double reach = std::min(walk.length() / 2, random_.between(260, 520));
      lanes.push_back(fromHere ? walk.between(0, reach) : walk.between(walk.length() - reach, walk.length()));
    }
    const std::size_t through = lanes.size();
    const int wanted = 5 + static_cast<int>(random_.below(4));
    const double turn = random_.between(0, 1);
    for (int i = 0; i < wanted; ++i) {
      const double angle = turn + 2 * std::numbers::pi * (i + random_.between(-0.2, 0.2)) / wanted;
      const Point ray{std::cos(angle), std::sin(angle)};
      // Not where a road leaves already.
      const Point probe = village.at + ray * 150;
      if (std::ranges::any_of(lanes, [&](const Shape& lane) { return distanceTo(lane, probe, false) < 80; }))
        continue;
      const double reach = random_.between(180, 420);
      const double bend = random_.between(-90, 90);
      lanes.push_back(smoothed({village.at, village.at + ray * (reach * 0.5) + leftOf(ray) * (bend * 0.4),
                                village.at + ray * reach + leftOf(ray) * bend},
                               false));
    }
    Shape ground = ringAround(village.at, 40, [&](Point ray) {
      double reach = 70;
      for (double r = 70; r < 560; r += 25)
        if (std::ranges::any_of(
                lanes, [&](const Shape& lane) { return distanceTo(lane, village.at + ray * r, false) < 62; }))
          reach = r;
      return ray * reach;
    });
    draft_.areas.push_back({LandUse::builtUp, 1, 0, smoothed(std::move(ground), true)});
    for (const Shape& lane : lanes)
      draft_.reserve(lane, 4.5);
    for (std::size_t i = 0; i < lanes.size(); ++i) {
      if (i >= through) draft_.roads.push_back({RoadClass::residential, false, lanes[i]});
      const Walk walk(lanes[i]);
      for (const bool left : {true, false})
        draft_.buildAlong({walk, left, 0, i < through ? 5.2 : 3.9, Housing::detached, nullptr, false});
    }
  }

  void drawRoadsides(const Road& road) {
    const Walk walk(road.line);
    if (!road.bridge)
      for (double metres = 500; metres < walk.length() - 500; metres += 420)
        if (random_.chance(0.42)) settleFarm(walk.at(metres));
    for (const bool left : {true, false})
      if (random_.chance(0.35)) draft_.plantAlong(walk, 9, left, 13, 0.6);
  }

  void settleFarm(const Station& road) {
    const double side = random_.chance(0.5) ? 1 : -1;
    const Station yard{road.at + leftOf(road.direction) * (side * random_.between(70, 160)),
                       unitOf(road.direction + leftOf(road.direction) * random_.between(-0.4, 0.4))};
    if (std::ranges::any_of(roads_,
                            [&](const Road& other) { return distanceTo(other.line, yard.at, false) < 45; }))
      return;
    if (!draft_.build(rectangleAt(yard, -22, -8, -6, 6), 7, false, nullptr, 0)) return;
    draft_.build(rectangleAt(yard, 8, 18, -24, 14), 9, true, nullptr, 0);
    draft_.build(rectangleAt(yard, -20, 2, 22, 33), 8, true, nullptr, 0);
    draft_.areas.push_back({LandUse::garden, 90, 0, rectangleAt(yard, -34, 30, -32, 42)});
    for (int i = 0; i < 14; ++i) {
      const double angle = random_.between(0, 2 * std::numbers::pi);
      const Point at = yard.at + Point{std::cos(angle), std::sin(angle)} * random_.between(30, 48);
      if (draft_.isFree(at)) draft_.plant(at, 2.5, 5);
    }
    draft_.roads.push_back(
        {RoadClass::drive, false,
         smoothed({road.at, lerp(road.at, yard.at, 0.6) + road.direction * 12, yard.at}, false)});
  }

  // Cuts the land into parcels, each piece across its longer side.
  void divide(const Shape& piece, double bearing) {
    const Point along{std::cos(bearing), std::sin(bearing)};
    double low[2] = {1e9, 1e9};
    double high[2] = {-1e9, -1e9};
    for (const Point p : piece)
      for (const int axis : {0, 1}) {
        const double at = dot(p, axis == 0 ? along : leftOf(along));
        low[axis] = std::min(low[axis], at);
        high[axis] = std::max(high[axis], at);
      }
    const double size = areaOf(piece);
    if (size < 4e6 && tooFarOut(piece)) return;
    if (size < 60000 || (size < 170000 && random_.chance(0.35))) {
      addParcel(piece, bearing);
      return;
    }
    const int axis = high[0] - low[0] > high[1] - low[1] ? 0 : 1;
    const Point normal = axis == 0 ? along : leftOf(along);
    const double cut = std::lerp(low[axis], high[axis], random_.between(0.36, 0.64));
    const double turn = random_.between(-0.16, 0.16);
    const Point middle = centroidOf(piece);
    const Point tilted = unitOf(normal + leftOf(normal) * turn);
    const double level = dot(middle + normal * (cut - dot(middle, normal)), tilted);
    for (const double sign : {1.0, -1.0}) {
      Shape half;
      for (std::size_t i = 0, j = piece.size() - 1; i < piece.size(); j = i++) {
        const double a = sign * (dot(piece[j], tilted) - level);
        const double b = sign * (dot(piece[i], tilted) - level);
        if ((a < 0) != (b < 0)) half.push_back(lerp(piece[j], piece[i], a / (a - b)));
        if (b >= 0) half.push_back(piece[i]);
      }
      if (half.size() > 2) divide(half, bearing + random_.between(-0.12, 0.12));
    }
  }

  bool tooFarOut(const Shape& piece) const {
    return std::ranges::none_of(piece, [this](Point p) { return onLand(p, -1500); });
  }

  // No hedge is straight.
  Point bent(Point p) const {
    const double x = p.x / 1300;
    const double y = p.y / 1300;
    return p + Point{smoothNoise(hashOf(seed_, 10), x, y) - 0.5, smoothNoise(hashOf(seed_, 11), x, y) - 0.5} *
                   420;
  }

  void addParcel(const Shape& piece, double bearing) {
    Area area;
    for (std::size_t i = 0; i < piece.size(); ++i) {
      const Point a = piece[i];
      const Point b = piece[(i + 1) % piece.size()];
      const int steps = std::max(1, static_cast<int>(distanceBetween(a, b) / 110));
      for (int step = 0; step < steps; ++step)
        area.outline.push_back(bent(lerp(a, b, static_cast<double>(step) / steps)));
    }
    for (const Point p : area.outline)
      if (!onLand(p, 190)) return;
    const Point middle = centroidOf(area.outline);
    const bool inTown = lengthOf(middle) < townRadius && contains(town_, middle);
    if (inTown || contains(land_.lake, middle)) return;
    const double wild = fractalNoise(hashOf(seed_, 12), middle.x / 3600, middle.y / 3600);
    const double wet = fractalNoise(hashOf(seed_, 13), middle.x / 2400, middle.y / 2400);
    area.tone = static_cast<std::uint8_t>(random_.below(256));
    area.bearing = static_cast<float>(bearing);
    area.use = wild > 0.575 || random_.chance(0.03)                         ? LandUse::wood
               : wet > 0.54 || distanceTo(land_.river, middle, false) < 260 ? LandUse::meadow
                                                                            : LandUse::field;
    draft_.areas.push_back(std::move(area));
  }

  MapDraft& draft_;
  const Shape& townRiver_;
  const Shape& town_;
  const std::vector<Point>& gates_;
  std::uint64_t seed_;
  Random random_;
  std::vector<Village> villages_;
  std::vector<Road> roads_;
  Countryside land_;
};

}  // namespace

Countryside drawCountryside(MapDraft& draft, const Shape& townRiver, const Shape& townOutline,
                            const std::vector<Point>& gates, std::uint64_t seed) {
  return Surveyor(draft, townRiver, townOutline, gates, seed).draw();
}

}  // namespace fleetor::demo
