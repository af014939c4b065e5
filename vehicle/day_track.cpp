#include "vehicle/day_track.h"

#include <vector>

#include "values/quantities.h"

namespace fleetor {

MapEntryAnnotation::MapEntryAnnotation(const MapEntry& entry, Coordinate coordinate, std::size_t point,
                                       bool isParking)
    : coordinate_(coordinate),
      place_(readCoordinate(entry.location.lat, entry.location.lon)),
      title_(entry.title().str()),
      subtitle_(entry.subtitle()),
      lp_(entry.lp),
      point_(static_cast<std::uint32_t>(point)),
      parking_(isParking) {}

DayTrack DayTrack::fromAnswer(const MapResponse& answer, MapCamera camera) {
  DayTrack track;
  if (!answer.map) return track;
  track.total = answer.total;
  const auto& entries = *answer.map;
  std::vector<Coordinate> coordinates;
  coordinates.reserve(entries.size());
  std::vector<Coordinate> marked;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    coordinates.push_back(entries[i].coordinate());
    const bool isEnd = i == 0 || i == entries.size() - 1;
    const bool isParking = !isEnd && entries[i].isParking();
    if (!isEnd && !isParking) continue;
    marked.push_back(coordinates.back());
    track.markers.push_back(
        std::make_shared<MapEntryAnnotation>(entries[i], coordinates.back(), i, isParking));
  }
  if (track.total < 2) return track;
  track.polyline = MapPolyline::polylineWithCoordinates(coordinates);
  camera.fit(marked, MapView::fitPadding, false);
  if (camera.hasViewport()) track.polyline->prepareForZoom(camera.zoom());
  return track;
}

}  // namespace fleetor
