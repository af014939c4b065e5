#pragma once

#include <QColor>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "map/track_gaps.h"
#include "map/track_line.h"
#include "platform/queues.h"
#include "ui/map/map_view.h"

namespace fleetor {

/// How far along a line something has come.
struct LineProgress {
  double passed = 0;  ///< of the line's points
  WorldPoint place;

  friend bool operator==(const LineProgress&, const LineProgress&) = default;
};

/// What is drawn of one line.
struct DrawnLine {
  std::shared_ptr<TrackLine> line;
  QColor color;
  double width = 0;  ///< points
  TrackGaps gaps;    ///< faint and dashed
  int level = 0;     ///< of the pieces
  WorldRect window;  ///< all pieces that show in there, in the same copy of the world
  std::vector<TrackPiece> pieces;
  double pixels = 0;                     ///< about what the pieces cost to draw, as points that they fill
  std::uint64_t version = 0;             ///< changes with the pieces
  std::optional<LineProgress> progress;  ///< the line is strong until there, and faint beyond
};

/// Chooses what of the lines on a map is drawn. A long line that needs simplifying for a zoom is simplified
/// on the global queue, and stays drawn as it was until then. Main thread only.
class MapLines {
 public:
  static constexpr double ahead = 0.2;  ///< of the map's size: how far beyond its edges lines are chosen

  /// `onReady` is called when a simplified line has come and update() is due.
  MapLines(Queues& queues, std::function<void()> onReady);

  /// The overlays of the map have changed.
  void setOverlays(const MapView& map);
  /// Follows the camera and what travels along a line. Costs next to nothing while the camera stays within
  /// what was chosen before.
  void update(const MapView& map);

  const std::vector<DrawnLine>& drawn() const { return drawn_; }  ///< lowest first
  std::uint64_t version() const { return versions_; }             ///< changes with anything drawn
  bool progressed() const { return progressed_; }  ///< whether the last update() moved what travels on a line
  double pixels() const;                           ///< of all lines

 private:
  void choose(DrawnLine& line, const MapCamera& camera);
  void build(const DrawnLine& line, int level);

  Queues& queues_;
  std::function<void()> onReady_;
  std::vector<DrawnLine> drawn_;
  std::uint64_t versions_ = 0;
  bool progressed_ = false;
  std::vector<std::shared_ptr<TrackLine>> underWay_;  // being simplified
  std::shared_ptr<MapLines*> self_;  // shows a simplified line whether this object still exists
};

}  // namespace fleetor
