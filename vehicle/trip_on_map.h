#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "day/day_points.h"
#include "ui/controls/controls.h"
#include "ui/environment.h"
#include "ui/map/map_view.h"
#include "vehicle/opened_trip.h"

namespace fleetor {

/// The trip that was opened on the map from its card: its part of the day's line strong and in view, a marker
/// at each of its ends, the rest faint, and "tripLabel", "tripWayLabel" and "tripNoteLabel" about it.
/// "tripBackButton" leads back to the card, "tripCloseButton" to the whole day. Main thread only; part of the
/// page.
class TripOnMap {
 public:
  /// Adds its components to those of the page.
  TripOnMap(const Environment& environment, Outlets& page, MapView& map);

  void setBack(Action back) { backButton_.setAction(std::move(back)); }

  const std::optional<OpenedTrip>& trip() const { return trip_; }
  void open(OpenedTrip trip);

  /// Draws the trip on the map, or reports that the track has no such times. `renderer` is that of the day's
  /// line.
  void draw(const DayPoints& points, std::shared_ptr<MapPolylineRenderer> renderer);

  void erase();  ///< Takes the trip off the map, as is due before the day's line goes.
  void close();

  /// How one of its ends is marked; nothing for every other annotation.
  struct EndMark {
    const char* image;
    std::string kind;  ///< what assistive technology calls it
  };
  std::optional<EndMark> markOf(const MapAnnotation& annotation) const;

  /// Null for every line but its own.
  std::shared_ptr<MapPolylineRenderer> rendererFor(const std::shared_ptr<MapPolyline>& overlay) const;

 private:
  const Environment& environment_;
  MapView& map_;
  std::optional<OpenedTrip> trip_;
  std::shared_ptr<MapPolyline> line_;
  MapAnnotations ends_;
  std::shared_ptr<MapPolylineRenderer> renderer_;
  std::shared_ptr<MapPolylineRenderer> daysRenderer_;  ///< while it is faint
  Label label_;
  Label wayLabel_;
  Label noteLabel_;
  Button backButton_;
  Button closeButton_;
};

}  // namespace fleetor
