#include "model/text.h"

#include <sstream>
#include <thread>

#include "support/testing.h"

namespace fleetor {
namespace {

TEST(TextTest, OutlivesWhatItWasMadeFromAndSurvivesCopyMoveAndSelfAssignment) {
  std::string source = "Parking";
  Text text = source;
  source = "changed";
  Text copy = text;
  const Text& itself = copy;
  copy = itself;
  const Text moved = std::move(text);
  EXPECT_EQ(copy, "Parking");
  EXPECT_EQ(moved, copy);
  EXPECT_FALSE(text.isSet());  // NOLINT(bugprone-use-after-move)
  text = "again";
  EXPECT_EQ(text.str(), "again");
}

TEST(TextTest, IsSharedBetweenThreads) {
  const Text shared = "52.1";
  std::vector<std::jthread> threads;
  threads.reserve(4);
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([shared] {
      for (int i = 0; i < 5000; ++i) {
        Text mine = shared;
        const Text other = std::move(mine);
        ASSERT_EQ(other.size(), 4u);
      }
    });
  threads.clear();
  EXPECT_EQ(shared, "52.1");
}

TEST(TextTest, ReadsNumbersFromTheStart) {
  const std::pair<const char*, double> odd[] = {{" \t+21.5 km", 21.5}, {"", 0}};
  for (const auto& [text, value] : odd)
    EXPECT_EQ(doubleValue(text), value) << text;
  std::istringstream doubles(
      "52.1 52.1  -0.25 -0.25  12,5 12  1e3 1000  north 0  nan 0  inf 0  1e999 0  +-3 0  .5 0.5");
  std::string text;
  for (double value = 0; doubles >> text >> value;)
    EXPECT_EQ(doubleValue(text), value) << text;

  EXPECT_EQ(integerValue(""), 0);
  EXPECT_EQ(integerValue("  -17x"), -17);
  std::istringstream integers(
      "17 17  +5 5  12.9 12  - 0  + 0  x1 0  +-3 0  9223372036854775807 9223372036854775807 "
      "9223372036854775808 9223372036854775807  -9223372036854775809 -9223372036854775808");
  for (std::int64_t value = 0; integers >> text >> value;)
    EXPECT_EQ(integerValue(text), value) << text;
}

}  // namespace
}  // namespace fleetor
