#include "map/marker_choice.h"

#include "support/testing.h"

namespace fleetor {
namespace {

constexpr double few = 1.0 / 4096;  // of the world

std::vector<WorldPoint> grid(int side, double step) {
  std::vector<WorldPoint> places;
  for (int row = 0; row < side; ++row)
    for (int column = 0; column < side; ++column)
      places.push_back({0.5 + column * step, 0.3 + row * step});
  return places;
}

TEST(MarkerChoice, DrawsAllThatIsNearUntilThereAreTooMany) {
  const auto places = grid(100, few);
  EXPECT_THAT(chooseMarkers(places, {0.5, 0.3, 0.5 + few, 0.3 + few}, 4), ElementsAre(0, 1, 100, 101));
  EXPECT_THAT(chooseMarkers(places, {0.1, 0.1, 0.2, 0.2}, 4), IsEmpty());
  const WorldRect all{0.49, 0.29, 0.53, 0.33};
  EXPECT_THAT(chooseMarkers(places, all, 10'000), SizeIs(10'000));

  const auto some = chooseMarkers(places, all, 300);
  EXPECT_TRUE(some.size() <= 300 && some.size() > 60) << some.size();
  EXPECT_TRUE(std::ranges::is_sorted(some));
  // Evenly: wherever a marker would be drawn, one is, or one close by.
  for (const WorldPoint& place : places) {
    const bool near = std::ranges::any_of(some, [&](std::size_t i) {
      return std::abs(places[i].x - place.x) < 16 * few && std::abs(places[i].y - place.y) < 16 * few;
    });
    EXPECT_TRUE(near) << place.x << " " << place.y;
  }
  // A window that moves on leaves what shows in both.
  const auto moved = chooseMarkers(places, {0.491, 0.291, 0.531, 0.331}, 300);
  EXPECT_EQ(moved, some);
}

TEST(MarkerChoice, KeepsTheLastOfThoseInOnePlaceAndFindsEveryCopyOfTheWorld) {
  const std::vector<WorldPoint> same(86'400, {0.5, 0.3});
  EXPECT_THAT(chooseMarkers(same, {0.4, 0.2, 0.6, 0.4}, 300), ElementsAre(86'399));
  EXPECT_THAT(chooseMarkers(same, {0.5, 0.3, 0.5, 0.3}, 2), ElementsAre(86'398, 86'399));

  const std::vector<WorldPoint> seam{{0.999, 0.5}, {0.001, 0.5}, {0.5, 0.5}};
  EXPECT_THAT(chooseMarkers(seam, {-0.01, 0.4, 0.01, 0.6}, 5), ElementsAre(0, 1));
  EXPECT_THAT(chooseMarkers(seam, {0.99, 0.4, 1.01, 0.6}, 5), ElementsAre(0, 1));
  EXPECT_THAT(chooseMarkers(seam, {0.99, 0.4, 1.01, 0.6}, 1), SizeIs(1));
}

}  // namespace
}  // namespace fleetor
