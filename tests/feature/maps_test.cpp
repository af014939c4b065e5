#include <gmock/gmock.h>

#include "support/client.h"
#include "ui/controls/action_sheet_date_picker.h"
#include "vehicle/live_detail_view_controller.h"
#include "vehicle/map_detail_view_controller.h"

namespace fleetor::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int liveTab = 1;
constexpr int mapTab = 2;
constexpr int aboutTab = 4;

/// A signed-in phone with the second vehicle open. It drives a ten-thousandth of a degree north between two
/// polls. Each day has as many points as the number of its day in the month.
class Maps : public testing::Test {
 protected:
  Maps() {
    client.start();
    Viewport eyes(client.find<VehiclesTableViewController>()->itemsTableView());
    client.settle();
    client.transport.answer("/live", [this](const HttpRequest& request) {
      lat += 0.0001;
      return std::optional(liveReply(numberOf(request.url, "vehid"), 57, std::to_string(lat)));
    });
    client.transport.answer("/map", [this](const HttpRequest& request) {
      asked.push_back(request.url.substr(Client::baseURL().size()));
      const std::string day = parameterOf(request.url, "date");
      return std::optional(mapReply(std::vector<std::string>(std::stoul(day.substr(8)), "Parking"), 1));
    });
    pager = client.open(1);
    const auto& pages = pager->swipeTabBarController()->viewControllers();
    live = dynamic_cast<LiveDetailViewController*>(pages[liveTab].get());
    map = dynamic_cast<MapDetailViewController*>(pages[mapTab].get());
  }

  void show(int tab) {
    pager->pagesTabBar().tap(tab);
    client.settle();
  }
  void choose(int dayOfMarch) {
    pager->navigationItem().rightBarButtonItems().at(0)->tap();
    const auto picker = client.application.window().datePicker();
    picker->setSelectedDate(client.queues.now() + std::chrono::hours(24 * (dayOfMarch - 10)));
    picker->done();
    client.settle();
  }
  /// Points of the line, and markers.
  static std::pair<std::size_t, std::size_t> drawn(TrackPageViewController& page) {
    const auto& overlays = page.mapView().overlays();
    return {overlays.empty() ? 0 : overlays.at(0)->coordinates().size(), page.mapView().annotations().size()};
  }

  Machine phone;
  Client client{phone};
  VehicleViewController* pager = nullptr;
  LiveDetailViewController* live = nullptr;
  MapDetailViewController* map = nullptr;
  double lat = 50;
  std::vector<std::string> asked;
};

TEST_F(Maps, OpenAtTheLastPositionThatThePagerReceivedOfItsVehicle) {
  client.advance(20);
  const double received = lat;
  client.transport.answerOnce("/live", liveReply(7, 57, "10.0"));
  client.advance(15);
  show(liveTab);
  EXPECT_TRUE(live->mapView().isCovered());
  EXPECT_NEAR(live->mapView().centerCoordinate().latitude, received, 1e-6);
  EXPECT_NEAR(map->mapView().centerCoordinate().latitude, received, 1e-6);
  client.advance(15);
  EXPECT_FALSE(live->mapView().isCovered());
}

TEST_F(Maps, AMonthOfChoosingDaysDrawsEachAndKeepsTheLastWhileAnotherPageShows) {
  show(mapTab);
  EXPECT_EQ(drawn(*map), std::pair(10ul, 10ul));
  for (int day = 1; day < 30; ++day) {
    choose(day);
    const auto points = static_cast<std::size_t>(day);
    EXPECT_EQ(drawn(*map), std::pair(day == 1 ? 10ul : points, points));
    client.advance(60);
  }
  EXPECT_EQ(asked.size(), 30u);
  EXPECT_THAT(asked, Each(testing::MatchesRegex("/map\\?date=2026-03-[0-3][0-9]&vehid=2")));
  asked.clear();

  // On another page neither a chosen day nor a trip to the background reaches the map.
  show(aboutTab);
  choose(5);
  client.application.didEnterBackground();
  client.application.willEnterForeground();
  client.settle();
  EXPECT_EQ(drawn(*map), std::pair(29ul, 29ul));
  EXPECT_THAT(asked, IsEmpty());
  show(mapTab);
  EXPECT_THAT(asked, ElementsAre("/map?date=2026-03-29&vehid=2"));
}

}  // namespace
}  // namespace fleetor::test
