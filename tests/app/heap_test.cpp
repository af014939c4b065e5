#include "app/heap.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace fleetor {
namespace {

TEST(Heap, ReturnsLargeBlocksWhenAThreadFreesThem) {
  returnLargeBlocks();
  const std::size_t before = mallinfo2().arena;
  std::thread([&] {
    for (int answer = 0; answer < 4; ++answer) {
      std::string body;
      while (body.size() < (std::size_t{64} << 20))
        body.append(65536, ' ');
    }
    EXPECT_LT(mallinfo2().arena, before + (std::size_t{4} << 20));
  }).join();
}

std::size_t residentBytes() {
  std::size_t all = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> all >> resident;
  return resident * static_cast<std::size_t>(getpagesize());
}

TEST(Heap, ReturnsWhatIsFreeBelowBlocksInUse) {
  constexpr std::size_t pages = 8192;
  std::vector<std::unique_ptr<char[]>> blocks;
  for (std::size_t i = 0; i < pages; ++i)
    blocks.push_back(std::make_unique<char[]>(4000));
  blocks.erase(blocks.begin(), blocks.end() - 1);
  const std::size_t before = residentBytes();
  returnFreeMemory();
  EXPECT_LT(residentBytes(), before - pages * 2000);
}

}  // namespace
}  // namespace fleetor
