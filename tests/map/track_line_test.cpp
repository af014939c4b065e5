#include "map/track_line.h"

#include <limits>
#include <random>
#include <thread>

#include "map/track_gaps.h"
#include "support/testing.h"

namespace fleetor::test {

constexpr WorldRect everywhere{0, 0, 1, 1};
constexpr Coordinate berlin{52.52, 13.405};

/// A day on the road: long drives, turns, and stops where the position trembles.
std::vector<Coordinate> drive(std::size_t count, Coordinate start = berlin) {
  std::mt19937 random{7};
  std::uniform_real_distribution<double> around{-1, 1};
  std::vector<Coordinate> track{start};
  double heading = 0;
  while (track.size() < count) {
    const bool parked = track.size() / 500 % 4 == 3;
    heading += parked ? 3 * around(random) : around(random) * around(random) * around(random);
    const double step = parked ? 1e-6 : 1.5e-4;
    const auto [latitude, longitude] = track.back();
    track.push_back({latitude + step * std::cos(heading), longitude + step * std::sin(heading)});
  }
  return track;
}

WorldPoint place(const TrackPiece& piece, std::size_t index, int level) {
  const auto& [chunk, shift] = piece;
  const TrackVertex vertex = chunk->vertices[index];
  return {chunk->origin.x + shift + vertex.x / pointsPerWorldUnit(level),
          chunk->origin.y + vertex.y / pointsPerWorldUnit(level)};
}

double pointsFromSegment(WorldPoint point, WorldPoint from, WorldPoint to, int level) {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double along = ((point.x - from.x) * dx + (point.y - from.y) * dy) / (dx * dx + dy * dy);
  const double nearest = std::clamp(along, 0.0, 1.0);
  return std::hypot(point.x - from.x - nearest * dx, point.y - from.y - nearest * dy) *
         pointsPerWorldUnit(level);
}

double pointsFromLine(WorldPoint point, const std::vector<TrackPiece>& pieces, int level) {
  double nearest = std::numeric_limits<double>::infinity();
  for (const TrackPiece& piece : pieces) {
    for (std::size_t i = 1; i < piece.chunk->vertices.size(); ++i)
      nearest = std::min(nearest,
                         pointsFromSegment(point, place(piece, i - 1, level), place(piece, i, level), level));
  }
  return nearest;
}

std::size_t verticesOf(const std::vector<TrackPiece>& pieces) {
  std::size_t count = 0;
  for (const TrackPiece& piece : pieces)
    count += piece.chunk->vertices.size();
  return count;
}

TEST(TrackLine, LeavesOutOnlyInvisibleDetail) {
  std::vector<Coordinate> track = drive(2000);
  track[700].longitude += 0.3;  // out and straight back: a spike must stay
  TrackLine line(track);
  std::size_t before = 0;
  for (int level = 1; level <= 20; ++level) {
    const auto pieces = line.pieces(everywhere, level);
    double worst = 0;
    for (std::size_t i = 0; i < track.size(); ++i)
      worst = std::max(worst, pointsFromLine(line.points()[i], pieces, level));
    EXPECT_LE(worst, 1.5) << "level " << level;
    EXPECT_GE(verticesOf(pieces), before);
    before = verticesOf(pieces);
  }
  EXPECT_LT(verticesOf(line.pieces(everywhere, 11)), track.size() / 10);
}

TEST(TrackLine, CutsIntoChunksWithoutGaps) {
  std::vector<Coordinate> zigzag(2000);  // in steps of 3 km, 37,000 points at this level
  for (std::size_t i = 0; i < zigzag.size(); ++i)
    zigzag[i] = {50 + 0.01 * static_cast<double>(i % 2), 0.05 * static_cast<double>(i)};
  constexpr int level = 20;
  constexpr double rounding = 1.0 / 64;  // points
  for (const auto& track : {drive(20000), zigzag}) {
    TrackLine line(track);
    const auto pieces = line.pieces(everywhere, level);
    ASSERT_GT(pieces.size(), 10U);
    for (std::size_t p = 0; p < pieces.size(); ++p) {
      const auto& [origin, bounds, vertices, points] = *pieces[p].chunk;
      EXPECT_LE(vertices.size(), 512U);
      const WorldPoint end =
          place(pieces[p > 0 ? p - 1 : p], p > 0 ? pieces[p - 1].chunk->vertices.size() - 1 : 0, level);
      EXPECT_LE(std::hypot(end.x - origin.x, end.y - origin.y) * pointsPerWorldUnit(level), rounding);
      const double edge = rounding / pointsPerWorldUnit(level);
      for (std::size_t i = 0; i < vertices.size(); ++i) {
        const auto [x, y] = place(pieces[p], i, level);
        EXPECT_TRUE(x > bounds.left - edge && x < bounds.right + edge && y > bounds.top - edge &&
                    y < bounds.bottom + edge);
        EXPECT_LE(std::max(std::abs(vertices[i].x), std::abs(vertices[i].y)), 65536);
        EXPECT_TRUE(i == 0 || vertices[i] != vertices[i - 1]) << "a segment without a direction";
        const WorldPoint point = line.points()[points[i]];
        EXPECT_LE(std::hypot(point.x - x, point.y - y) * pointsPerWorldUnit(level), rounding);
        EXPECT_TRUE(i == 0 || points[i] > points[i - 1]);
      }
    }
    const auto& street = pieces[5].chunk;
    const auto inView = line.pieces(street->bounds, level);
    EXPECT_LT(inView.size(), pieces.size());
    EXPECT_TRUE(std::ranges::any_of(inView, [&](const TrackPiece& piece) { return piece.chunk == street; }));
    EXPECT_TRUE(line.pieces({0, 0.9, 1, 1}, level).empty());
  }
}

TEST(TrackLine, GrowsAtItsEndOnly) {
  const std::vector<Coordinate> track = drive(6000);
  TrackLine grown{std::span(track).first(4000)};
  for (std::size_t i = 4000; i < track.size(); ++i) {
    const auto before = grown.pieces(everywhere, 17);
    grown.append(track[i]);
    const auto after = grown.pieces(everywhere, 17);
    ASSERT_GE(after.size(), before.size());
    for (std::size_t p = 0; p + 1 < before.size(); ++p)
      ASSERT_EQ(after[p].chunk, before[p].chunk);
  }
  TrackLine whole(track);
  const auto expected = whole.pieces(everywhere, 17);
  const auto actual = grown.pieces(everywhere, 17);
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t p = 0; p < actual.size(); ++p)
    EXPECT_EQ(actual[p].chunk->vertices, expected[p].chunk->vertices);
}

