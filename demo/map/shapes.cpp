#include "demo/map/shapes.h"

#include "demo/town/random.h"

namespace fleetor::demo {

double TileAddress::metres() const {
  return 2 * townPoint({0, townCentre.longitude + 180}).x / std::exp2(zoom);
}

Box TileAddress::box() const {
  const Point middle = townPoint({0, 0});
  const double half = metres() * std::exp2(zoom - 1);
  const Point corner{middle.x - half + x * metres(), middle.y + half - y * metres()};
  return {corner.x, corner.y - metres(), corner.x + metres(), corner.y};
}

double areaOf(const Shape& polygon) {
  double twice = 0;
  for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++)
    twice += cross(polygon[j], polygon[i]);
  return twice / 2;
}

Point centroidOf(const Shape& polygon) {
  // Relative to the first corner, since coordinates may be large.
  Point sum;
  double twice = 0;
  for (std::size_t i = 1; i + 1 < polygon.size(); ++i) {
    const Point a = polygon[i] - polygon[0];
    const Point b = polygon[i + 1] - polygon[0];
    sum = sum + (a + b) * cross(a, b);
    twice += cross(a, b);
  }
  return twice == 0 ? polygon[0] : polygon[0] + sum * (1 / (3 * twice));
}

bool contains(const Shape& polygon, Point p) {
  bool inside = false;
  for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
    const Point a = polygon[i];
    const Point b = polygon[j];
    if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x) inside = !inside;
  }
  return inside;
}

double distanceTo(const Shape& line, Point p, bool closed) {
  double best = std::numeric_limits<double>::infinity();
  for (std::size_t i = closed ? 0 : 1; i < line.size(); ++i) {
    const Point a = line[i == 0 ? line.size() - 1 : i - 1];
    const Point ab = line[i] - a;
    const double square = dot(ab, ab);
    const double t = square > 0 ? std::clamp(dot(p - a, ab) / square, 0.0, 1.0) : 0;
    const Point gap = p - (a + ab * t);
    best = std::min(best, dot(gap, gap));
  }
  return std::sqrt(best);
}

Shape clipped(const Shape& polygon, const Box& box) {
  Shape result = polygon;
  Shape next;
  for (int side = 0; side < 4 && !result.empty(); ++side) {
    const auto depth = [&](Point p) {
      return side == 0   ? p.x - box.left
             : side == 1 ? box.right - p.x
             : side == 2 ? p.y - box.bottom
                         : box.top - p.y;
    };
    next.clear();
    Point a = result.back();
    double depthA = depth(a);
    for (const Point b : result) {
      const double depthB = depth(b);
      if ((depthA < 0) != (depthB < 0)) next.push_back(lerp(a, b, depthA / (depthA - depthB)));
      if (depthB >= 0) next.push_back(b);
      a = b;
      depthA = depthB;
    }
    result.swap(next);
  }
  return result;
}

Shape movedAside(const Shape& line, double offset) {
  Shape moved;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const Point before = unitOf(i > 0 ? line[i] - line[i - 1] : line[1] - line[0]);
    const Point after = unitOf(i + 1 < line.size() ? line[i + 1] - line[i] : before);
    const Point normal = unitOf(leftOf(before + after));
    const double stretch = 1 / std::max(0.5, dot(normal, leftOf(before)));
    moved.push_back(line[i] + normal * (offset * stretch));
  }
  return moved;
}

Shape insetOf(const Shape& polygon, double metres) {
  Shape inner;
  const std::size_t count = polygon.size();
  for (std::size_t i = 0; i < count; ++i) {
    const Point before = unitOf(polygon[i] - polygon[(i + count - 1) % count]);
    const Point after = unitOf(polygon[(i + 1) % count] - polygon[i]);
    const Point normal = unitOf(leftOf(before + after));
    const Point moved = polygon[i] + normal * (metres / std::max(0.5, dot(normal, leftOf(before))));
    if (contains(polygon, moved) && distanceTo(polygon, moved, true) > metres * 0.95) inner.push_back(moved);
  }
  return inner;
}

Shape ringAround(Point middle, int points, const std::function<Point(Point)>& at) {
  Shape ring;
  for (int i = 0; i < points; ++i) {
    const double angle = 2 * std::numbers::pi * i / points;
    ring.push_back(middle + at({std::cos(angle), std::sin(angle)}));
  }
  return ring;
}

