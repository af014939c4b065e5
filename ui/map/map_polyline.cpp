#include "ui/map/map_polyline.h"

namespace fleetor {

std::shared_ptr<MapPolyline> MapPolyline::polylineWithCoordinates(
    const std::vector<Coordinate>& coordinates) {
  return std::shared_ptr<MapPolyline>(
      new MapPolyline({coordinates.begin(), coordinates.end()}, std::make_shared<TrackLine>(coordinates)));
}

void MapPolyline::prepareForZoom(double zoom) const {
  line_->adopt(TrackLine::makeLevel(line_->points(), TrackLine::levelFor(zoom)));
}

std::shared_ptr<MapPolyline> MapPolyline::polylineByAppendingCoordinate(MapPolyline& earlier,
                                                                        Coordinate next) {
  std::shared_ptr<MapPolyline> longer(new MapPolyline(
      std::exchange(earlier.coordinates_, {}), std::exchange(earlier.line_, std::make_shared<TrackLine>())));
  longer->coordinates_.push_back(next);
  longer->line_->append(next);
  return longer;
}

}  // namespace fleetor
