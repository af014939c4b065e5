#include <set>

#include "board/board_view_controller.h"
#include "support/client.h"

namespace fleetor::test {
namespace {

/// A signed-in phone whose service has 45 vehicles, of which each drives in a street of its own.
class Board : public testing::Test {
 protected:
  Board() {
    client.start();
    client.transport.answer("/live", [this](const HttpRequest& request) {
      const int id = numberOf(request.url, "vehid");
      return std::optional(fails == id ? jsonReply("{}", 500)
                                       : liveReply(id, speed, "50." + std::to_string(100 + id + moved)));
    });
  }

  BoardViewController& open() {
    client.tap(client.menuEntry("fleetButton"));
    return *client.find<BoardViewController>();
  }
  BoardCell& card(int row) {
    auto& table = client.find<BoardViewController>()->boardTableView();
    return dynamic_cast<BoardCell&>(*table.cellForRow(row));
  }

  Machine phone;
  Client client{phone};
  int fails = 0;
  int speed = 57;
  int moved = 0;
};

TEST_F(Board, ShowsTheFirst24VehiclesOfAListThatItFetchesItself) {
  client.takeRequests();
  auto& board = open();
  EXPECT_LT(board.mapView().annotations().size(), 4u);
  client.advance(14);
  auto requests = client.takeRequests();
  EXPECT_EQ(requests[0], "GET /vehicles?limit=20&offset=0");
  EXPECT_THAT(requests, Contains("GET /vehicles?limit=20&offset=20"));
  EXPECT_THAT(requests, Contains("GET /live?vehid=24"));
  EXPECT_EQ(board.boardTableView().numberOfRows(), 24);
  EXPECT_EQ(board.mapView().annotations().size(), 24u);
  EXPECT_FALSE(board.mapView().isCovered());
  EXPECT_EQ(card(23).accessibleName(),
            "Vehicle 24, Driving, 57 km/h, Long Street 5, Age of the readings: now");

  // No request and no timer while another screen is shown; back at once with what is remembered.
  board.boardTableView().tap(4);
  client.settle();
  EXPECT_EQ(client.find<VehicleViewController>()->vehicle().name, "Vehicle 5");
  for (int i = 0; i < 2; ++i)  // pinned, and not any more: both concern the board
    client.tap(*client.find<VehicleViewController>()->navigationItem().rightBarButtonItems().at(1));
  client.takeRequests();
  client.advance(40);
  EXPECT_THAT(client.takeRequests(), Each("GET /live?vehid=5"));
  client.tapLeftButtonOf(*client.find<VehicleViewController>());
  EXPECT_THAT(card(4).ageLabel().text(), AnyOf("now", "{} s"));
  client.center.postNotificationName(UIApplicationDidEnterBackgroundNotification);
  client.advance(60);
  client.takeRequests();
  client.advance(60);
  EXPECT_THAT(client.takeRequests(), IsEmpty());
  client.center.postNotificationName(UIApplicationWillEnterForegroundNotification);
  client.advance(1);
  EXPECT_THAT(client.takeRequests(), Contains(StartsWith("GET /live")));
}

TEST_F(Board, KeepsThePaceWhenItIsOpenedAnew) {
  open();
  client.advance(5);
  client.takeRequests();
  for (int i = 0; i < 10; ++i) {
    client.menuEntry("fleetButton").tap();
    client.advance(0.1);
  }
  EXPECT_LE(client.takeRequests().size(), 3u);
  client.advance(1);
  EXPECT_THAT(client.takeRequests(), Contains(StartsWith("GET /live")));
}

TEST_F(Board, ShowsSeveralRecordsTogetherAndTheFirstOfAVehicleAtOnce) {
  auto& board = open();
  std::set<double> frames;
  const Connection changed =
      board.mapView().annotationsChanged.connect([&] { frames.insert(client.queues.uptime().count()); });
  client.advance(14);
  EXPECT_GE(frames.size(), 20u);
  frames.clear();
  client.advance(30);
  EXPECT_GE(frames.size(), 10u);
  EXPECT_LE(frames.size(), 16u);
}

TEST_F(Board, SaysHowOldTheRecordOfAFailingVehicleIs) {
  open();
  client.advance(14);
  fails = 2;
  client.takeMessages();
  client.advance(120);
  EXPECT_EQ(card(1).motionLabel().text(), "") << "not known any more";
  EXPECT_THAT(card(1).ageLabel().text(), HasSubstr("min"));
  EXPECT_EQ(card(0).motionLabel().text(), "Driving");
  EXPECT_THAT(client.takeMessages(), IsEmpty()) << "the card says it";
  fails = 0;
  client.advance(300);
  EXPECT_EQ(card(1).motionLabel().text(), "Driving");
}

TEST_F(Board, FollowsOneAndReportsWhenItStops) {
  auto& board = open();
  board.mapView().moveCamera([](MapCamera& camera) { camera.setViewport(390, 400); });
  client.advance(14);
  const double zoom = board.mapView().camera().destination().zoom;
  card(2).followButton().tap();
  EXPECT_TRUE(card(2).followButton().selected());
  EXPECT_GT(board.mapView().camera().destination().zoom, zoom);
  moved = 300;
  speed = 0;
  const std::string before = board.newsLabel().text();
  client.advance(20);
  board.mapView().advance(10);
  EXPECT_NEAR(board.mapView().centerCoordinate().latitude, 50.403, 1e-6);
  EXPECT_EQ(board.newsLabel().text(), "Vehicle 3, Standing, 0 km/h, Long Street 5, Age of the readings: now");
  EXPECT_NE(before, board.newsLabel().text());
  EXPECT_EQ(board.mapView().overlays().size(), 24u) << "each has driven";

  outletOf<Button>(board, "wholeTrackButton").tap();
  EXPECT_FALSE(card(2).followButton().selected());

  // From the callout to the vehicle; the callout stays with the vehicle that moves.
  EXPECT_FALSE(board.openVehicleButton().enabled());
  board.mapView().selectAnnotation(board.mapView().annotations()[6]);
  moved = 310;
  client.advance(20);
  client.tap(board.openVehicleButton());
  EXPECT_EQ(client.find<VehicleViewController>()->vehicle().name, "Vehicle 7");
}

TEST_F(Board, OffersToTryAgainAndSignsOutWhenTheSessionHasExpired) {
  client.transport.answer("/vehicles", jsonReply("{}", 500));
  auto& board = open();
  client.advance(5);
  EXPECT_EQ(board.failureLabel().text(), "The list of vehicles is incomplete");
  serveFleet(client.transport, 0, 0);
  client.tap(board.reloadButton());
  EXPECT_EQ(board.failureLabel().text(), "");
  EXPECT_EQ(board.noteLabel().text(), "No vehicles");

  serveFleet(client.transport, 45, 45);
  open();
  client.transport.answer("/live", jsonReply("{}", 401));
  client.advance(20);
  EXPECT_TRUE(client.root<LoginViewController>());
  client.takeRequests();
  client.advance(60);
  EXPECT_THAT(client.takeRequests(), IsEmpty());

  // Whoever signs in next finds nothing of that.
  client.transport.answer("/token", tokenReply("next"));
  client.transport.leaveOpen("/live");
  client.signIn("anna", "secret");
  client.takeRequests();
  open();
  EXPECT_EQ(client.takeRequests().at(0), "GET /vehicles?limit=20&offset=0");
  EXPECT_EQ(card(0).motionLabel().text(), "Loading");
}

TEST(PinnedBoard, HasThePinnedVehiclesAndThoseThatTheAccountStillHas) {
  Machine phone;
  phone.standardSettings.setObject(Settings::Texts{{"", "30 3 99"}}, "Pins");
  Client client(phone);
  client.start();
  client.transport.answer("/live", [](const HttpRequest& request) {
    const int id = numberOf(request.url, "vehid");
    return std::optional(id == 99 ? jsonReply("{}", 404) : liveReply(id, 0));
  });
  client.menuEntry("fleetButton").tap();
  client.advance(20);
  EXPECT_THAT(Client::textsOf(client.find<BoardViewController>()->boardTableView()),
              ElementsAre(StartsWith("Vehicle 30 |"), StartsWith("Vehicle 3 |")));
}

TEST(PinnedBoard, EndsItsWaitWhenNothingComes) {
  Machine phone;
  phone.standardSettings.setObject(Settings::Texts{{"", "30"}}, "Pins");
  Client client(phone);
  client.start();
  client.transport.answer("/vehicles", jsonReply("{}", 500));
  client.transport.answer("/live", jsonReply("{}", 500));
  client.menuEntry("fleetButton").tap();
  client.advance(5);
  const auto& board = *client.find<BoardViewController>();
  EXPECT_EQ(outletOf<const Label>(board, "noteLabel").text(), "Nothing received yet");
  EXPECT_FALSE(outletOf<const ActivityIndicator>(board, "loadingIndicator").isAnimating());
}

TEST(TabletBoard, StandsBesideTheListAndOpensVehiclesOverItself) {
  Machine tablet(Idiom::pad);
  Client client(tablet);
  client.start();
  const Viewport eyes(client.vehicles());
  client.settle();
  client.tap(outletOf<Button>(*client.find<VehiclesTableViewController>(), "fleetButton"));
  const auto& container = *client.root<MainViewController>();
  EXPECT_EQ(container.frontViewController()->view().frame(), (Rect{300, 0, 724, 768}));
  client.find<BoardViewController>()->boardTableView().tap(2);
  client.settle();
  EXPECT_EQ(client.find<VehicleViewController>()->vehicle().name, "Vehicle 3");
  const auto& list = client.vehicles();
  EXPECT_EQ(list.indexPathForSelectedRow()->row, 2);
  EXPECT_TRUE(container.frontViewController()->handleBack()) << "back to the board";
  client.settle();
  EXPECT_FALSE(client.find<VehicleViewController>());
  EXPECT_FALSE(list.indexPathForSelectedRow());
  client.open(5);
  EXPECT_FALSE(client.find<BoardViewController>());
}

}  // namespace
}  // namespace fleetor::test
