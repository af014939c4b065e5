#include "lone_page.h"
#include "vehicle/live_detail_view_controller.h"

namespace fleetor::test {
namespace {

constexpr double metre = 1 / 111'195.08;  ///< degrees of latitude

class LivePage : public LonePage<LiveDetailViewController> {
 protected:
  LivePage() {
    map.moveCamera([](MapCamera& camera) { camera.setViewport(390, 780); });
  }

  /// The vehicle is that many metres north of where it started.
  void postAt(double metres, const std::string& direction = "270", std::int64_t vehicleId = 7) {
    const auto live = liveAt(std::to_string(50 + metres * metre), "20");
    live->vehicles.vehicleId = vehicleId;
    live->vehicles.icon = "bus";
    live->direction = direction;
    pollBrings(live);
    map.moveCamera([](MapCamera& camera) { camera.advance(10); });
  }

  /// Images of the markers and number of points of each line: "bus, 3".
  std::string drawn() {
    std::string text;
    for (const auto& annotation : map.annotations()) {
      const auto view = map.viewForAnnotation(*annotation);
      text += view ? view->image() : "?";
    }
    for (const auto& overlay : map.overlays())
      text += ", " + std::to_string(overlay->coordinates().size());
    return text;
  }
  double metresAcross() { return 390 / map.camera().scale() * metresPerWorldUnit(50); }
  double metresNorth() { return (map.centerCoordinate().latitude - 50) / metre; }

