#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "demo/map/shapes.h"
#include "demo/town/town.h"

namespace fleetor::demo {

// What a block of the town is used for.
enum class Zone : std::uint8_t {
  oldTown,
  terraces,
  suburb,
  park,
  riverside,
  square,
  parking,
  retail,
  industry,
  school,
  sports,
  cemetery,
};

// A piece of ground between streets.
struct Block {
  Shape outline;  // counter-clockwise, the centre lines of the streets around it
  Zone zone = Zone::suburb;
};

struct BlockPlan {
  static constexpr std::uint32_t none = 0xffffffff;

  std::vector<Block> blocks;
  // For every edge of the network the block on its left and on its right; `none` outside the town.
  std::vector<std::array<std::uint32_t, 2>> besides;
  // The border of the town: the outer streets, counter-clockwise.
  Shape outline;
};

BlockPlan planBlocks(const Town& town, std::uint64_t seed);

}  // namespace fleetor::demo
