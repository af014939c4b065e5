#include <gmock/gmock.h>

#include "shell/account_view_controller.h"
#include "shell/menu_view_controller.h"
#include "support/client.h"
#include "vehicle/about_detail_view_controller.h"
#include "vehicle/route_detail_view_controller.h"

namespace fleetor::test {
namespace {

using testing::ElementsAre;

TEST(EveryPage, AUserReadsAVehiclesTripsAndDataThenTheAccountAndSignsOut) {
  Client client;
  client.start();
  auto& pager = *client.open(1);
  const auto tap = [&](int tab) {
    pager.pagesTabBar().tap(tab);
    client.settle();
  };
  client.takeRequests();

  // Yesterday's trips, and again after a look at something else than this program.
  tap(3);
  auto& trips = client.find<RouteDetailViewController>()->itemsTableView();
  EXPECT_EQ(trips.numberOfRows(), 2);
  client.tapRightButtonOf(pager);
  const auto picker = client.application.window().datePicker();
  picker->setSelectedDate(client.queues.now() - std::chrono::hours(24));
  picker->done();
  client.settle();
  EXPECT_EQ(trips.numberOfRows(), 2);
  client.application.didEnterBackground();
  EXPECT_EQ(trips.numberOfRows(), 0);
  client.settle();
  client.application.willEnterForeground();
  client.queues.runUntilIdle();
  EXPECT_EQ(trips.numberOfRows(), 2);
  EXPECT_THAT(client.takeRequests(),
              ElementsAre("GET /route?date=2026-03-10&vehid=2", "GET /route?date=2026-03-09&vehid=2",
                          "GET /live?vehid=2", "GET /route?date=2026-03-09&vehid=2"));

  // The vehicle's data comes with the poll after the page was opened.
  tap(4);
  auto& data = client.find<AboutDetailViewController>()->itemsTableView();
  EXPECT_EQ(client.textOfRow(data, 0), "...");
  client.advance(15);
  EXPECT_EQ(client.textOfRow(data, 3), "Jan Kowal | Driver");
  EXPECT_EQ(client.transport.count("/info"), 1u);

  // Back to the list, over the menu to the account, and out.
  client.tapLeftButtonOf(pager);
  auto& container = *client.root<MainViewController>();
  const auto choose = [&](const char* entry) {
    container.endPan(200);
    client.settle();
    dynamic_cast<Button&>(*container.rearViewController()->findOutlet(entry)).tap();
    client.settle();
  };
  choose("accountButton");
  Viewport account(client.find<AccountViewController>()->infoTableView());
  client.settle();
  EXPECT_EQ(client.textOfRow(client.find<AccountViewController>()->infoTableView(), 1),
            "Nowak Transport | Company");
  choose("logoutButton");
  client.application.window().alerts().at(0)->tapButton(1);
  EXPECT_TRUE(client.root<LoginViewController>());
  EXPECT_FALSE(API::isLogged());
  EXPECT_THAT(client.takeMessages(), testing::IsEmpty());
}

}  // namespace
}  // namespace fleetor::test