  MapView& map = page->mapView();
};

TEST_F(LivePage, ZoomsToTheFirstPositionAndLeavesATrailFromThere) {
  EXPECT_EQ(page->imageName(), "van");
  postAt(0);
  EXPECT_EQ(drawn(), "bus");
  EXPECT_NEAR(metresAcross(), 2000, 1);
  const auto marker = map.viewForAnnotation(*map.annotations().at(0));
  EXPECT_EQ(marker->accessibleName(), "Vehicle, 2026-03-10 08:00:15, Long Street 5");
  EXPECT_TRUE(marker->enabled() && marker->canShowCallout() && !marker->draggable());

  map.moveCamera([](MapCamera& camera) { camera.zoomBy(4, {100, 100}); });
  postAt(0.5);
  EXPECT_EQ(drawn(), "bus");
  EXPECT_GT(std::abs(metresNorth()), 100);  // where the user went
  postAt(300);
  EXPECT_EQ(drawn(), "bus, 2");
  EXPECT_NEAR(metresNorth(), 300, 1);
  EXPECT_NEAR(metresAcross(), 500, 1);
  EXPECT_EQ(map.viewForAnnotation(*map.annotations().at(0)), marker);
  postAt(300.5);
  postAt(600);
  EXPECT_EQ(drawn(), "bus, 3");
  const auto renderer = map.rendererForOverlay(*page->polyline());
  EXPECT_EQ(renderer->lineWidth(), 2.0);
  EXPECT_EQ(renderer->strokeColor(), DetailPageViewController::colorFromHexString("0f0"));
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_EQ(page->polyline()->coordinates()[i], page->items()[i]->coordinate());
}

TEST_F(LivePage, IsCoveredUntilTheFirstPositionAndFollowsThePagerMeanwhile) {
  const auto isWaiting = [this] {
    EXPECT_EQ(page->loadingIndicator().isAnimating(), map.isCovered());
    EXPECT_EQ(page->noteLabel().text(), map.isCovered() ? "Waiting for the next position" : "");
    return map.isCovered();
  };
  EXPECT_TRUE(isWaiting() && !map.isPlaced());
  page->receivedPosition({50 - 300 * metre, 20});
  EXPECT_TRUE(isWaiting() && map.isPlaced());
  EXPECT_FALSE(map.camera().moving());
  EXPECT_NEAR(metresNorth(), -300, 1);
  EXPECT_NEAR(metresAcross(), 2000, 1);
  postAt(0);
  EXPECT_FALSE(isWaiting());
  page->receivedPosition({51, 20});
  EXPECT_NEAR(metresNorth(), 0, 1);
  client.application.didEnterBackground();
  EXPECT_TRUE(isWaiting());
}

TEST_F(LivePage, FollowsTheVehicleUnlessTheUserHasUnlockedIt) {
  postAt(0);
  page->followButton().tap();
  postAt(300);
  EXPECT_EQ(drawn(), "bus, 2");
  EXPECT_NEAR(metresNorth(), 0, 1);
  page->followButton().tap();
  map.moveCamera([](MapCamera& camera) { camera.advance(10); });
  EXPECT_NEAR(metresNorth(), 300, 1);
  postAt(600);
  EXPECT_NEAR(metresNorth(), 600, 1);
  page->followButton().tap();
  client.application.didEnterBackground();
  EXPECT_TRUE(page->followButton().selected()) << "a new trail begins";
}

TEST_F(LivePage, KeepsAnOpenCalloutAtTheNextPosition) {
  postAt(0);
  map.selectAnnotation(map.annotations().at(0));
  postAt(300);
  EXPECT_EQ(map.selectedAnnotation(), map.annotations().at(0));
}

TEST_F(LivePage, ChoosesTheImageByTheHeadingOfTheLatestRecordOfItsVehicle) {
  double metres = 0;
  for (const auto& [direction, image] : {std::pair{"0", "pbus"},
                                         {"179", "pbus"},
                                         {"179.000001", "pbus"},
                                         {"179.5", "bus"},
                                         {"", "pbus"},
                                         {"north", "pbus"},
                                         {"-90", "pbus"},
                                         {"200 west", "bus"}}) {
    postAt(metres += 10, direction);
    EXPECT_EQ(drawn().substr(0, drawn().find(',')), image) << direction;
  }
  postAt(metres, "90");  // standing still
  EXPECT_EQ(drawn(), "bus, 8");
  EXPECT_EQ(page->imageName(), "pbus");
  postAt(metres + 10, "270", 8);
  poll(APIFailure{});
  poll(std::string("record"));
  EXPECT_EQ(page->imageName(), "pbus");
  EXPECT_EQ(drawn(), "bus, 8");
}

TEST_F(LivePage, ForgetsTheTrailInTheBackgroundUntilItHasDisappearedOnce) {
  postAt(0);
  postAt(300);
  client.application.didEnterBackground();
  EXPECT_EQ(drawn(), "");
  EXPECT_TRUE(page->items().empty() && !page->polyline() && !page->polylineRenderer());
  client.application.willEnterForeground();
  map.moveCamera([](MapCamera& camera) { camera.zoomBy(8, {0, 0}); });
  postAt(500);
  EXPECT_NEAR(metresAcross(), 2000, 1);
  postAt(600);

  hide();
  EXPECT_FALSE(map.delegate());
  postAt(900);
  EXPECT_EQ(drawn(), "bus, 2");
  show();
  client.application.didEnterBackground();
  client.application.willEnterForeground();
  EXPECT_EQ(drawn(), "bus, 2");
  postAt(1200);
  EXPECT_EQ(drawn(), "bus, 3");
}

TEST_F(LivePage, HasButtonsToZoomToShowTheWholeTrailAndToChangeTheMap) {
  postAt(0);
  postAt(6000);
  const auto tap = [this](const char* name, const std::string& accessibleName) {
    auto& button = outlet<Button>(name);
    EXPECT_EQ(button.accessibleName(), accessibleName);
    button.tap();
    EXPECT_TRUE(map.camera().moving()) << name;
    map.moveCamera([](MapCamera& camera) { camera.advance(10); });
  };
  tap("zoomInButton", "Zoom in");
  EXPECT_NEAR(metresAcross(), 1000, 2);
  EXPECT_NEAR(metresNorth(), 6000, 1);
  tap("zoomOutButton", "Zoom out");
  tap("zoomOutButton", "Zoom out");
  EXPECT_NEAR(metresAcross(), 4000, 8);
  tap("wholeTrackButton", "Show the whole track");
  EXPECT_NEAR(metresNorth(), 3000, 10);
  for (const bool satellite : {true, false}) {
    page->changeTypeButton().tap();
    EXPECT_EQ(page->changeTypeButton().selected(), satellite);
    EXPECT_EQ(page->changeTypeButton().image(), satellite ? "BtnMapTypeSelected" : "BtnMapType");
    EXPECT_EQ(map.mapType(), satellite ? MapType::satellite : MapType::standard);
  }
}

}  // namespace
}  // namespace fleetor::test
