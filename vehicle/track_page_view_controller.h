#pragma once

#include <memory>
#include <optional>
#include <string>

#include "ui/controls/controls.h"
#include "ui/map/map_view.h"
#include "vehicle/detail_page_view_controller.h"
#include "vehicle/map_panel.h"

namespace fleetor {

/// What the two pages with a map share: the panel with the map, and the vehicle's line on it.
/// "sharePositionButton" in the callout offers its place to be taken along. The page is the map's delegate
/// while it is visible.
///
/// Until there is something to show, the map is covered and follows the positions that the pager receives.
///
/// The page follows the program to the background and back only until it first disappears.
class TrackPageViewController : public DetailPageViewController, public MapViewDelegate {
 public:
  explicit TrackPageViewController(Environment& environment);

  MapView& mapView() { return panel_.map; }
  Button& changeTypeButton() { return panel_.changeTypeButton; }
  ActivityIndicator& loadingIndicator() { return panel_.loadingIndicator; }
  Label& noteLabel() { return panel_.noteLabel; }

  /// The line on the map, or null.
  const std::shared_ptr<MapPolyline>& polyline() const { return polyline_; }
  const std::shared_ptr<MapPolylineRenderer>& polylineRenderer() const { return polylineRenderer_; }

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void viewDidDisappear(bool animated) override;
  void receivedPosition(Coordinate position) override;
  void continueFrom(const DetailPageViewController& before) override;  ///< with its kind of map

  /// Empties the map.
  virtual void clearView();

  std::shared_ptr<MapPolylineRenderer> mapViewRendererForOverlay(
      MapView& mapView, const std::shared_ptr<MapPolyline>& overlay) override;

 protected:
  static constexpr double vehicleSpan = 2000.0;  ///< metres shown around the vehicle

  void didEnterBackground() { clearView(); }
  virtual void wilEnterForeground() {}

  /// Where that is, to be taken along; none where it is not understood.
  virtual std::optional<Coordinate> placeOf(const MapAnnotation& annotation) const = 0;

  void removePolyline() { mapView().removeOverlay(polyline_); }
  void addPolyline(std::shared_ptr<MapPolyline> polyline);  ///< in the vehicle's colour

  /// A marker for the annotation, used again or new. `kind` is what assistive technology calls it.
  std::shared_ptr<MapAnnotationView> vehicleAnnotationView(const std::shared_ptr<MapAnnotation>& annotation,
                                                           const std::string& image, const std::string& kind);

 private:
  void sharePosition();

  MapPanel panel_;
  Button sharePositionButton_;
  Connection onMap_;
  std::shared_ptr<MapPolyline> polyline_;
  std::shared_ptr<MapPolylineRenderer> polylineRenderer_;
};

}  // namespace fleetor
