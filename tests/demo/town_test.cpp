#include "demo/town/town.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

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

}  // namespace
}  // namespace fleetor::demo
