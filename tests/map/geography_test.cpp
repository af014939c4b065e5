#include <limits>
#include <numbers>

#include "map/great_circle.h"
#include "map/mercator.h"
#include "support/testing.h"

namespace fleetor::test {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Metres east and north of 0/0, as EPSG:3857 counts them.
WorldPoint eastingAndNorthing(WorldPoint point) {
  const double circumference = metresPerWorldUnit(0);
  return {(point.x - 0.5) * circumference, (0.5 - point.y) * circumference};
}

TEST(Mercator, MeetsPublishedPoints) {
  struct Published {
    Coordinate coordinate;
    double easting, northing;
  };
  for (const auto& [coordinate, easting, northing] : {
           // The worked example of EPSG Guidance Note 7-2: 24 22 54.433 N, 100 20 00 W.
           Published{{24 + 22 / 60. + 54.433 / 3600, -(100 + 20 / 60.)}, -11169055.58, 2800000.00},
           // The bounds that the EPSG registry's entry of 3857 gives, and its corner.
           Published{{85.06, 180}, 20037508.34, 20037508.34},
           Published{{-85.06, -180}, -20037508.34, -20037508.34},
           Published{{0, 0}, 0, 0},
       }) {
    const auto [x, y] = eastingAndNorthing(project(coordinate));
    EXPECT_NEAR(x, easting, 0.01);
    EXPECT_NEAR(y, northing, 0.01);
  }
  // The usual table of ground resolutions: 156,543.03 metres a pixel at zoom 0 on the equator, half of it at
  // 60 degrees.
  EXPECT_NEAR(metresPerWorldUnit(0) / pointsPerWorldUnit(0), 156543.03, 0.01);
  EXPECT_NEAR(metresPerWorldUnit(60) / pointsPerWorldUnit(1), 156543.03 / 4, 0.01);
}

TEST(Mercator, KeepsEveryNumberOnTheMap) {
  EXPECT_EQ(project({notANumber, notANumber}), project({0, 0}));
  EXPECT_EQ(project({-HUGE_VAL, HUGE_VAL}), project({0, 0}));
  EXPECT_EQ(project({90, 10}).y, 0);
  EXPECT_EQ(project({-1e300, 10}).y, 1);
  EXPECT_NEAR(project({0, -890}).x, project({0, -170}).x, 1e-12);
  for (const double odd : {notANumber, HUGE_VAL, 90.0, -1e300})
    EXPECT_GT(metresPerWorldUnit(odd), 3.4e6);
}

TEST(GreatCircle, MeetsPublishedDistances) {
  constexpr double radius = 6371008.8;
  // E. Williams, "Aviation Formulary": Los Angeles to New York is 0.623585 radians.
  const Coordinate losAngeles{33 + 57 / 60., -(118 + 24 / 60.)};
  const Coordinate newYork{40 + 38 / 60., -(73 + 47 / 60.)};
  EXPECT_NEAR(distanceInMetres(losAngeles, newYork) / radius, 0.623585, 5e-7);
  EXPECT_EQ(distanceInMetres(losAngeles, newYork), distanceInMetres(newYork, losAngeles));
  // A quarter of the mean meridian, 10,007.557 km.
  EXPECT_NEAR(distanceInMetres({0, 77}, {90, -12}), 10007557, 1);
  EXPECT_NEAR(distanceInMetres({10, 20}, {-10, -160}), std::numbers::pi * radius, 1) << "opposite points";
}

TEST(GreatCircle, IsExactBetweenNeighbours) {
  const double step = 6371008.8 * 1e-5 * std::numbers::pi / 180;  // a hundred-thousandth of a degree: 1.1 m
  EXPECT_NEAR(distanceInMetres({48.1, 11.5}, {48.10001, 11.5}), step, 1e-6);
  EXPECT_NEAR(distanceInMetres({0, 179.999995}, {0, -179.999995}), step, 1e-6) << "across the antimeridian";
  EXPECT_NEAR(distanceInMetres({60, 11.5}, {60, 11.50001}), step / 2, 1e-6);
  EXPECT_NEAR(distanceInMetres({90, 0}, {90, 135}), 0, 1e-6) << "one and the same pole";
  EXPECT_EQ(distanceInMetres({notANumber, HUGE_VAL}, {0, 0}), 0);
}

}  // namespace fleetor::test
