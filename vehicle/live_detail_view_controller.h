#pragma once

#include <deque>
#include <memory>
#include <string>

#include "vehicle/track_page_view_controller.h"
#include "vehicle/watch/live_status.h"

namespace fleetor {

/// Where the vehicle is now and its trail: the positions polled while the page is visible, each more than a
/// metre from the one before. The trail is not stored, has no limit, and is lost when the program goes to the
/// background. Until there is a first position the map is covered; what is known from an earlier run is
/// written there.
///
/// The map follows the vehicle unless the user switches that off with "followButton", which is selected while
/// it does.
///
/// The vehicle's icon has two images: the plain one for headings above 179 degrees, and one whose name is
/// preceded by "p" for those up to 179.
class LiveDetailViewController final : public TrackPageViewController {
 public:
  explicit LiveDetailViewController(Environment& environment);

  /// The trail, oldest first; the vehicle is at the last.
  const std::deque<std::shared_ptr<const Live>>& items() const { return items_; }
  const std::string& imageName() const { return imageName_; }  ///< of the next marker

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void viewDidDisappear(bool animated) override;
  void clearView() override;
  void continueFrom(const DetailPageViewController& before) override;  ///< with its trail
  void receivedNotification(const Notification& notification);

  Button& followButton() { return followButton_; }
  LiveStatus& status() { return status_; }

  std::shared_ptr<MapAnnotationView> mapViewViewForAnnotation(
      MapView& mapView, const std::shared_ptr<MapAnnotation>& annotation) override;

 private:
  std::optional<Coordinate> placeOf(const MapAnnotation& annotation) const override;
  void setFollows(bool follows);
  void updateMapView();
  void updateCover();
  void drawRoute();

  std::deque<std::shared_ptr<const Live>> items_;
  std::string imageName_;
  Button followButton_;
  LiveStatus status_;
};

}  // namespace fleetor
