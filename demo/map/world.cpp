#include "demo/map/world.h"

#include "demo/town/random.h"
#include "demo/town/street_names.h"

namespace fleetor::demo {
namespace {

// Kilometres east and north of the town. Lands that overlap are one.
constexpr struct {
  double x, y, radius;
  int ports;
} masses[] = {{-430, 210, 190, 3},   {-500, -130, 240, 4},    {-760, 60, 170, 2},     {-300, 560, 40, 0},
              {-210, 640, 25, 0},    {190, -240, 18, 0},      {260, -190, 12, 0},     {620, -430, 330, 5},
              {1100, -250, 480, 4},  {470, 90, 90, 1},        {560, 560, 200, 3},     {820, 1000, 380, 3},
              {1300, 1350, 420, 2},  {380, -1050, 520, 4},    {1250, -1150, 640, 4},  {-150, -1450, 330, 2},
              {2600, -300, 1300, 3}, {2500, -1900, 1150, 2},  {4300, 700, 1900, 3},   {5200, -2200, 1400, 2},
              {900, -3300, 1250, 3}, {1400, -4900, 1300, 2},  {-3500, 500, 1350, 3},  {-4100, -1600, 1100, 2},
              {-3000, 2300, 800, 0}, {-3500, -4100, 1000, 2}, {-3300, -5300, 800, 1}, {6400, -4700, 800, 1},
              {-7600, 1700, 700, 1}};

constexpr struct {
  const char* name;
  double x, y;
  int rank;
} seas[] = {{"Lark Sea", 60, 260, 2},          {"Inner Sea", 820, 520, 5},
            {"Sound of Tern", -260, -380, 6},  {"Northern Ocean", -700, 1700, 1},
            {"Western Ocean", -1900, -900, 1}, {"Southern Ocean", 3900, -4200, 1},
            {"Far Ocean", -6300, -1600, 1}};

Shape drawLand(Point middle, double radius, std::uint64_t seed) {
  const auto noise = [&](int salt, Point at) { return fractalNoise(hashOf(seed, salt), at.x, at.y) - 0.5; };
  return ringAround(middle, 200 + static_cast<int>(radius / 500), [&](Point ray) {
    const Point at = ray * (1 + 1.1 * noise(1, ray * 1.3));
    // Moved both along and across the ray: headlands and bays, not teeth.
    return (at + Point{noise(2, at * 4.5), noise(3, at * 4.5)} * 0.5) * radius;
  });
}

}  // namespace

World drawWorld(std::uint64_t seed) {
  World world;
  StreetNames names(hashOf(seed, 1));
  Random random(hashOf(seed, 2));
  for (const auto& [x, y, radius, ports] : masses) {
    const Point middle = Point{x, y} * 1000;
    world.lands.push_back(drawLand(middle, radius * 1000, hashOf(seed, 3, world.lands.size())));
    for (int port = 0; port < ports; ++port) {
      const Shape& coast = world.lands.back();
      const Point at = coast[random.below(static_cast<std::uint32_t>(coast.size()))];
      world.names.push_back({names.nextVillage(),
                             NameKind::city,
                             3 + port,
                             21 + 4 * port,
                             lerp(middle, at, random.between(0.5, 0.93)),
                             {}});
    }
  }
  for (const auto& [name, x, y, rank] : seas)
    world.names.push_back({name, NameKind::sea, 0, rank, Point{x, y} * 1000, {}});
  return world;
}

}  // namespace fleetor::demo
