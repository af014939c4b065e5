#pragma once

#include <optional>

#include "map/track_line.h"

namespace fleetor {

/// Cuts a line, vertex by vertex, into chunks of floats and into segments that are too long for floats.
class TrackCutter {
 public:
  struct Segment {
    WorldPoint from;
    WorldPoint to;
    std::uint32_t first = 0;  ///< the point that it comes from; the next vertex is `last`
    std::uint32_t last = 0;
  };

  explicit TrackCutter(int level);

  /// One that goes on from the stretch under way, with nothing finished.
  TrackCutter continued() const;

  /// The vertex is that point of the line.
  void keep(WorldPoint vertex, std::size_t point);
  /// Finishes the stretch under way.
  void close();

  const std::vector<std::shared_ptr<const TrackChunk>>& chunks() const { return chunks_; }
  const std::vector<Segment>& longSegments() const { return longSegments_; }

 private:
  TrackCutter(double scale, double reach) : scale_(scale), reach_(reach) {}
  void start(WorldPoint vertex, std::uint32_t point);
  void add(WorldPoint vertex, std::uint32_t point);

  double scale_;  ///< points for one world unit
  double reach_;  ///< world units: how far a stretch may go from its origin
  std::optional<WorldPoint> last_;
  std::uint32_t lastPoint_ = 0;
  TrackChunk stretch_;
  std::vector<std::shared_ptr<const TrackChunk>> chunks_;
  std::vector<Segment> longSegments_;
};

/// A line at one integer zoom. Points come in order, each once, and each costs the same however many came
/// before.
///
/// Simplified in one pass: from the vertex kept last the line may go straight to the latest point as long as
/// that passes every point in between closely enough, which a sleeve of directions remembers, and none lies
/// beyond its end (the sector-bound method, for instance Z. Zhao and A. Saalfeld, "Linear-time sleeve-fitting
/// polyline simplification algorithms", AutoCarto 13, 1997).
class TrackLevel {
 public:
  explicit TrackLevel(int level);

  int level() const { return level_; }

  /// Takes the points that it has not seen yet.
  void catchUp(const TrackPoints& points);

  std::vector<TrackPiece> pieces(const WorldRect& view);

 private:
  /// Where the line may go straight to from its anchor, the vertex kept last.
  class Sleeve {
   public:
    Sleeve() = default;
    Sleeve(WorldPoint anchor, double scale) : scale_(scale), anchor_(anchor), latest_(anchor) {}

    WorldPoint latest() const { return latest_; }
    bool reaches(WorldPoint point) const;
    /// A point that it reaches.
    void take(WorldPoint point);

   private:
    double scale_ = 1;  ///< points for one world unit
    WorldPoint anchor_;
    WorldPoint latest_;
    bool isBounded_ = false;  ///< by a point that is not near the anchor itself
    WorldPoint left_;         ///< the directions at its edges, less than half a turn apart
    WorldPoint right_;
    /// Square points. Anything nearer would leave a point behind beyond the line's end.
    double leastSquared_ = 0;
  };

  void cutLongSegments(const WorldRect& window);

  int level_;
  double scale_;  ///< points for one world unit
  TrackCutter done_;
  TrackCutter tail_;  ///< from done_ to the latest point

  std::size_t taken_ = 0;
  Sleeve sleeve_;

  std::optional<WorldRect> window_;  ///< what longPieces_ were cut to
  std::vector<TrackPiece> longPieces_;
};

}  // namespace fleetor
