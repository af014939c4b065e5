#include "map/marker_stacks.h"

#include "support/testing.h"

namespace fleetor {
namespace {

MarkerSpot spot(double x, double y, double height = 0) {
  return {{x, y}, {x, y}, height};
}

/// Which callout is open after each of so many taps there; -1 for none.
std::vector<int> taps(const std::vector<MarkerSpot>& spots, ScreenPoint finger, int count) {
  const MarkerStacks stacks(spots);
  std::vector<int> opened;
  std::optional<std::size_t> open;
  for (int i = 0; i < count; ++i) {
    const auto touched = stacks.touched(finger);
    open = touched ? stacks.toOpen(*touched, open) : std::nullopt;
    opened.push_back(open ? static_cast<int>(*open) : -1);
  }
  return opened;
}

TEST(MarkerStacks, ATapOpensTheMarkerThatItTouchesAndClosesItAgain) {
  const std::vector<MarkerSpot> row{spot(0, 0), spot(20, 0), spot(40, 0, 1000)};
  EXPECT_THAT(taps(row, {8, 0}, 3), ElementsAre(0, -1, 0)) << "not a higher one within reach";
  EXPECT_THAT(taps(row, {24, 5}, 1), ElementsAre(1));
  EXPECT_THAT(taps(row, {62, 0}, 1), ElementsAre(2));
  EXPECT_THAT(taps(row, {20, 25}, 1), ElementsAre(-1));
  EXPECT_THAT(taps({}, {0, 0}, 1), ElementsAre(-1));
}

TEST(MarkerStacks, TapsGoRoundTheMarkersOfOnePlaceFromTheOneTouched) {
  const std::vector<MarkerSpot> depot{spot(0, 0), spot(3, 4, 1000), spot(0, 0), spot(30, 0), spot(-12, 0)};
  EXPECT_THAT(taps(depot, {0, 0}, 4), ElementsAre(2, 0, 1, 2)) << "of two as near the upper one comes first";
  EXPECT_THAT(taps(depot, {30, 0}, 2), ElementsAre(3, -1));
  const MarkerStacks stacks(depot);
  std::vector<std::size_t> sizes;
  for (std::size_t i = 0; i < depot.size(); ++i)
    sizes.push_back(stacks.sizeBelow(i));
  EXPECT_THAT(sizes, ElementsAre(0, 3, 0, 1, 1)) << "twelve points from the topmost one and no further";

  // A picture that stands on its place is touched where it is seen.
  const std::vector<MarkerSpot> start{{{0, 0}, {0, -20}, 0}, spot(2, 0, 1000)};
  EXPECT_THAT(taps(start, {0, -25}, 3), ElementsAre(0, 1, 0));
  EXPECT_THAT(taps(start, {0, 4}, 2), ElementsAre(1, 0));
}

}  // namespace
}  // namespace fleetor
