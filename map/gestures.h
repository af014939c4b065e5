#pragma once

#include <deque>
#include <limits>
#include <optional>
#include <vector>

#include "map/camera.h"

namespace fleetor {

/// Turns fingers on a map into movements of its camera and into taps: a drag pans, a throw glides on, a pinch
/// zooms, a double tap zooms in, a tap with two fingers zooms out. There is no rotation. Times in seconds
/// from any origin, never going back. One thread.
class MapGestures {
 public:
  enum class Pointer { finger, mouse };
  struct Finger {
    int id = 0;
    ScreenPoint position;
  };

  /// How far from the left and the right edge of the map a sideways drag turns the page instead, in points.
  struct Edges {
    double left = 0;
    double right = 0;
  };
  void setEdges(Edges edges) { edges_ = edges; }

  /// Call with all fingers that are down whenever one comes, moves or goes. A mouse is one finger. Returns
  /// the place of a tap with one finger, also of the first one of a double tap.
  std::optional<ScreenPoint> update(const std::vector<Finger>& fingers, Pointer pointer, double now,
                                    MapCamera& camera);

  /// Another item has taken over the fingers.
  void cancel();

  /// The next tap, however soon, is not the second one of a double tap.
  void forgetTap() { lastTap_.reset(); }

  /// Whether the fingers that are down belong to the map and no longer to what surrounds it.
  bool holdsFingers() const { return !ids_.empty() && !undecided_; }

  /// Whether the fingers that are down have moved the map.
  bool movesMap() const { return !ids_.empty() && moved_; }

 private:
  struct Sample {
    double time = 0;
    ScreenPoint centre;
    double spread = 0;  ///< mean distance of the fingers from their centre
  };

  static Sample measure(const std::vector<Finger>& fingers, double now);
  void begin(const Sample& sample, MapCamera& camera);
  bool leavesSlop(const Sample& sample, double slop);
  void drag(const Sample& sample, MapCamera& camera);
  void letGo(double now, MapCamera& camera);
  std::optional<ScreenPoint> end(double now, MapCamera& camera);

  Edges edges_;
  std::vector<int> ids_;  ///< of the fingers that are down
  std::size_t most_ = 0;  ///< fingers at one time in this gesture
  bool moved_ = false;
  bool dragging_ = false;   ///< the fingers that are down have left the slop
  bool held_ = false;       ///< the gesture stopped a map that moved
  bool undecided_ = false;  ///< a finger near an edge may still turn the page
  Sample start_;            ///< of the gesture
  Sample anchor_;           ///< since the number of fingers changed
  std::deque<Sample> recent_;
  std::optional<Sample> lastTap_;
  double lastZoom_ = -std::numeric_limits<double>::infinity();  ///< when a tap last zoomed
};

/// Zooms about a place as a wheel turns by so many notches; positive: away from the user, which zooms in.
void zoomByWheel(MapCamera& camera, double notches, ScreenPoint around);
/// The same for two fingers that scroll so many points on a touchpad.
void zoomByTouchpad(MapCamera& camera, double points, ScreenPoint around);

/// An arrow key moves the map by so many steps to the east and to the south. Steps in quick succession add
/// up.
void moveBySteps(MapCamera& camera, int east, int south);

}  // namespace fleetor
