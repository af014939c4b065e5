#include "demo/map/map_draft.h"

namespace fleetor::demo {

void MapDraft::name(NameKind kind, std::string text, Point at, int rank) {
  Name name;
  name.text = std::move(text);
  name.kind = kind;
  name.rank = rank;
  name.at = at;
  names.push_back(std::move(name));
}
void MapDraft::nameLine(NameKind kind, RoadClass road, std::string text, Shape line, int rank) {
  name(kind, std::move(text), line[line.size() / 2], rank);
  names.back().road = road;
  names.back().line = std::move(line);
}

void MapDraft::plantAlong(const Walk& walk, double aside, bool left, double spacing, double share) {
  for (double metres = spacing; metres < walk.length() - spacing; metres += spacing) {
    const Station here = walk.at(metres);
    if (random.chance(share))
      builder.plant(here.at + leftOf(here.direction) * (left ? aside : -aside), 1.8, 3.2);
  }
}

}  // namespace fleetor::demo
