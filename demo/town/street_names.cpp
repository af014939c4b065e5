#include "demo/town/street_names.h"

namespace fleetor::demo {
namespace {

constexpr const char* nameHeads[] = {"Alder", "Amber",  "Ash",   "Bram",  "Brack", "Cold",  "Copper", "Dun",
                                     "Elder", "Fair",   "Fal",   "Gorse", "Grey",  "Hazel", "Heron",  "Iver",
                                     "Kelp",  "Kings",  "Lark",  "Lin",   "Long",  "Marl",  "North",  "Oar",
                                     "Otter", "Pebble", "Quill", "Reed",  "Rook",  "Salt",  "Sand",   "Shale",
                                     "Stone", "Swan",   "Tern",  "Thorn", "Vel",   "White", "Wind",   "Wren"};
constexpr const char* nameTails[] = {"bank", "brook", "croft", "dale", "fen",  "field", "ford", "gate",
                                     "ham",  "holt",  "ley",   "mere", "moor", "stead", "well", "wick"};
constexpr const char* residentialEndings[] = {"Street", "Street",  "Lane",    "Way",
                                              "Row",    "Gardens", "Terrace", "Walk"};

}  // namespace

std::string StreetNames::nextStem() {
  const std::string head = random_.oneOf(nameHeads);
  return head + random_.oneOf(nameTails);
}

std::string StreetNames::unique(const char* ending) {
  for (;;) {
    // 640 stems: a large town may use them up for one ending, and then they double.
    std::string name = nextStem();
    if (given_.size() > 400 && random_.chance(0.5)) name.insert(0, "Upper ");
    name.append(" ").append(ending);
    if (given_.insert(name).second) return name;
  }
}

std::string StreetNames::nextStreet(RoadClass kind) {
  if (kind == RoadClass::ring) return unique("Ring");
  if (kind == RoadClass::main) return unique(random_.chance(0.5) ? "Avenue" : "Road");
  return unique(kind == RoadClass::collector ? "Road" : random_.oneOf(residentialEndings));
}

std::string StreetNames::nextPark() {
  return unique("Park");
}

std::string StreetNames::nextVillage() {
  for (;;)
    if (std::string name = nextStem(); given_.insert(name).second) return name;
}

}  // namespace fleetor::demo
