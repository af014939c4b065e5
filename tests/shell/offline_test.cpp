#include <gmock/gmock.h>

#include <filesystem>

#include "support/client.h"
#include "support/scratch_folder.h"

namespace fleetor::test {
namespace {

class Offline : public testing::Test {
 protected:
  Offline() {
    machine.keptFleet = folder.path() / "last-known";
    Client online(machine);
    online.start();
    online.open(1);
    online.advance(30);
    machine.morning += std::chrono::hours(3);
  }

  static HttpReply noNetwork() { return failedReply(url_error::notConnectedToInternet); }
  static std::string lineOf(Client& client) {
    return dynamic_cast<Label&>(*list(client).findOutlet("offlineLabel")).text();
  }
  static TableView& tableOf(Client& client) {
    return dynamic_cast<TableView&>(*list(client).findOutlet("offlineTableView"));
  }
  static std::string readingIn(Client& client, int row) {
    return dynamic_cast<VehicleTableViewCell&>(*tableOf(client).cellForRow(row)).readingLabel().text();
  }
  static VehiclesTableViewController& list(Client& client) {
    return *client.find<VehiclesTableViewController>();
  }

  ScratchFolder folder;
  Machine machine;
};

TEST_F(Offline, ShowsWhatIsKnownWithItsAgeAndOpensIt) {
  const std::string file = machine.keptFleet;
  for (const Idiom idiom : {Idiom::phone, Idiom::pad}) {
    machine.becomes(idiom);
    machine.keptFleet = file + (idiom == Idiom::pad ? "-pad" : "-phone");
    std::filesystem::copy_file(file, machine.keptFleet);
    Client client(machine);
    client.transport.answer("/vehicles", noNetwork());
    client.transport.answer("/live", noNetwork());
    client.start();
    const Viewport eyes(client.vehicles());
    client.settle();
    EXPECT_EQ(lineOf(client), "Offline · as of 08:00");
    EXPECT_EQ(tableOf(client).numberOfRows(), 20);
    EXPECT_EQ(client.textOfRow(tableOf(client), 1), "Vehicle 2\nKR 2");
    EXPECT_EQ(readingIn(client, 0), "");
    EXPECT_EQ(readingIn(client, 1), "57km/h · 2 h");
    EXPECT_EQ(client.vehicles().numberOfRows(), 0);
    EXPECT_EQ(list(client).failureLabel().text(), "The list of vehicles is incomplete");

    client.takeRequests();
    tableOf(client).tap(1);
    client.settle();
    EXPECT_EQ(client.find<VehicleViewController>()->vehicle().name, "Vehicle 2");
    EXPECT_THAT(client.takeRequests(), ElementsAre("GET /live?vehid=2"));

    const auto* const pager = client.find<VehicleViewController>();
    const auto page = pager->swipeTabBarController()->viewControllers()[0];
    const auto text = [&](const char* label) {
      return dynamic_cast<Label&>(*page->findOutlet(label)).text();
    };
    auto& rows = dynamic_cast<TableView&>(*page->findOutlet("itemsTableView"));
    EXPECT_EQ(text("speedLabel"), "57");
    EXPECT_EQ(text("noReportLabel"), "Offline · as of 08:00 · Long Street 5");
    EXPECT_EQ(text("ageLabel"), "");
    const auto live = pager->swipeTabBarController()->viewControllers()[1];
    EXPECT_EQ(dynamic_cast<Label&>(*live->findOutlet("noteLabel")).text(),
              "Waiting for the next position\nOffline · as of 08:00 · 57km/h · Long Street 5");
    EXPECT_EQ(Client::textsOf(rows), std::vector<std::string>{"..."}) << "none of these is fresh";
    client.transport.answer("/live", liveReply(2, 12));
    client.advance(15);
    EXPECT_EQ(text("speedLabel"), "12");
    EXPECT_EQ(text("noReportLabel"), "");
    EXPECT_EQ(text("ageLabel"), "now");
    if (idiom == Idiom::phone) client.tapLeftButtonOf(*client.find<VehicleViewController>());
    EXPECT_EQ(readingIn(client, 1), "12km/h · now");
    client.transport.answer("/live", noNetwork());
    tableOf(client).tap(1);
    client.settle();
    const auto again = client.find<VehicleViewController>()->swipeTabBarController()->viewControllers()[0];
    EXPECT_EQ(dynamic_cast<Label&>(*again->findOutlet("noReportLabel")).text(), "");
  }
}

TEST_F(Offline, ReplacesHoursByTheDayAfterADay) {
  machine.morning += std::chrono::hours(24);
  Client client(machine);
  client.transport.answer("/vehicles", noNetwork());
  client.start();
  const Viewport eyes(client.vehicles());
  client.settle();
  EXPECT_EQ(lineOf(client), "Offline · as of 10 Mar 08:00");
  EXPECT_EQ(readingIn(client, 1), "57km/h · 10 Mar");
}

TEST_F(Offline, WaitsForTheAnswerAndGivesWayToIt) {
  Client client(machine);
  client.transport.leaveOpen("/vehicles");
  client.start();
  const Viewport eyes(client.vehicles());
  client.advance(2.9);
  EXPECT_EQ(lineOf(client), "");
  client.advance(0.2);
  EXPECT_EQ(tableOf(client).numberOfRows(), 20);
  EXPECT_EQ(Client::textsOf(client.vehicles()), std::vector<std::string>{"..."});
  client.transport.answerOpen("/vehicles", vehiclesPage(client.transport.last(), 45, 45));
  client.settle();
  EXPECT_EQ(lineOf(client), "");
  EXPECT_EQ(tableOf(client).numberOfRows(), 0);
  EXPECT_EQ(client.vehicles().numberOfRows(), 21);
  client.advance(70);
  EXPECT_EQ(client.queues.waiting(), 0u) << "no age is kept up to date";
}

TEST_F(Offline, IsNotShownToAServiceThatAnswers) {
  for (const auto& answer : {reply(500, "text/plain", ""), jsonReply(envelope(0, R"("vehicles":[])"))}) {
    Client client(machine);
    client.transport.answer("/vehicles", answer);
    client.start();
    const Viewport eyes(client.vehicles());
    client.advance(5);
    EXPECT_EQ(lineOf(client), "");
  }
}

TEST_F(Offline, StaysWhenTheDeviceBecomesOfAnotherClass) {
  Client client(machine);
  client.transport.answer("/vehicles", noNetwork());
  client.start();
  const Viewport eyes(client.vehicles());
  client.settle();
  machine.becomes(Idiom::pad);
  client.delegate.changeOver();
  client.settle();
  EXPECT_EQ(lineOf(client), "Offline · as of 08:00");
  EXPECT_EQ(tableOf(client).numberOfRows(), 20);
}

TEST_F(Offline, IsForgottenWithTheSignInAndByAFirstStart) {
  const auto endings = std::vector<std::function<void(Client&)>>{
      [](Client& client) {
        client.start();
        API::logoutUser();
      },
      [](Client& client) {
        client.transport.answer("/vehicles", reply(401, "text/plain", ""));
        client.start();
        client.vehicles().cellForRow(0);
      },
      [](Client& client) {
        client.start();
        API::loginUserWithToken("another user's");
      },
      [](Client& client) {
        client.machine.standardSettings.removeObject("FirstRun");
        client.application.launch();
      },
  };
  for (std::size_t i = 0; i < endings.size(); ++i) {
    SCOPED_TRACE(i);
    {
      Client client(machine);
      client.start();
      const Viewport eyes(client.vehicles());
      client.advance(30);
      ASSERT_TRUE(std::filesystem::exists(machine.keptFleet));
    }
    Client client(machine);
    client.transport.leaveOpen("/vehicles");
    endings[i](client);
    client.advance(5);
    EXPECT_FALSE(std::filesystem::exists(machine.keptFleet));
    EXPECT_LE(machine.keyStore.items().size(), 1u) << "no key beside the sign-in";
  }
}

}  // namespace
}  // namespace fleetor::test
