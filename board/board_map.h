#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "vehicle/map_panel.h"
#include "vehicle/watch/last_readings.h"

namespace fleetor {

/// Several vehicles on one map, each with its picture, an arrow where it heads, and its trail in its colour:
/// the positions that were shown here, the latest 1,000 at most, each more than a metre from the one before;
/// after two minutes without one the trail begins anew. The map shows all of them until the user moves it,
/// and then again when "wholeTrackButton" is tapped; or it follows one. Main thread only.
class BoardMap final : public MapViewDelegate {
 public:
  BoardMap(Environment& environment, Outlets& screen);
  ~BoardMap() override;

  MapPanel& panel() { return panel_; }
  MapView& map() { return panel_.map; }

  /// A vehicle's latest record. One without a position leaves the map as it is.
  void show(const LastReadings::Entry& entry);
  void keepOnly(const std::vector<std::int64_t>& ids);  ///< the others leave the map
  bool isEmpty() const { return places_.empty(); }
  bool has(std::int64_t vehicleId) const { return places_.contains(vehicleId); }

  std::optional<std::int64_t> followed() const { return followed_; }
  void follow(std::optional<std::int64_t> vehicleId);
  void showAll();  ///< and follows none

  /// The record of the vehicle whose callout is open, or null.
  const Live* selected() const;

  Signal<> changed;  ///< which one is followed, or selected

  std::shared_ptr<MapAnnotationView> mapViewViewForAnnotation(
      MapView& mapView, const std::shared_ptr<MapAnnotation>& annotation) override;
  std::shared_ptr<MapPolylineRenderer> mapViewRendererForOverlay(
      MapView& mapView, const std::shared_ptr<MapPolyline>& overlay) override;

 private:
  class Marker;

  struct Place {
    std::shared_ptr<Marker> marker;
    std::vector<Coordinate> first;  ///< of the trail, while that is no line yet
    std::shared_ptr<MapPolyline> trail;
    Seconds arrived{};
  };

  void extendTrail(Place& place, const Marker& marker, Seconds arrived);
  void lookAtFollowed(bool closer);
  bool isInSight(Coordinate place) const;

  Environment& environment_;
  MapPanel panel_;
  std::map<std::int64_t, Place> places_;
  std::map<const MapPolyline*, Color> colours_;
  std::optional<std::int64_t> followed_;
  Connection onMap_;
};

}  // namespace fleetor
