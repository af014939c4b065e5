#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "service/envelopes.h"
#include "ui/map/map_view.h"

namespace fleetor {

/// A point of a day's track as a marker. It keeps its own copy of what it shows, so that a few markers do not
/// hold on to a whole day's answer.
class MapEntryAnnotation final : public MapAnnotation {
 public:
  MapEntryAnnotation(const MapEntry& entry, Coordinate coordinate, std::size_t point, bool isParking);

  Coordinate coordinate() const override { return coordinate_; }
  std::string title() const override { return title_; }
  std::string subtitle() const override { return subtitle_; }
  std::int64_t lp() const { return lp_; }
  bool isParking() const { return parking_; }
  std::uint32_t point() const { return point_; }  ///< its index in the answer

  /// Where its texts place it; none unless both are wholly understood. `coordinate` reads what it can.
  const std::optional<Coordinate>& place() const { return place_; }

 private:
  Coordinate coordinate_;
  std::optional<Coordinate> place_;
  std::string title_;
  std::string subtitle_;
  std::int64_t lp_ = 0;
  std::uint32_t point_ = 0;
  bool parking_ = false;
};

/// What a day's answer puts on the map.
struct DayTrack {
  std::int64_t total = 0;                 ///< points, as the service counts them
  std::shared_ptr<MapPolyline> polyline;  ///< through all points; null for fewer than two
  MapAnnotations markers;                 ///< the first and the last point, and the parking stops between

  /// Any thread. Takes milliseconds for a day of 86,400 points. The first and the last are no parking stops.
  /// The line is made ready for that camera, fitted to the markers.
  static DayTrack fromAnswer(const MapResponse& answer, MapCamera camera);
};

}  // namespace fleetor
