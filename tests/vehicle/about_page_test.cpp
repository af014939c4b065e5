#include <gmock/gmock.h>

#include <any>

#include "support/client.h"
#include "vehicle/about_detail_view_controller.h"
#include "vehicle/notifications.h"

namespace fleetor::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(AboutPage, AsksAtEachPollThatItSeesUntilTheDataIsThereAndKeepsIt) {
  Client client;
  client.start();
  const auto page = std::make_shared<AboutDetailViewController>(client.environment);
  Vehicle vehicle;
  vehicle.vehicleId = 7;
  page->setVehicle(vehicle);
  auto& table = page->itemsTableView();
  const auto poll = [&](const std::any& outcome = APIFailure{}) {
    client.center.postNotificationName(kFleetorNotificationLive, outcome);
    client.queues.runUntilIdle();
    return client.takeRequests();
  };
  client.application.window().setRootViewController(page);
  client.settle();
  client.takeRequests();

  EXPECT_EQ(table.numberOfRows(), 0);
  page->tabSelected();
  ASSERT_EQ(table.numberOfRows(), 1);
  EXPECT_EQ(table.heightForRow(0), 60.0);
  EXPECT_TRUE(dynamic_cast<ActivityIndicator&>(*table.cellForRow(0)->viewWithTag(123)).isAnimating());
  client.queues.runUntilIdle();
  EXPECT_THAT(client.takeRequests(), IsEmpty());

  client.transport.leaveOpen("/info");
  EXPECT_THAT(poll(), ElementsAre("GET /info?vehid=7"));
  EXPECT_THAT(poll(), IsEmpty());  // one at a time
  client.transport.answerOpen("/info", jsonReply(envelope(6, "")));
  client.queues.runUntilIdle();
  EXPECT_EQ(table.numberOfRows(), 0);

  client.application.window().setRootViewController(nullptr);
  EXPECT_THAT(poll(), IsEmpty());
  client.application.window().setRootViewController(page);
  auto other = std::make_shared<Live>();
  other->vehicles.vehicleId = 8;
  EXPECT_THAT(poll(std::shared_ptr<const Live>(other)), ElementsAre("GET /info?vehid=7"));
  EXPECT_EQ(table.numberOfRows(), 0) << "a spinner, although it is not the first request";
  client.transport.answerOpen("/info", infoReply());
  client.queues.runUntilIdle();
  EXPECT_THAT(Client::textsOf(table),
              ElementsAre("2026-11-01 | Technical service", "2026-09-15 | Oil change",
                          "150000 km | Distance service", "Jan Kowal | Driver",
                          "+48 600 100 200 | Driver phone", "2027-01-31 | Localizer expiration date"));
  EXPECT_EQ(table.heightForRow(5), 50.0);

  EXPECT_THAT(poll(), IsEmpty());
  page->clearTabSelected();
  page->tabSelected();
  EXPECT_EQ(table.numberOfRows(), 6);
}

}  // namespace
}  // namespace fleetor::test