TEST(TrackLine, CrossesTheAntimeridianTheShortWay) {
  TrackLine line(std::vector<Coordinate>{{0, 179}, {0, -179}, {0, 178}, {0, -179.5}});
  for (const int level : {3, 20}) {
    for (const double x : {-1e-4, 0.0, 1.0, 1.0001}) {
      const WorldRect view{x - 1e-3, 0.4, x + 1e-3, 0.6};
      EXPECT_NEAR(pointsFromLine({x, 0.5}, line.pieces(view, level), level), 0,
                  0.004 * pointsPerWorldUnit(level));
    }
    EXPECT_TRUE(line.pieces({0.49, 0, 0.51, 1}, level).empty()) << "nothing on the other side of the world";
  }
  TrackLine around(std::vector<Coordinate>{{0, 0}, {0, 120}, {0, -120}, {0, 0}});
  EXPECT_FALSE(around.pieces({0.99, 0.4, 1.01, 0.6}, 3).empty()) << "round the world";
}

TEST(TrackLine, StaysExactInTheMiddleOfALongSegment) {
  const std::vector<Coordinate> track{berlin, {0, 0}, berlin};  // a position was lost on the way
  TrackLine line(track);
  const WorldPoint from = project(berlin);
  const WorldPoint to = project({0, 0});
  const double scale = pointsPerWorldUnit(20);
  for (const double part : {0.0, 0.3337, 0.9, 1.0}) {
    const WorldPoint middle{from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part};
    for (const double panned : {0.0, 40.0, -190.0}) {
      const double x = middle.x + panned / scale;
      const WorldRect view{x - 195 / scale, middle.y - 390 / scale, x + 195 / scale, middle.y + 390 / scale};
      const auto pieces = line.pieces(view, 20);
      ASSERT_EQ(pieces.size(), 2U) << "out and back";
      EXPECT_LT(pointsFromLine(middle, pieces, 20), 0.02);
      for (const TrackPiece& piece : pieces)
        EXPECT_LT(std::hypot(piece.chunk->vertices.back().x, piece.chunk->vertices.back().y), 65536);
    }
  }
  EXPECT_TRUE(line.pieces({0.9, 0.1, 0.9001, 0.1001}, 20).empty());
  const WorldRect end{to.x, to.y - 1e-6, to.x + 1e-6, to.y};
  EXPECT_EQ(line.pieces(end, 20).size(), 2U);
  line.append({0, 0});
  EXPECT_EQ(line.pieces(end, 20).size(), 3U) << "and out again";
}

