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

/// The part of the world that a map shows, as a centre and a zoom, and how gestures and animations move them.
/// It has no clock: the caller calls advance() once per frame while it returns true.
///
/// The world always fills the viewport: it repeats to both sides, and nothing north or south of it ever
/// shows. Centre and zoom are limited accordingly.
///
/// Without a viewport nothing is animated. A requested region is kept and applied when the viewport becomes
/// known and whenever it changes, until a gesture or moveTo() replaces it.
///
/// One thread. Numbers that are not finite are ignored.
class MapCamera {
 public:
  static constexpr double shortJourney = 0.3;  ///< seconds, to a place in view at the same zoom

  /// How much of a short way is done after that share of its time: fast at first, slow at its end.
  static double easedOut(double time) { return 1 - (1 - time) * (1 - time) * (1 - time); }

  /// In points. Keeps the requested region, or else centre and zoom. An empty viewport counts as missing.
  void setViewport(double width, double height);
  bool hasViewport() const { return width_ > 0; }
  double width() const { return width_; }
  double height() const { return height_; }

  /// Whether what was requested last still counts: no gesture, and no moveTo(), since then.
  bool keepsRegion() const { return region_.has_value(); }

  const CameraPosition& position() const { return position_; }
  WorldPoint centre() const { return position_.centre; }
  double zoom() const { return position_.zoom; }
  /// Where the animation under way ends; position() without one.
  CameraPosition destination() const;

  double scale() const { return pointsPerWorldUnit(position_.zoom); }  ///< points for one world unit

  /// About the centre: left may be below 0, right above 1.
  WorldRect visibleRect() const;
  /// In the copy of the world that is nearest to the centre.
  ScreenPoint screenPoint(WorldPoint point) const;

  /// Moves the map with a finger. Every gesture ends an animation and drops the requested region.
  void panBy(double dx, double dy);
  /// A finger leaves the map at that speed, in points per second: the map glides on and slows down. A slow
  /// finger does not throw it.
  void fling(double velocityX, double velocityY);
  /// A factor of 2 is one zoom level closer; the place at `around` stays there.
  void zoomBy(double factor, ScreenPoint around);
  /// Animates a zoom by that many levels (below 0: out); calls in quick succession add up. It starts at ten
  /// times as many levels per second, so that it continues a pinch without a jerk. A fling goes on meanwhile.
  void zoomSmoothlyBy(double levels, ScreenPoint around);
  /// Ends all movement.
  void stop();

  /// Animated, it takes the short way round the world: straight to a place nearby, to a far one in a flight
  /// that rises until both would be in view; at most 1.5 seconds.
  void moveTo(const CameraPosition& target, bool animated);
  /// Keeps the zoom, or the one that an animation leads to.
  void setCentre(WorldPoint centre, bool animated);

  /// The closest zoom that shows that many metres, north to south and west to east, about a centre.
  void setRegion(Coordinate centre, double latitudinalMetres, double longitudinalMetres, bool animated);
  /// The closest that shows all of the coordinates, `padding` points from every edge, but not less than 300
  /// metres; across the antimeridian where that is shorter. No coordinates: nothing changes.
  void fit(std::span<const Coordinate> coordinates, double padding, bool animated);

  /// Advances the animations; the number of steps makes no difference. True while something moves.
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
  /// A flight is a hyperbola in the plane of place and height; a straight journey has the length 0.
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
