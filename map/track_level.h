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
  };

  explicit TrackCutter(int level);

  /// One that goes on from the stretch under way, with nothing finished.
  TrackCutter continued() const;

  void keep(WorldPoint vertex);
  /// Finishes the stretch under way.
  void close();

  const std::vector<std::shared_ptr<const TrackChunk>>& chunks() const { return chunks_; }
  const std::vector<Segment>& longSegments() const { return longSegments_; }

 private:
  TrackCutter(double scale, double reach) : scale_(scale), reach_(reach) {}
  void start(WorldPoint vertex);
  void add(WorldPoint vertex);

  double scale_;  ///< points for one world unit
  double reach_;  ///< world units: how far a stretch may go from its origin
  std::optional<WorldPoint> last_;
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
  /// In points from the anchor. Narrower than half a turn.
  struct Sleeve {
    WorldPoint left;
    WorldPoint right;
  };

  void take(WorldPoint point);
  bool passes(WorldPoint offset, double distance) const;
  void narrow(WorldPoint offset, double distance);
  void cutLongSegments(const WorldRect& window);

  int level_;
  double scale_;  ///< points for one world unit
  TrackCutter done_;
  TrackCutter tail_;  ///< from done_ to the latest point

  std::size_t taken_ = 0;
  WorldPoint anchor_;  ///< the vertex kept last
  WorldPoint latest_;
  double furthest_ = 0;  ///< points from the anchor
  std::optional<Sleeve> sleeve_;

  std::optional<WorldRect> window_;  ///< what longPieces_ were cut to
  std::vector<TrackPiece> longPieces_;
};

}  // namespace fleetor
