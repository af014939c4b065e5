#include "demo/town/town.h"

#include <gtest/gtest.h>

#include <set>

#include "demo/town/drive.h"

namespace fleetor::demo {
namespace {

TEST(DemoTown, IsOneConnectedNetworkWhateverTheSeed) {
  for (std::uint64_t seed = 1; seed <= 6; ++seed) {
    const Town town(seed);
    const StreetNetwork& streets = town.streets();
    ASSERT_EQ(town.places().size(), 140u);
    for (const auto& reach : streets.quickestFrom(town.places()[0].junction).reach)
      EXPECT_TRUE(std::isfinite(reach.seconds));
    std::set<std::string> names;
    for (const Street& street : streets.streets())
      EXPECT_TRUE(names.insert(street.name).second) << street.name;
    int bridges = 0;
    for (const StreetEdge& edge : streets.edges()) {
      EXPECT_EQ(edge.line.line().front(), streets.junctions()[edge.from].at);
      EXPECT_EQ(edge.line.line().back(), streets.junctions()[edge.to].at);
      bridges += edge.bridge;
    }
    EXPECT_GE(bridges, 5);
  }
}

TEST(DemoTown, LiesOnTheGlobeTrueToScale) {
  const GeoPosition north = geoPosition({0, 1000});
  const GeoPosition east = geoPosition({1000, 0});
  EXPECT_NEAR((north.latitude - townCentre.latitude) * 111194.93, 1000, 0.2);
  EXPECT_NEAR(
      (east.longitude - townCentre.longitude) * 111194.93 * std::cos(townCentre.latitude * 0.0174532925),
      1000, 0.1);
  EXPECT_LT(distanceBetween(townPoint(geoPosition({-1234, 3456})), {-1234, 3456}), 1e-6);
}

TEST(DemoTown, LetsEveryKindOfVehicleDriveItsWholeRouteWithoutJumps) {
  const Town town(1);
  for (const VehicleKind& kind : vehicleKinds)
    for (std::uint32_t to = 1; to < 140; to += 9) {
      const Drive drive(town, town.route(0, to), kind, to);
      Motion last = drive.at(0);
      EXPECT_EQ(last.speed, 0);
      for (std::int64_t second = 1; second <= drive.seconds(); ++second) {
        const Motion now = drive.at(static_cast<double>(second));
        ASSERT_GE(now.metres, last.metres - 1e-6);
        ASSERT_LE(std::abs(now.speed - last.speed), std::max(kind.acceleration, kind.braking) + 0.01);
        ASSERT_LE(distanceBetween(now.at, last.at), now.metres - last.metres + 0.01);
        last = now;
      }
      EXPECT_NEAR(last.metres, town.drivingMetres(0, to), 1e-6);
    }
}

}  // namespace
}  // namespace fleetor::demo
