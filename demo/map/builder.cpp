#include "demo/map/builder.h"

namespace fleetor::demo {
namespace {

constexpr double kMetresPerNumber = 17;
constexpr double kPavement = 2.4;

// Whether a line along one of a's sides has all of b beyond it.
bool sideParts(const Shape& a, const Shape& b) {
  constexpr double kTouch = 0.35;
  for (std::size_t i = 0, j = a.size() - 1; i < a.size(); j = i++) {
    const Point outward = unitOf(a[i] - a[j]);
    const Point normal{outward.y, -outward.x};
    if (std::ranges::all_of(b, [&](Point p) { return dot(p - a[j], normal) > -kTouch; })) return true;
  }
  return false;
}

}  // namespace

bool Builder::overlaps(const Shape& quad) const {
  for (const std::uint32_t id : index_.within(boxOf(quad))) {
    const Shape& other = taken_[id];
    if (!sideParts(quad, other) && !sideParts(other, quad)) return true;
  }
  return false;
}

bool Builder::isFree(Point at) const {
  return !overlaps({at + Point{-1, -1}, at + Point{1, -1}, at + Point{1, 1}, at + Point{-1, 1}});
}

void Builder::reserve(const Shape& line, double halfWidth) {
  for (std::size_t i = 1; i < line.size(); ++i) {
    const Station start{line[i - 1], unitOf(line[i] - line[i - 1])};
    Shape quad = rectangleAt(start, 0, distanceBetween(line[i - 1], line[i]), -halfWidth, halfWidth);
    index_.add(static_cast<std::uint32_t>(taken_.size()), boxOf(quad));
    taken_.push_back(std::move(quad));
  }
}

bool Builder::build(const Shape& outline, double height, bool large, const Shape* block, double margin) {
  if (block)
    for (const Point corner : outline)
      if (!contains(*block, corner) || distanceTo(*block, corner, true) < margin) return false;
  if (overlaps(outline)) return false;
  index_.add(static_cast<std::uint32_t>(taken_.size()), boxOf(outline));
  taken_.push_back(outline);
  buildings.push_back(
      {outline, static_cast<float>(height), static_cast<std::uint8_t>(random_.below(256)), large});
  return true;
}

void Builder::plant(Point at, double low, double high) {
  trees.push_back(
      {at, static_cast<float>(random_.between(low, high)), static_cast<std::uint8_t>(random_.below(256))});
}

void Builder::buildRow(const Frontage& frontage, double middle, double width) {
  const double side = frontage.left ? 1 : -1;
  const std::uint32_t pieces = 2 + random_.below(2);
  const double front = frontage.halfWidth + kPavement + (frontage.housing == Housing::openRows ? 2.5 : 0.4);
  for (std::uint32_t i = 0; i < pieces; ++i) {
    const double piece = width / pieces;
    const Station here = frontage.street.at(middle - width / 2 + (i + 0.5) * piece);
    const double depth = random_.between(10.5, 14);
    const double height = random_.between(8, frontage.housing == Housing::openRows ? 13 : 19);
    const double half = piece / 2 + 0.1;
    if (frontage.housing == Housing::openRows && random_.chance(0.16)) continue;
    if (!build(rectangleAt(here, -half, half, side * front, side * (front + depth)), height, false,
               frontage.block, frontage.halfWidth + 1))
      continue;
    if (random_.chance(0.45)) {
      const double back = front + depth;
      const double wing = random_.between(6, 13);
      const double edge = random_.chance(0.5) ? half : -half;
      build(rectangleAt(here, edge, edge * random_.between(-0.2, 0.3), side * back, side * (back + wing)),
            random_.between(3.5, 9), false, frontage.block, 4);
    } else if (random_.chance(0.6)) {
      const Point yard = here.at + leftOf(here.direction) * (side * (front + depth + random_.between(5, 14)));
      if (isFree(yard) && (!frontage.block || contains(*frontage.block, yard))) plant(yard, 2, 4);
    }
  }
}

double Builder::lotDepth(const Frontage& frontage, double along, double longest) const {
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

std::optional<Point> Builder::buildHouse(const Frontage& frontage, double middle, double width) {
  const Station here = frontage.street.at(middle);
  const double side = frontage.left ? 1 : -1;
  const double front = frontage.halfWidth + kPavement + random_.between(5, 9);
  const double half = random_.between(5, 8);
  const double depth = random_.between(8.5, 12);
  const double shift = random_.between(-1, 1) * (width / 2 - half - 3);
  const auto part = [&](double along0, double along1, double across0, double across1) {
    return rectangleAt(here, along0, along1, side * across0, side * across1);
  };
  const double longest = front + depth + random_.between(24, 40);
  const double depthA = lotDepth(frontage, middle - width / 2, longest);
  const double depthB = lotDepth(frontage, middle + width / 2, longest);
  const double lotDepth = std::min(depthA, depthB);
  if (lotDepth < front + depth) return std::nullopt;
  const auto inside = [&](Point p) { return !frontage.block || contains(*frontage.block, p); };
  const Point out = leftOf(here.direction) * side;
  areas.push_back({LandUse::garden, static_cast<std::uint8_t>(random_.below(256)), 0,
                   counterClockwise({here.at + here.direction * (-width / 2) + out * frontage.halfWidth,
                                     here.at + here.direction * (width / 2) + out * frontage.halfWidth,
                                     here.at + here.direction * (width / 2) + out * depthB,
                                     here.at + here.direction * (-width / 2) + out * depthA})});

  const double height = random_.between(5, 8.5);
  if (!build(part(shift - half, shift + half, front, front + depth), height, false, frontage.block,
             frontage.halfWidth + 3))
    return std::nullopt;
  const std::uint8_t roof = buildings.back().tone;
  const auto annex = [&](const Shape& outline, double tall) {
    if (build(outline, tall, false, frontage.block, frontage.halfWidth + 2)) buildings.back().tone = roof;
  };
  const double gable = random_.chance(0.5) ? 1 : -1;
  if (random_.chance(0.4))  // an L
    annex(part(shift + gable * half, shift + gable * random_.between(0, half - 3), front + depth,
               front + depth + random_.between(3, 5)),
          height - 1);
  if (random_.chance(0.55))  // a garage beside
    annex(part(shift - gable * (half + 0.2), shift - gable * (half + 3.6), front + 1, front + 7), 3);
  if (random_.chance(0.3)) {  // a shed at the back
    const double x = random_.between(-1, 1) * (width / 2 - 4);
    annex(part(x - 1.6, x + 1.6, lotDepth - 5, lotDepth - 2), 2.5);
  }
  for (int i = 0; i < 6; ++i) {
    const Point at = here.at + here.direction * random_.between(-width / 2, width / 2) +
                     leftOf(here.direction) * (side * random_.between(frontage.halfWidth + 3.5, lotDepth));
    if (random_.chance(0.75) && isFree(at) && inside(at)) plant(at, 1.6, 3.9);
  }
  return here.at + here.direction * shift + leftOf(here.direction) * (side * (front + depth / 2));
}

void Builder::buildAlong(const Frontage& frontage) {
  // Odd numbers on the left, even ones on the right, as the addresses of the town count them.
  const double end = frontage.houseOffset + frontage.street.length();
  int number = 1 + static_cast<int>(frontage.houseOffset / kMetresPerNumber);
  if ((number % 2 == 1) != frontage.left) ++number;
  for (; (number - 0.5) * kMetresPerNumber < end; number += 2) {
    const double middle = (number - 0.5) * kMetresPerNumber - frontage.houseOffset;
    if (middle < 6) continue;
    const double width = 2 * kMetresPerNumber;
    std::optional<Point> house;
    if (frontage.housing == Housing::detached) {
      house = buildHouse(frontage, middle, width - 1);
    } else {
      const std::size_t before = buildings.size();
      buildRow(frontage, middle, width);
      if (buildings.size() > before) house = centroidOf(buildings[before].outline);
    }
    if (house && frontage.numbered) {
      Name name;
      name.text = std::to_string(number);
      name.kind = NameKind::house;
      name.at = *house;
      numbers.push_back(std::move(name));
    }
  }
}

void Builder::fillBlock(const Shape& block, double width, double depth, double gap, double share,
                        bool large) {
  if (block.size() < 3) return;
  const Station grid = longestSide(block);
  const Box box = boxOf(block);
  const double reach = std::hypot(box.right - box.left, box.top - box.bottom) / 2;
  const int columns = static_cast<int>(reach / (width + gap));
  const int rows = static_cast<int>(reach / (depth + gap));
  for (int row = -rows; row <= rows; ++row)
    for (int column = -columns; column <= columns; ++column) {
      if (!random_.chance(share)) continue;
      const double x = column * (width + gap);
      const double y = row * (depth + gap);
      const double half = width / 2 * random_.between(0.7, 1);
      build(rectangleAt(grid, x - half, x + half, y - depth / 2, y + depth / 2 * random_.between(0.5, 1)),
            random_.between(large ? 7 : 3.5, large ? 12 : 8), large, &block, 17);
    }
}

}  // namespace fleetor::demo
