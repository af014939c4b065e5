#include "vehicle/trip_on_map.h"

#include <utility>
#include <vector>

namespace fleetor {

namespace {

constexpr double tripLineWidth = 4.0;
constexpr double faintness = 0.35;  // the share of its colour that the rest of the day keeps

/// Those of the day's line as gaps of the trip's.
TrackGaps gapsWithin(const TrackGaps& gaps, const DayStage::Range& range) {
  if (!gaps) return nullptr;
  std::vector<std::uint32_t> within;
  for (const std::uint32_t gap : *gaps)
    if (gap >= range.first && gap < range.last)
      within.push_back(gap - static_cast<std::uint32_t>(range.first));
  return std::make_shared<const std::vector<std::uint32_t>>(std::move(within));
}

}  // namespace

TripOnMap::TripOnMap(const Environment& environment, Outlets& page, MapView& map)
    : environment_(environment), map_(map) {
  page.outlet("tripLabel", label_);
  page.outlet("tripWayLabel", wayLabel_);
  page.outlet("tripNoteLabel", noteLabel_);
  page.outlet("tripBackButton", backButton_);
  page.outlet("tripCloseButton", closeButton_);
  backButton_.setTitle(environment.device.localizedString("Back to the trips"));
  closeButton_.setTitle(environment.device.localizedString("Whole day"));
  closeButton_.setAction([this](Component&) {
    close();
    map_.showAll(true);
  });
}

void TripOnMap::open(OpenedTrip trip) {
  erase();
  label_.setText(trip.stage.clock + " · " + trip.distance +
                 (trip.duration.empty() ? "" : " · " + trip.duration));
  wayLabel_.setText(trip.from + " → " + trip.to);
  noteLabel_.setText("");
  trip_ = std::move(trip);
}

void TripOnMap::draw(const DayPoints& points, std::shared_ptr<MapPolylineRenderer> renderer) {
  erase();
  const auto range = trip_->stage.pointsOf(points);
  noteLabel_.setText(
      range ? "" : environment_.device.localizedString("The track has no points at the times of this trip"));
  if (!range || !renderer) return;
  std::vector<Coordinate> way;
  for (auto i = static_cast<std::size_t>(range->first); i <= static_cast<std::size_t>(range->last); ++i)
    if (points.isPlaced(i)) way.push_back(points.coordinates[i]);
  line_ = MapPolyline::polylineWithCoordinates(way);
  renderer_ = std::make_shared<MapPolylineRenderer>(line_);
  renderer_->setStrokeColor(renderer->strokeColor());
  renderer_->setLineWidth(tripLineWidth);
  renderer_->setGaps(gapsWithin(renderer->gaps(), *range));
  Color faint = renderer->strokeColor();
  faint.alpha *= faintness;
  renderer->setStrokeColor(faint);
  daysRenderer_ = std::move(renderer);
  map_.addOverlay(line_);
  map_.showCoordinates(way, true);
}

void TripOnMap::erase() {
  if (!line_) return;
  daysRenderer_->setStrokeColor(renderer_->strokeColor());
  map_.removeOverlay(std::exchange(line_, nullptr));
  renderer_ = nullptr;
  daysRenderer_ = nullptr;
}

void TripOnMap::close() {
  erase();
  trip_.reset();
  for (Label* label : {&label_, &wayLabel_, &noteLabel_})
    label->setText("");
}

std::shared_ptr<MapPolylineRenderer> TripOnMap::rendererFor(
    const std::shared_ptr<MapPolyline>& overlay) const {
  return overlay == line_ ? renderer_ : nullptr;
}

}  // namespace fleetor
