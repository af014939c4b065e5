#include "app/heap.h"

#include <malloc.h>

#include <thread>

#include "support/testing.h"

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

}  // namespace
}  // namespace fleetor