TEST(TrackLine, TakesAnyNumberOfAnyPoints) {
  TrackLine line;
  EXPECT_TRUE(line.pieces(everywhere, 12).empty());
  line.append(berlin);
  line.append(berlin);
  EXPECT_TRUE(line.pieces(everywhere, 12).empty()) << "no segment without a direction";
  for (const Coordinate odd : {Coordinate{std::nan(""), std::nan("")}, {90, 0}, {-90, 180}, {1e300, -1e300}})
    line.append(odd);
  for (const auto& [chunk, shift] : line.pieces(everywhere, 20))
    for (const auto& [x, y] : chunk->vertices)
      EXPECT_TRUE(std::isfinite(x) && std::isfinite(y));
}

// Straight, so that only the ends are kept; across the antimeridian, and at street zoom cut to the view.
TEST(TrackLine, PlacesGapsThatBeginAndEndBetweenItsVertices) {
  const std::vector<Coordinate> track{{10, 179}, {10, 179.9}, {10, -179.9}, {10, -179.8}, {10, -179}};
  const std::vector<std::uint32_t> gaps{1, 2};
  for (const int level : {10, 20}) {
    TrackLine line(track);
    for (const auto& [looked, isGap] : {std::pair{179.9, true}, {-179.8, false}}) {
      const WorldPoint wanted = project({10, looked});
      const double half = 400 / pointsPerWorldUnit(level);
      const auto pieces =
          line.pieces({wanted.x - half, wanted.y - half, wanted.x + half, wanted.y + half}, level);
      ASSERT_EQ(pieces.size(), 1u) << level;
      const auto& [chunk, shift] = pieces[0];
      const auto steps = stepsOf(*chunk, line.points(), gaps, level);
      const auto found =
          std::ranges::find_if(steps, [&, &origin = chunk->origin.x, &east = shift](auto& step) {
            const double x = origin + east + step.at.x / pointsPerWorldUnit(level);
            return std::abs(std::remainder(x - wanted.x, 1)) * pointsPerWorldUnit(level) < 0.1;
          });
      ASSERT_NE(found, steps.end()) << level << " " << looked;
      EXPECT_EQ(found->gap, isGap) << level << " " << looked;
      EXPECT_EQ(found->point, isGap ? 1u : 3u);
      EXPECT_EQ(std::ranges::count(steps, true, &TrackStep::gap), level == 10 ? 2 : 1) << level;
    }
  }
}

TEST(TrackLine, TakesALevelThatWasMadeElsewhere) {
  const std::vector<Coordinate> track = drive(30000);
  TrackLine line{std::span(track).first(20000)};
  std::shared_ptr<TrackLevel> made;
  std::jthread elsewhere([&made, points = line.points()] { made = TrackLine::makeLevel(points, 16); });
  for (std::size_t i = 20000; i < track.size(); ++i)
    line.append(track[i]);
  elsewhere.join();
  EXPECT_EQ(line.nearestLevel(16), std::nullopt);
  line.adopt(made);
  EXPECT_EQ(line.nearestLevel(14), 16);
  EXPECT_LT(pointsFromLine(line.points()[29999], line.pieces(everywhere, 16), 16), 0.01)
      << "with what was appended meanwhile";

  for (const int level : {3, 4, 5})
    line.pieces(everywhere, level);
  EXPECT_EQ(line.nearestLevel(16), 5) << "only the latest levels are kept";

  EXPECT_EQ(TrackLine::levelFor(15.01), 16);
  EXPECT_EQ(TrackLine::levelFor(16), 16);
  EXPECT_EQ(TrackLine::levelFor(20.7), 20);
}

}  // namespace fleetor::test