Shape smoothed(Shape line, bool closed) {
  for (int pass = 0; pass < 2 && line.size() > 2; ++pass) {
    Shape rounder;
    const std::size_t count = line.size();
    if (!closed) rounder.push_back(line.front());
    for (std::size_t i = 0; i < (closed ? count : count - 1); ++i) {
      const Point a = line[i];
      const Point b = line[(i + 1) % count];
      if (closed || i > 0) rounder.push_back(lerp(a, b, 0.25));
      if (closed || i + 2 < count) rounder.push_back(lerp(a, b, 0.75));
    }
    if (!closed) rounder.push_back(line.back());
    line.swap(rounder);
  }
  return line;
}

Shape counterClockwise(Shape shape) {
  if (areaOf(shape) < 0) std::ranges::reverse(shape);
  return shape;
}

Shape rectangleAt(const Station& station, double alongFrom, double alongTo, double acrossFrom,
                  double acrossTo) {
  const auto corner = [&](double along, double across) {
    return station.at + station.direction * along + leftOf(station.direction) * across;
  };
  return counterClockwise({corner(alongFrom, acrossFrom), corner(alongTo, acrossFrom),
                           corner(alongTo, acrossTo), corner(alongFrom, acrossTo)});
}

Station longestSide(const Shape& polygon) {
  Point longest;
  // Over a few points at once: a bent side is one side.
  const std::size_t span = std::max<std::size_t>(1, polygon.size() / 6);
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const Point side = polygon[(i + span) % polygon.size()] - polygon[i];
    if (lengthOf(side) > lengthOf(longest)) longest = side;
  }
  return {centroidOf(polygon), unitOf(longest)};
}

double smoothNoise(std::uint64_t seed, double x, double y) {
  const double left = std::floor(x);
  const double bottom = std::floor(y);
  const auto corner = [&](int dx, int dy) {
    const std::uint64_t hash =
        hashOf(seed, static_cast<std::int64_t>(left) + dx, static_cast<std::int64_t>(bottom) + dy);
    return static_cast<double>(hash >> 11) * 0x1p-53;
  };
  const auto ease = [](double t) { return t * t * (3 - 2 * t); };
  const double u = ease(x - left);
  return std::lerp(std::lerp(corner(0, 0), corner(1, 0), u), std::lerp(corner(0, 1), corner(1, 1), u),
                   ease(y - bottom));
}

double fractalNoise(std::uint64_t seed, double x, double y) {
  double sum = 0;
  double weight = 8.0 / 15;
  for (std::uint64_t octave = 0; octave < 4; ++octave, weight /= 2, x *= 2, y *= 2)
    sum += weight * smoothNoise(seed + octave, x, y);
  return sum;
}

template <class Visit>
void PlaceIndex::visitCells(const Box& box, Visit visit) const {
  const auto cellOf = [this](double metres) { return static_cast<std::int32_t>(std::floor(metres / cell_)); };
  for (std::int32_t y = cellOf(box.bottom); y <= cellOf(box.top); ++y)
    for (std::int32_t x = cellOf(box.left); x <= cellOf(box.right); ++x)
      visit(static_cast<std::uint64_t>(static_cast<std::uint32_t>(x)) << 32 | static_cast<std::uint32_t>(y));
}

void PlaceIndex::add(std::uint32_t id, const Box& box) {
  extent_.include({box.left, box.bottom});
  extent_.include({box.right, box.top});
  visitCells(box, [&](std::uint64_t cell) { cells_[cell].push_back(id); });
}

std::vector<std::uint32_t> PlaceIndex::within(const Box& box) const {
  std::vector<std::uint32_t> found;
  if (!box.meets(extent_)) return found;
  const Box common{std::max(box.left, extent_.left), std::max(box.bottom, extent_.bottom),
                   std::min(box.right, extent_.right), std::min(box.top, extent_.top)};
  visitCells(common, [&](std::uint64_t cell) {
    if (const auto entry = cells_.find(cell); entry != cells_.end())
      found.insert(found.end(), entry->second.begin(), entry->second.end());
  });
  std::ranges::sort(found);
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

}  // namespace fleetor::demo
