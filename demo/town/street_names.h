#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "demo/town/random.h"
#include "demo/town/street_network.h"

namespace fleetor::demo {

// Names for streets, parks and villages, each given once.
class StreetNames {
 public:
  explicit StreetNames(std::uint64_t seed) : random_(seed) {}

  std::string nextStreet(RoadClass kind);
  std::string nextPark();
  std::string nextVillage();

 private:
  std::string nextStem();
  std::string unique(const char* ending);

  Random random_;
  std::set<std::string> given_;
};

}  // namespace fleetor::demo
