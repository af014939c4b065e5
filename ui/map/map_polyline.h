#pragma once

#include <deque>
#include <memory>
#include <utility>
#include <vector>

#include "map/track_gaps.h"
#include "map/track_line.h"
#include "platform/coordinate.h"
#include "ui/geometry.h"

namespace fleetor {

/// A line through coordinates, to be laid over a map. Made on any thread (86,400 coordinates take
/// milliseconds, which are better spent off the main thread), used on the main thread from then on.
class MapPolyline {
 public:
  static std::shared_ptr<MapPolyline> polylineWithCoordinates(const std::vector<Coordinate>& coordinates);

  /// Makes what a map at that zoom draws, so that the first frame has the line. Before the main thread uses
  /// it.
  void prepareForZoom(double zoom) const;

  /// A line through the coordinates of `earlier` and one more, in a time that does not depend on their
  /// number: it takes over everything that `earlier` holds and leaves that without coordinates. Take
  /// `earlier` off its map before.
  static std::shared_ptr<MapPolyline> polylineByAppendingCoordinate(MapPolyline& earlier, Coordinate next);

  /// A deque, which grows without moving its elements.
  const std::deque<Coordinate>& coordinates() const { return coordinates_; }

  /// The line prepared for drawing; never null. Only the drawing code uses it and makes levels in it. A line
  /// that takes over from an earlier one continues the same object.
  const std::shared_ptr<TrackLine>& line() const { return line_; }

 private:
  MapPolyline(std::deque<Coordinate> coordinates, std::shared_ptr<TrackLine> line)
      : coordinates_(std::move(coordinates)), line_(std::move(line)) {}

  std::deque<Coordinate> coordinates_;
  std::shared_ptr<TrackLine> line_;
};

/// How a line is drawn. Set before the map asks for it, or followed by MapView::redrawOverlays().
class MapPolylineRenderer {
 public:
  explicit MapPolylineRenderer(std::shared_ptr<MapPolyline> polyline) : polyline_(std::move(polyline)) {}

  const std::shared_ptr<MapPolyline>& polyline() const { return polyline_; }

  const Color& strokeColor() const { return strokeColor_; }
  void setStrokeColor(const Color& color) { strokeColor_ = color; }

  double lineWidth() const { return lineWidth_; }  ///< points
  void setLineWidth(double points) { lineWidth_ = points; }

  /// Gaps are drawn faint and dashed.
  const TrackGaps& gaps() const { return gaps_; }
  void setGaps(TrackGaps gaps) { gaps_ = std::move(gaps); }

 private:
  std::shared_ptr<MapPolyline> polyline_;
  Color strokeColor_;
  double lineWidth_ = 1;
  TrackGaps gaps_;
};

}  // namespace fleetor
