#include "vehicle/trip_on_map.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/number_text.h"

namespace fleetor {

namespace {

constexpr double tripLineWidth = 4.0;
constexpr double faintness = 0.35;  // the share of its colour that the rest of the day keeps

/// Where a trip begins or ends.
class TripEnd final : public MapAnnotation {
 public:
  TripEnd(Coordinate coordinate, std::string address, std::string clock)
      : coordinate_(coordinate), address_(std::move(address)), clock_(std::move(clock)) {}

  Coordinate coordinate() const override { return coordinate_; }
  std::string title() const override { return address_; }
  std::string subtitle() const override { return clock_; }

 private:
  Coordinate coordinate_;
  std::string address_;
  std::string clock_;
};

/// The points of a trip whose positions are known, and from which of them nothing is known up to the next.
struct Way {
  std::vector<Coordinate> coordinates;
  std::vector<std::uint32_t> gaps;

  Way(const DayPoints& points, const TrackGaps& daysGaps, const DayStage::Range& range) {
    const auto last = static_cast<std::uint32_t>(range.last);
    for (auto i = static_cast<std::uint32_t>(range.first); i <= last; ++i) {
      if (points.isPlaced(i)) coordinates.push_back(points.coordinates[i]);
      if (coordinates.empty() || !daysGaps || !std::ranges::binary_search(*daysGaps, i)) continue;
      const auto here = static_cast<std::uint32_t>(coordinates.size() - 1);
      if (gaps.empty() || gaps.back() != here) gaps.push_back(here);
    }
  }
};

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
  const Way way(points, renderer->gaps(), *range);
  if (way.coordinates.empty()) return;
  line_ = MapPolyline::polylineWithCoordinates(way.coordinates);
  renderer_ = std::make_shared<MapPolylineRenderer>(line_);
  renderer_->setStrokeColor(renderer->strokeColor());
  renderer_->setLineWidth(tripLineWidth);
  renderer_->setGaps(std::make_shared<const std::vector<std::uint32_t>>(way.gaps));
  Color faint = renderer->strokeColor();
  faint.alpha *= faintness;
  renderer->setStrokeColor(faint);
  daysRenderer_ = std::move(renderer);
  map_.addOverlay(line_);
  // As the service writes the time of the beginning.
  const auto digits =
      trip_->stage.clock.size() > clockText(0).size() ? ClockDigits::seconds : ClockDigits::minutes;
  ends_ = {
      std::make_shared<TripEnd>(way.coordinates.front(), trip_->from, trip_->stage.clock),
      std::make_shared<TripEnd>(way.coordinates.back(), trip_->to, clockText(*trip_->stage.end, digits))};
  map_.addAnnotations(ends_);
  map_.showCoordinates(way.coordinates, true);
}

void TripOnMap::erase() {
  if (!line_) return;
  daysRenderer_->setStrokeColor(renderer_->strokeColor());
  map_.removeOverlay(std::exchange(line_, nullptr));
  map_.removeAnnotations(std::exchange(ends_, {}));
  renderer_ = nullptr;
  daysRenderer_ = nullptr;
}

void TripOnMap::close() {
  erase();
  trip_.reset();
  for (Label* label : {&label_, &wayLabel_, &noteLabel_})
    label->setText("");
}

std::optional<TripOnMap::EndMark> TripOnMap::markOf(const MapAnnotation& annotation) const {
  const auto* const end = dynamic_cast<const TripEnd*>(&annotation);
  if (!end) return std::nullopt;
  const bool isFirst = !ends_.empty() && ends_.front().get() == end;
  return EndMark{isFirst ? "tripstart" : "tripend",
                 environment_.device.localizedString(isFirst ? "Start of the trip" : "End of the trip")};
}

std::shared_ptr<MapPolylineRenderer> TripOnMap::rendererFor(
    const std::shared_ptr<MapPolyline>& overlay) const {
  return overlay == line_ ? renderer_ : nullptr;
}

}  // namespace fleetor
