#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "map/mercator.h"

namespace fleetor {

/// The points of a line in world units, the antimeridian unwrapped: each step takes the short way, so that x
/// may leave 0 to 1. A copy costs a pointer for 1,024 points and stays as it is while the line grows: it may
/// be read on any thread.
class TrackPoints {
 public:
  std::size_t size() const { return size_; }
  WorldPoint operator[](std::size_t index) const { return (*blocks_[index / blockSize])[index % blockSize]; }

 private:
  friend class TrackLine;

  static constexpr std::size_t blockSize = 1024;
  using Block = std::array<WorldPoint, blockSize>;

  std::vector<std::shared_ptr<Block>> blocks_;
  std::size_t size_ = 0;
};

/// Points at the zoom of the level, relative to the chunk's origin.
struct TrackVertex {
  float x = 0;
  float y = 0;

  friend bool operator==(const TrackVertex&, const TrackVertex&) = default;
};

/// A stretch of a line, ready to draw: at least two vertices, no two neighbours equal, all within 65,536
/// points of the origin, so that a float resolves 1/128 of a point. A stretch starts with the vertex that the
/// one before ended with. Immutable: a line that changes gets another chunk, at another address.
struct TrackChunk {
  WorldPoint origin;
  WorldRect bounds;
  std::vector<TrackVertex> vertices;
  std::vector<std::uint32_t> points;  ///< which of the line's points each vertex is
};

/// A chunk, to be drawn `shift` worlds east of its origin.
struct TrackPiece {
  std::shared_ptr<const TrackChunk> chunk;
  double shift = 0;
};

class TrackLevel;

/// A polyline prepared for drawing at any zoom: simplified for each integer zoom so that no omitted point
/// lies further than 1.5 points from what is drawn, and cut into chunks of at most 512 vertices.
///
/// Levels are made when first needed, and the most recently used ones are kept. A missing level of a long
/// line can be made in advance: pass points() to makeLevel() on any thread, and the result to adopt().
/// Everything else: one thread at a time. Fewer than two different points leave nothing to draw.
class TrackLine {
 public:
  TrackLine();
  explicit TrackLine(std::span<const Coordinate> coordinates);
  TrackLine(TrackLine&&) noexcept;
  TrackLine& operator=(TrackLine&&) noexcept;
  ~TrackLine();

  std::size_t size() const { return points_.size(); }
  const TrackPoints& points() const { return points_; }

  /// Costs the same whatever the length: at most the last two chunks of a level are made again.
  void append(Coordinate coordinate);

  /// The level to draw at a camera's zoom: the next integer zoom, so that the tolerance holds; 1 to 20.
  static int levelFor(double zoom);

  /// The existing level to draw until `level` is made; nothing if there is no level yet.
  std::optional<int> nearestLevel(int level) const;
  /// Any thread.
  static std::shared_ptr<TrackLevel> makeLevel(const TrackPoints& points, int level);
  /// Points appended since it was made are added to it. It must come from this line's points.
  void adopt(std::shared_ptr<TrackLevel> level);

  /// What to draw in `view`, grown by the width of the line. Makes the level if it is missing, which costs 1
  /// to 3 ms for 100,000 points, and takes up what was appended.
  std::vector<TrackPiece> pieces(const WorldRect& view, int level);

 private:
  TrackPoints points_;
  std::vector<std::shared_ptr<TrackLevel>> levels_;  ///< the one used last comes first
};

}  // namespace fleetor
