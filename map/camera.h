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
  WorldPoint centre{0.5, 0.5};  ///< x from 0 to below 1
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
  /// Points. Centre and zoom stay, or the region asked for. An empty viewport counts as missing.
  void setViewport(double width, double height);
  bool hasViewport() const { return width_ > 0; }
  double width() const { return width_; }
  double height() const { return height_; }

  const CameraPosition& position() const { return position_; }
  WorldPoint centre() const { return position_.centre; }
  double zoom() const { return position_.zoom; }
  /// Where the animation under way will end, the zoom of a zoom that glides; else position().
  CameraPosition destination() const;

  double scale() const { return pointsPerWorldUnit(position_.zoom); }  ///< points for one world unit

  /// About the centre: left may be below 0, right above 1.
  WorldRect visibleRect() const;
  /// Of the copy of the world that is nearest to the centre.
  ScreenPoint screenPoint(WorldPoint point) const;

  /// A finger drags the map along. Every gesture ends an animation and lets go of the region asked for.
  void panBy(double dx, double dy);
  /// The finger lets go at that many points a second: the map glides on, slowing down. A slow finger does not
  /// throw.
  void fling(double velocityX, double velocityY);
  /// 2 is one zoom level closer; what is at `around` stays there.
  void zoomBy(double factor, ScreenPoint around);
  /// Glides that many levels closer (below 0: away); several in quick succession add up. It starts at ten
  /// times as many levels a second, so that a pinch of that speed goes over into it without a jerk. Glides of
  /// both kinds go together.
  void zoomSmoothlyBy(double levels, ScreenPoint around);
  /// A finger on a moving map holds it.
  void stop();

  /// Animated, it takes the short way round the world: straight to a place nearby, to a far one in a flight
  /// that rises until both would be in view; at most 1.5 seconds.
  void moveTo(const CameraPosition& target, bool animated);
  /// The zoom stays, or the one on its way.
  void setCentre(WorldPoint centre, bool animated);

  /// The closest zoom that shows that many metres, north to south and west to east, about a centre.
  void setRegion(Coordinate centre, double latitudinalMetres, double longitudinalMetres, bool animated);
  /// The closest that shows all of the coordinates, `padding` points from every edge, but not less than 300
  /// metres; across the antimeridian where that is shorter. No coordinates: nothing changes.
  void fit(std::span<const Coordinate> coordinates, double padding, bool animated);

  /// Moves on in time, the same in many steps as in one. True while there is more to come.
  bool advance(double seconds);
  bool moving() const { return glide_ || zoomGlide_ || journey_; }

 private:
  struct Region {
    double width = 0;  ///< world units
    double height = 0;
    double padding = 0;  ///< points
  };
  struct Glide {
    double velocityX = 0;  ///< points a second
    double velocityY = 0;
  };
  struct ZoomGlide {
    double target = 0;
    ScreenPoint around;
  };
  /// Of a flight: a hyperbola in the plane of place and height above it; a straight journey has no length.
  struct Journey {
    CameraPosition from;
    CameraPosition to;  ///< x so that the difference is the short way
    double duration = 0;
    double elapsed = 0;
    double length = 0;
    double start = 0;  ///< hyperbolic angle at `from`
  };

  CameraPosition limited(CameraPosition position) const;
  double zoomToShow(const Region& region) const;
  void zoomTo(double zoom, ScreenPoint around);
  bool beginGesture();
  void show(WorldPoint centre, const Region& region, bool animated);
  void travel(const CameraPosition& target, bool animated);
  CameraPosition along(const Journey& journey) const;

  CameraPosition position_;
  double width_ = 0;
  double height_ = 0;
  std::optional<Region> region_;
  std::optional<Glide> glide_;
  std::optional<ZoomGlide> zoomGlide_;
  std::optional<Journey> journey_;
};

}  // namespace fleetor
