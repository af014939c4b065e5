#include "vehicle/day_track.h"

#include <string_view>
#include <vector>

namespace fleetor {

namespace {
constexpr std::string_view parkingLabel = "Parking";
}  // namespace

MapEntryAnnotation::MapEntryAnnotation(const MapEntry& entry)
    : coordinate_(entry.coordinate()),
      title_(entry.title().str()),
      subtitle_(entry.subtitle()),
      lp_(entry.lp),
      parking_(entry.label == parkingLabel) {}

DayTrack DayTrack::fromAnswer(MapResponse& answer) {
  DayTrack track;
  if (!answer.map) return track;
  track.total = answer.total;
  auto& entries = *answer.map;
  if (track.total >= 2) {
    std::vector<Coordinate> coordinates;
    coordinates.reserve(entries.size());
    for (const MapEntry& entry : entries)
      coordinates.push_back(entry.coordinate());
    track.polyline = MapPolyline::polylineWithCoordinates(coordinates);
  }
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const bool end = i == 0 || i == entries.size() - 1;
    if (end) entries[i].label = "";
    if (end || entries[i].label == parkingLabel)
      track.markers.push_back(std::make_shared<MapEntryAnnotation>(entries[i]));
  }
  return track;
}

}  // namespace fleetor
