#include "model/text.h"

#include <gtest/gtest.h>

#include <limits>
#include <thread>
#include <vector>

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

TEST(TextTest, TellsEmptyFromNeverSetButComparesThemEqual) {
  EXPECT_FALSE(Text().isSet());
  EXPECT_TRUE(Text("").isSet());
  EXPECT_EQ(Text(), Text(""));
  EXPECT_EQ(Text(), "");
  EXPECT_EQ(Text(std::string_view("a\0b", 3)).size(), 3u);
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
  const std::pair<const char*, double> doubles[] = {{"52.1", 52.1},   {" \t+21.5 km", 21.5},
                                                    {"-0.25", -0.25}, {"12,5", 12},
                                                    {"1e3", 1000},    {"", 0},
                                                    {"north", 0},     {"nan", 0},
                                                    {"inf", 0},       {"1e999", 0},
                                                    {"+-3", 0},       {".5", 0.5}};
  for (const auto& [text, value] : doubles)
    EXPECT_EQ(doubleValue(text), value) << text;

  constexpr auto most = std::numeric_limits<std::int64_t>::max();
  constexpr auto least = std::numeric_limits<std::int64_t>::min();
  const std::pair<const char*, std::int64_t> integers[] = {{"17", 17},
                                                           {"  -17x", -17},
                                                           {"+5", 5},
                                                           {"12.9", 12},
                                                           {"", 0},
                                                           {"-", 0},
                                                           {"+", 0},
                                                           {"x1", 0},
                                                           {"+-3", 0},
                                                           {"9223372036854775807", most},
                                                           {"9223372036854775808", most},
                                                           {"-9223372036854775809", least}};
  for (const auto& [text, value] : integers)
    EXPECT_EQ(integerValue(text), value) << text;
}

}  // namespace
}  // namespace fleetor
