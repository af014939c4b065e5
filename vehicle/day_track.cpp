#include "vehicle/day_track.h"

#include <vector>

#include "values/quantities.h"

namespace fleetor {

MapEntryAnnotation::MapEntryAnnotation(const MapEntry& entry, std::size_t point)
    : coordinate_(entry.coordinate()),
      place_(readCoordinate(entry.location.lat, entry.location.lon)),
      title_(entry.title().str()),
      subtitle_(entry.subtitle()),
      lp_(entry.lp),
      point_(static_cast<std::uint32_t>(point)),
      parking_(entry.isParking()) {}

DayTrack DayTrack::fromAnswer(const MapResponse& answer) {
  DayTrack track;
  if (!answer.map) return track;
  track.total = answer.total;
  const auto& entries = *answer.map;
  if (track.total >= 2) {
    std::vector<Coordinate> coordinates;
    coordinates.reserve(entries.size());
    for (const MapEntry& entry : entries)
      coordinates.push_back(entry.coordinate());
    track.polyline = MapPolyline::polylineWithCoordinates(coordinates);
  }
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const bool end = i == 0 || i == entries.size() - 1;
    if (!end && !entries[i].isParking()) continue;
    MapEntry entry = entries[i];
    if (end) entry.label = "";
    track.markers.push_back(std::make_shared<MapEntryAnnotation>(entry, i));
  }
  return track;
}

}  // namespace fleetor
