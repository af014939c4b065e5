#include "board/board_view_controller.h"
#include "shell/account_view_controller.h"
#include "support/client.h"
#include "vehicle/live_detail_view_controller.h"

namespace fleetor::test {
namespace {

class ChangeOver : public testing::Test {
 protected:
  ChangeOver() { client.start(); }

  void become(Idiom idiom) {
    machine.becomes(idiom);
    client.application.window().setSize({machine.device.width, machine.device.height});
    client.delegate.changeOver();
    client.queues.runUntilIdle();
  }

  VehicleViewController& pager() { return *client.find<VehicleViewController>(); }
  int page() { return pager().swipeTabBarController()->selectedIndex(); }

  Machine machine;
  Client client{machine};
};

TEST_F(ChangeOver, KeepsTheVehicleItsPageAndItsDayAndAsksForThemOnce) {
  constexpr int map = 2;
  client.open(1);
  pager().pagesTabBar().tap(map);
  client.settle();
  client.tap(outletOf<Button>(*pager().swipeTabBarController()->viewControllers()[map], "previousDayButton"));
  client.takeRequests();
  const std::string day = client.queues.day(pager().date());
  const std::string track = "GET /map?date=" + day + "&vehid=2";

  become(Idiom::pad);
  EXPECT_EQ(pager().vehicle().vehicleId, 2);
  EXPECT_EQ(page(), map);
  EXPECT_EQ(client.queues.day(pager().date()), day);
  EXPECT_THAT(client.takeRequests(), UnorderedElementsAre(track, "GET /live?vehid=2"));
  EXPECT_EQ(client.root<MainViewController>()->frontViewController()->view().frame(),
            (Rect{300, 0, 724, 768}));
  EXPECT_EQ(client.vehicles().indexPathForSelectedRow(), (IndexPath{0, 1}));
  client.advance(15.5);
  EXPECT_THAT(client.takeRequests(), ElementsAre("GET /live?vehid=2")) << "one pager polls";

  become(Idiom::phone);
  EXPECT_EQ(page(), map);
  EXPECT_THAT(client.takeRequests(), UnorderedElementsAre(track, "GET /live?vehid=2"));
  client.tapLeftButtonOf(pager());
  EXPECT_FALSE(client.find<VehicleViewController>());
  EXPECT_EQ(client.vehicles().numberOfRows(), 21);
  EXPECT_THAT(client.takeRequests(), IsEmpty());
}

TEST_F(ChangeOver, KeepsTheTrail) {
  client.open(1);
  pager().pagesTabBar().tap(1);
  client.transport.answerOnce("/live", liveReply(2, 57, "50.07"));
  client.advance(15);
  client.transport.answer("/live", liveReply(2, 57, "50.08"));
  client.advance(15);
  become(Idiom::pad);
  const auto& live = *client.find<LiveDetailViewController>();
  EXPECT_EQ(live.items().size(), 2u);
  EXPECT_TRUE(live.polyline());
  EXPECT_EQ(client.find<InfoDetailViewController>()->itemsTableView().numberOfRows(), 10);
}

TEST_F(ChangeOver, LeavesTheListThePageThatItWaitsFor) {
  client.transport.leaveOpen("/vehicles");
  client.vehicles().cellForRow(0);
  client.queues.runUntilIdle();
  become(Idiom::pad);
  become(Idiom::phone);
  EXPECT_EQ(client.textOfRow(client.vehicles(), 0), "...");
  EXPECT_EQ(client.takeRequests().size(), 1u);
  EXPECT_TRUE(client.transport.answerOpen("/vehicles",
                                          jsonReply(envelope(1, R"("vehicles":[)" + vehicleJSON(7) + "]"))));
  client.queues.runUntilIdle();
  EXPECT_THAT(Client::textsOf(client.vehicles()), ElementsAre("Vehicle 7\nKR 7"));
  EXPECT_THAT(client.takeRequests(), IsEmpty());
}

TEST_F(ChangeOver, KeepsTheFleetOpen) {
  client.tap(client.menuEntry("fleetButton"));
  for (const Idiom idiom : {Idiom::pad, Idiom::phone}) {
    become(idiom);
    client.takeRequests();
    EXPECT_TRUE(client.find<BoardViewController>());
    client.advance(15);
    EXPECT_THAT(client.takeRequests(), Contains("GET /live?vehid=24"));
  }
}

TEST_F(ChangeOver, ShowsThePageOfTheMenuAsASheetAndLeavesTheSignIn) {
  client.tap(client.menuEntry("accountButton"));
  become(Idiom::pad);
  client.settle();
  ASSERT_TRUE(client.find<AccountViewController>());
  EXPECT_TRUE(client.root<MainViewController>()->presentedViewController());

  API::logoutUser();
  client.settle();
  auto& name = client.root<LoginViewController>()->loginTextField();
  name.setText("anna");
  become(Idiom::phone);
  EXPECT_EQ(&client.root<LoginViewController>()->loginTextField(), &name);
}

}  // namespace
}  // namespace fleetor::test
