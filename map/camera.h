#pragma once

#include <optional>
#include <span>

#include "map/mercator.h"

namespace fleetor {

/// Points from the viewport's top left corner, x to the right, y down.
struct ScreenPoint {
  double x = 0;
  double y = 0;

  friend bool operator==(const ScreenPoint&, const ScreenPoint&) = default;
};

struct CameraPosition {
  WorldPoint center{0.5, 0.5};  ///< x from 0 to below 1
  double zoom = 0;              ///< the world is 256 * 2^zoom points wide

  friend bool operator==(const CameraPosition&, const CameraPosition&) = default;
};

/// What of the world a map shows: a centre, a zoom, and how both move under a finger and in time. It has no
/// clock: whoever draws calls advance() once a frame while it says so.
///
/// The world always fills the viewport: it repeats to both sides, and nothing north or south of it ever
/// shows. So centre and zoom are what was asked for as far as that allows.
///
/// Without a viewport nothing animates; a region asked for is kept and measured when the viewport becomes
/// known, and again when it changes, until a gesture or moveTo() takes its place.
///
/// One thread. Numbers that are not finite are ignored.
class MapCamera {
 public:
  /// Points. Centre and zoom stay, or the region asked for. An empty viewport is none.
  void setViewport(double width, double height);
  bool hasViewport() const { return width_ > 0; }
  double width() const { return width_; }
  double height() const { return height_; }

  /// 1 to 20 at first.
  void setZoomLimits(double minimum, double maximum);

  const CameraPosition& position() const { return position_; }
  WorldPoint center() const { return position_.center; }
  double zoom() const { return position_.zoom; }
  /// Where the animation under way will end; without one, position().
  CameraPosition destination() const;

  double scale() const { return pointsPerWorldUnit(position_.zoom); }  ///< points for one world unit

  /// About the centre: left may be below 0, right above 1.
  WorldRect visibleRect() const;
  /// Of the copy of the world that is nearest to the centre.
  ScreenPoint screenPoint(WorldPoint point) const;
  /// Within the unit square.
  WorldPoint worldPoint(ScreenPoint point) const;

  /// What keeps its place under the finger: the map moves with it. As every gesture, it ends motion and
  /// animation.
  void panBy(double dx, double dy);
  /// The finger that moved by that many points a second lets go: the map glides on and slows down. Slow ones
  /// are not felt as a throw and do nothing.
  void fling(double velocityX, double velocityY);
  /// 2 is one zoom level closer; what is at `around` stays there.
  void zoomBy(double factor, ScreenPoint around);
  /// Glides that many levels closer (below 0: away); several in quick succession add up.
  void zoomSmoothlyBy(double levels, ScreenPoint around);
  /// A finger on a gliding map holds it.
  void stop();

  /// The animation takes the short way round the world. Near places are reached straight, far ones in a
  /// flight that rises until both would be in view and comes down again, in at most 1.5 seconds.
  void moveTo(const CameraPosition& target, bool animated);
  /// The zoom stays, or the one on its way to the region asked for.
  void setCenter(WorldPoint center, bool animated);

  /// The closest zoom that shows that many metres, north to south and west to east, about a centre.
  void setRegion(Coordinate center, double latitudinalMetres, double longitudinalMetres, bool animated);
  /// The closest that shows all of the coordinates, `padding` points from every edge, and never less than 300
  /// metres; across the antimeridian where that is shorter. No coordinates: nothing changes.
  void fit(std::span<const Coordinate> coordinates, double padding, bool animated);

  /// Moves on in time. True while there is more to come.
  bool advance(double seconds);
  bool moving() const { return motion_.has_value(); }

 private:
  struct Span {
    double width = 0;  ///< world units
    double height = 0;
    double padding = 0;  ///< points
  };
  struct Glide {
    double velocityX = 0;  ///< points a second
    double velocityY = 0;
  };
  struct Motion {
    Glide glide;
  };

  CameraPosition position_;
  double width_ = 0;
  double height_ = 0;
  double minimumZoom_ = 1;
  double maximumZoom_ = 20;
  std::optional<Span> span_;
  std::optional<Motion> motion_;
};

}  // namespace fleetor
