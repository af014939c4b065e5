#include "demo/map/map_draft.h"

namespace fleetor::demo {
namespace {

constexpr double metresPerNumber = 17;
constexpr double pavement = 2.4;

// Whether a line along one of a's sides has all of b beyond it.
bool sideParts(const Shape& a, const Shape& b) {
  constexpr double touch = 0.35;
  for (std::size_t i = 0, j = a.size() - 1; i < a.size(); j = i++) {
    const Point outward = unitOf(a[i] - a[j]);
    const Point normal{outward.y, -outward.x};
    if (std::ranges::all_of(b, [&](Point p) { return dot(p - a[j], normal) > -touch; })) return true;
  }
  return false;
}

}  // namespace

void MapDraft::name(NameKind kind, std::string text, Point at, int rank) {
  names.push_back({std::move(text), kind, 0, rank, at, {}});
}

void MapDraft::nameLine(NameKind kind, int firstZoom, std::string text, Shape line, int rank) {
  names.push_back({std::move(text), kind, firstZoom, rank, line[line.size() / 2], std::move(line)});
}

void MapDraft::plantAlong(const Walk& walk, double aside, bool left, double spacing, double share) {
  for (double metres = spacing; metres < walk.length() - spacing; metres += spacing) {
    const Station here = walk.at(metres);
    if (random.chance(share)) plant(here.at + leftOf(here.direction) * (left ? aside : -aside), 1.8, 3.2);
  }
}

bool MapDraft::overlaps(const Shape& quad) const {
  for (const std::uint32_t id : takenIndex_.within(boxOf(quad))) {
    const Shape& other = taken_[id];
    if (!sideParts(quad, other) && !sideParts(other, quad)) return true;
  }
  return false;
}

bool MapDraft::isFree(Point at) const {
  return !overlaps({at + Point{-1, -1}, at + Point{1, -1}, at + Point{1, 1}, at + Point{-1, 1}});
}

void MapDraft::reserve(const Shape& line, double halfWidth) {
  for (std::size_t i = 1; i < line.size(); ++i) {
    const Station start{line[i - 1], unitOf(line[i] - line[i - 1])};
    Shape quad = rectangleAt(start, 0, distanceBetween(line[i - 1], line[i]), -halfWidth, halfWidth);
    takenIndex_.add(static_cast<std::uint32_t>(taken_.size()), boxOf(quad));
    taken_.push_back(std::move(quad));
  }
}

bool MapDraft::build(const Shape& outline, double height, bool large, const Shape* block, double margin) {
  if (block)
    for (const Point corner : outline)
      if (!contains(*block, corner) || distanceTo(*block, corner, true) < margin) return false;
  if (overlaps(outline)) return false;
  takenIndex_.add(static_cast<std::uint32_t>(taken_.size()), boxOf(outline));
  taken_.push_back(outline);
  buildings.push_back(
      {outline, static_cast<float>(height), static_cast<std::uint8_t>(random.below(256)), large});
  return true;
}

void MapDraft::plant(Point at, double low, double high) {
  trees.push_back(
      {at, static_cast<float>(random.between(low, high)), static_cast<std::uint8_t>(random.below(256))});
}

void MapDraft::buildRow(const Frontage& frontage, double middle, double width) {
  const double side = frontage.left ? 1 : -1;
  const std::uint32_t pieces = 2 + random.below(2);
  const double front = frontage.halfWidth + pavement + (frontage.housing == Housing::openRows ? 2.5 : 0.4);
  for (std::uint32_t i = 0; i < pieces; ++i) {
    const double piece = width / pieces;
    const Station here = frontage.street.at(middle - width / 2 + (i + 0.5) * piece);
    const double depth = random.between(10.5, 14);
    const double height = random.between(8, frontage.housing == Housing::openRows ? 13 : 19);
    const double half = piece / 2 + 0.1;
    if (frontage.housing == Housing::openRows && random.chance(0.16)) continue;
    if (!build(rectangleAt(here, -half, half, side * front, side * (front + depth)), height, false,
               frontage.block, frontage.halfWidth + 1))
      continue;
    if (random.chance(0.45)) {
      const double back = front + depth;
      const double wing = random.between(6, 13);
      const double edge = random.chance(0.5) ? half : -half;
      build(rectangleAt(here, edge, edge * random.between(-0.2, 0.3), side * back, side * (back + wing)),
            random.between(3.5, 9), false, frontage.block, 4);
    } else if (random.chance(0.6)) {
      const Point yard = here.at + leftOf(here.direction) * (side * (front + depth + random.between(5, 14)));
      if (isFree(yard) && (!frontage.block || contains(*frontage.block, yard))) plant(yard, 2, 4);
    }
  }
}

double MapDraft::lotDepth(const Frontage& frontage, double along, double longest) const {
  if (!frontage.block) return std::min(longest, 34.0);
  const Station here = frontage.street.at(along);
  const Point out = leftOf(here.direction) * (frontage.left ? 1 : -1);
  double depth = frontage.halfWidth;
  while (depth + 2 <= longest) {
    const Point next = here.at + out * (depth + 2);
    if (!contains(*frontage.block, next) || distanceTo(*frontage.block, next, true) < depth + 0.7) break;
    depth += 2;
  }
  return depth;
}

std::optional<Point> MapDraft::buildHouse(const Frontage& frontage, double middle, double width) {
  const Station here = frontage.street.at(middle);
  const double side = frontage.left ? 1 : -1;
  const double front = frontage.halfWidth + pavement + random.between(5, 9);
  const double half = random.between(5, 8);
  const double depth = random.between(8.5, 12);
  const double shift = random.between(-1, 1) * (width / 2 - half - 3);
  const auto part = [&](double along0, double along1, double across0, double across1) {
    return rectangleAt(here, along0, along1, side * across0, side * across1);
  };
  const double longest = front + depth + random.between(24, 40);
  const double depthA = lotDepth(frontage, middle - width / 2, longest);
  const double depthB = lotDepth(frontage, middle + width / 2, longest);
  const double lotDepth = std::min(depthA, depthB);
  if (lotDepth < front + depth) return std::nullopt;
  const auto inside = [&](Point p) { return !frontage.block || contains(*frontage.block, p); };
  const Point out = leftOf(here.direction) * side;
  areas.push_back({LandUse::garden, static_cast<std::uint8_t>(random.below(256)), 0,
                   counterClockwise({here.at + here.direction * (-width / 2) + out * frontage.halfWidth,
                                     here.at + here.direction * (width / 2) + out * frontage.halfWidth,
                                     here.at + here.direction * (width / 2) + out * depthB,
                                     here.at + here.direction * (-width / 2) + out * depthA})});

  const double height = random.between(5, 8.5);
  if (!build(part(shift - half, shift + half, front, front + depth), height, false, frontage.block,
             frontage.halfWidth + 3))
    return std::nullopt;
  const std::uint8_t roof = buildings.back().tone;
  const auto annex = [&](const Shape& outline, double tall) {
    if (build(outline, tall, false, frontage.block, frontage.halfWidth + 2)) buildings.back().tone = roof;
  };
  const double gable = random.chance(0.5) ? 1 : -1;
  if (random.chance(0.4))  // an L
    annex(part(shift + gable * half, shift + gable * random.between(0, half - 3), front + depth,
               front + depth + random.between(3, 5)),
          height - 1);
  if (random.chance(0.55))  // a garage beside
    annex(part(shift - gable * (half + 0.2), shift - gable * (half + 3.6), front + 1, front + 7), 3);
  if (random.chance(0.3)) {  // a shed at the back
    const double x = random.between(-1, 1) * (width / 2 - 4);
    annex(part(x - 1.6, x + 1.6, lotDepth - 5, lotDepth - 2), 2.5);
  }
  for (int i = 0; i < 6; ++i) {
    const Point at = here.at + here.direction * random.between(-width / 2, width / 2) +
                     leftOf(here.direction) * (side * random.between(frontage.halfWidth + 3.5, lotDepth));
    if (random.chance(0.75) && isFree(at) && inside(at)) plant(at, 1.6, 3.9);
  }
  return here.at + here.direction * shift + leftOf(here.direction) * (side * (front + depth / 2));
}

void MapDraft::buildAlong(const Frontage& frontage) {
  // Odd numbers on the left, even ones on the right, as the addresses of the town count them.
  const double end = frontage.houseOffset + frontage.street.length();
  int number = 1 + static_cast<int>(frontage.houseOffset / metresPerNumber);
  if ((number % 2 == 1) != frontage.left) ++number;
  for (; (number - 0.5) * metresPerNumber < end; number += 2) {
    const double middle = (number - 0.5) * metresPerNumber - frontage.houseOffset;
    if (middle < 6) continue;
    const double width = 2 * metresPerNumber;
    std::optional<Point> house;
    if (frontage.housing == Housing::detached) {
      house = buildHouse(frontage, middle, width - 1);
    } else {
      const std::size_t before = buildings.size();
      buildRow(frontage, middle, width);
      if (buildings.size() > before) house = centroidOf(buildings[before].outline);
    }
    if (house && frontage.numbered)
      names.push_back({std::to_string(number), NameKind::house, 0, 1000, *house, {}});
  }
}

void MapDraft::fillBlock(const Shape& block, double width, double depth, double gap, double share,
                         bool large) {
  if (block.size() < 3) return;
  const Station grid = longestSide(block);
  const Box box = boxOf(block);
  const double reach = std::hypot(box.right - box.left, box.top - box.bottom) / 2;
  const int columns = static_cast<int>(reach / (width + gap));
  const int rows = static_cast<int>(reach / (depth + gap));
  for (int row = -rows; row <= rows; ++row)
    for (int column = -columns; column <= columns; ++column) {
      if (!random.chance(share)) continue;
      const double x = column * (width + gap);
      const double y = row * (depth + gap);
      const double half = width / 2 * random.between(0.7, 1);
      build(rectangleAt(grid, x - half, x + half, y - depth / 2, y + depth / 2 * random.between(0.5, 1)),
            random.between(large ? 7 : 3.5, large ? 12 : 8), large, &block, 17);
    }
}

}  // namespace fleetor::demo
