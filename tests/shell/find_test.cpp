#include "shell/find_view_controller.h"

#include "shell/found_vehicle_cell.h"
#include "support/client.h"

namespace fleetor::test {
namespace {

class Find : public testing::TestWithParam<Idiom> {
 protected:
  Find() : machine(GetParam()), client(machine) {}

  /// Looks at the list, whose first page comes with that, and opens the search.
  FindViewController& open() {
    serveFleet(client.transport, 20, 20);
    client.start();
    eyes.emplace(client.vehicles());
    client.settle();
    return reopen();
  }
  FindViewController& reopen() {
    client.tap(outletOf<BarButtonItem>(*client.find<VehiclesTableViewController>(), "findButton"));
    return *client.find<FindViewController>();
  }
  void type(const char* text) {
    client.find<FindViewController>()->searchTextField().setText(text);
    client.settle();
  }
  std::vector<std::string> rows() {
    return Client::textsOf(client.find<FindViewController>()->foundTableView());
  }
  void chooseOrder(int entry) {
    client.tapRightButtonOf(*client.find<FindViewController>());
    orderBefore = client.application.window().actionSheet()->content().message;
    client.application.window().actionSheet()->tapEntry(entry);
    client.settle();
  }

  Machine machine;
  Client client;
  std::optional<Viewport> eyes;
  std::string orderBefore;  ///< as the sheet showed it
};

TEST_P(Find, OpensWhatIsFoundAsTheListDoesAndCloses) {
  FindViewController& find = open();
  EXPECT_TRUE(find.searchTextField().isFirstResponder());
  type("hicle 1 kr");
  EXPECT_THAT(rows(), ElementsAre("Vehicle 1\nKR 1", "Vehicle 10\nKR 10", "Vehicle 11\nKR 11",
                                  "Vehicle 13\nKR 13", "Vehicle 14\nKR 14", "Vehicle 16\nKR 16",
                                  "Vehicle 17\nKR 17", "Vehicle 19\nKR 19"));
  EXPECT_EQ(find.foundLabel().text(), "Vehicles found: 8");
  EXPECT_THAT(find.foundTableView().cellForRow(0)->textLabel().marks(),
              ElementsAre(TextRange{2, 7}, TextRange{8, 9}));
  find.searchTextField().pressReturn();
  EXPECT_FALSE(find.searchTextField().isFirstResponder()) << "several: the rows are next";
  type("kr13");
  client.takeRequests();
  find.searchTextField().pressReturn();
  client.settle();
  EXPECT_FALSE(client.find<FindViewController>());
  ASSERT_TRUE(client.find<VehicleViewController>());
  EXPECT_EQ(client.find<VehicleViewController>()->vehicle().name, "Vehicle 13");
  EXPECT_FALSE(client.application.window().keyboard().visible());
  EXPECT_THAT(client.takeRequests(), ElementsAre("GET /live?vehid=13")) << "it appeared once";
  if (machine.device.isPad()) {
    EXPECT_EQ(client.vehicles().indexPathForSelectedRow(), (IndexPath{0, 12}));
  }
}

TEST_P(Find, SaysWhyThereIsNothing) {
  FindViewController& find = open();
  type("xyz");
  EXPECT_THAT(rows(), IsEmpty());
  EXPECT_EQ(find.emptyLabel().text(), "No vehicle matches “xyz”");
  EXPECT_EQ(find.foundLabel().text(), "");
  find.clearButton().tap();
  EXPECT_EQ(find.emptyLabel().text(), "");
  EXPECT_EQ(find.foundLabel().text(), "Vehicles found: 20");
  EXPECT_FALSE(find.clearButton().enabled());
}

TEST_P(Find, KeepsItsOrderUntilTheSessionEnds) {
  open();
  chooseOrder(2);
  chooseOrder(2);
  EXPECT_EQ(orderBefore, "By registration");
  type("vehicle 2");
  EXPECT_THAT(rows(), ElementsAre("Vehicle 2\nKR 2", "Vehicle 20\nKR 20", "Vehicle 12"));
  EXPECT_TRUE(client.application.window().goBack());
  client.settle();
  reopen();
  type("vehicle 2");
  EXPECT_THAT(rows(), ElementsAre("Vehicle 2\nKR 2", "Vehicle 20\nKR 20", "Vehicle 12"));

  API::loginUserWithToken("another");
  eyes.emplace(client.vehicles());
  client.settle();
  reopen();
  type("vehicle 2");
  EXPECT_THAT(rows(), ElementsAre("Vehicle 2\nKR 2", "Vehicle 12", "Vehicle 20\nKR 20"));
}

TEST_P(Find, ShowsPinnedVehiclesFirstAndPinsThem) {
  FindViewController& find = open();
  const auto pinOf = [&](int row) -> Button& {
    return dynamic_cast<FoundVehicleCell&>(*find.foundTableView().cellForRow(row)).pinButton();
  };
  type("vehicle 2");
  EXPECT_THAT(rows(), ElementsAre("Vehicle 2\nKR 2", "Vehicle 12", "Vehicle 20\nKR 20"));
  pinOf(2).tap();
  pinOf(2).tap();
  EXPECT_THAT(rows(), ElementsAre("Vehicle 12", "Vehicle 20\nKR 20", "Vehicle 2\nKR 2"));
  EXPECT_EQ(find.foundTableView().cellForRow(0)->accessibleName(), "Vehicle 12, Pinned");
  find.foundTableView().tap(0);
  client.settle();
  auto& pager = *client.find<VehicleViewController>();
  auto& pin = *pager.navigationItem().rightBarButtonItems().at(1);
  EXPECT_EQ(pin.image() + " " + pin.accessibleName(), "NavPinned Unpin");
  pin.tap();
  EXPECT_EQ(pin.image() + " " + pin.accessibleName(), "NavPin Pin");
  if (!machine.device.isPad()) client.tapLeftButtonOf(pager);
  reopen();
  type("vehicle 2");
  EXPECT_THAT(rows(), ElementsAre("Vehicle 20\nKR 20", "Vehicle 2\nKR 2", "Vehicle 12"));
}

TEST(Pins, AreKeptForEachAccountOverSignOutAndRestart) {
  Machine machine;
  {
    Client first(machine);
    first.start("");
    first.transport.answer("/token", tokenReply("t"));
    first.signIn("anna", "secret");
    const auto pin = [&](int row) {
      first.open(row)->navigationItem().rightBarButtonItems().at(1)->tap();
      API::logoutUser();
      first.settle();
    };
    pin(4);
    first.signIn("boris", "secret");
    pin(5);
    first.signIn("anna", "secret");
  }
  Client second(machine);
  second.start();
  EXPECT_EQ(second.open(4)->navigationItem().rightBarButtonItems().at(1)->image(), "NavPinned");
  second.tapLeftButtonOf(*second.find<VehicleViewController>());
  EXPECT_EQ(second.open(5)->navigationItem().rightBarButtonItems().at(1)->image(), "NavPin");
}

/// A search over a list that has its first page, of a fleet of that size, or still waits for it.
class FindFetching : public Find {
 protected:
  FindViewController& openOver(std::optional<int> total) {
    client.transport.leaveOpen("/vehicles");
    client.start();
    eyes.emplace(client.vehicles());
    client.settle();
    if (total) answer(*total, *total);
    client.takeRequests();
    return reopen();
  }
  void answer(int total, int delivered) {
    client.transport.answerOpen("/vehicles", vehiclesPage(client.transport.last(), total, delivered));
    client.queues.runUntilIdle();
  }
  std::string progress() {
    auto* const find = client.find<FindViewController>();
    return find->progressLabel().text() + "|" + find->progressButton().title();
  }
};

TEST_P(FindFetching, FetchesWhatIsMissingOnePageAfterTheOtherAndLeavesTheListAlone) {
  FindViewController& find = openOver(45);
  EXPECT_EQ(progress(), "20 of 45 vehicles|Stop");
  type("45");
  EXPECT_EQ(find.emptyLabel().text(), "") << "not yet";
  answer(45, 45);
  EXPECT_EQ(progress(), "40 of 45 vehicles|Stop");
  EXPECT_EQ(client.transport.openCount(), 1u);
  answer(45, 45);
  EXPECT_EQ(progress(), "|");
  EXPECT_FALSE(find.progressButton().enabled());
  EXPECT_THAT(rows(), ElementsAre("Vehicle 45"));
  EXPECT_THAT(client.takeRequests(),
              ElementsAre("GET /vehicles?limit=20&offset=20", "GET /vehicles?limit=20&offset=40"));
  EXPECT_EQ(client.vehicles().numberOfRows(), 21);

  client.tapLeftButtonOf(find);
  reopen();
  EXPECT_EQ(progress(), "|");
  EXPECT_THAT(client.takeRequests(), IsEmpty()) << "it holds them all";
}

TEST_P(FindFetching, NeverRequestsBesideTheListNorTheListBesideIt) {
  openOver(65);
  eyes->scrollToEnd();
  client.settle();
  EXPECT_EQ(client.transport.openCount(), 1u) << "the list waits";
  answer(65, 65);
  EXPECT_EQ(client.transport.openCount(), 1u);
  EXPECT_EQ(numberOf(client.transport.last().url, "offset"), 20) << "now it is the list's turn";
  EXPECT_EQ(progress(), "40 of 65 vehicles|Stop");
  answer(65, 65);
  EXPECT_EQ(client.vehicles().numberOfRows(), 41);
  EXPECT_EQ(client.transport.openCount(), 1u);
  EXPECT_EQ(numberOf(client.transport.last().url, "offset"), 40) << "and the search's again";
}

TEST_P(FindFetching, RequestsNothingWhileItIsStoppedOrHidden) {
  FindViewController& find = openOver(65);
  find.progressButton().tap();
  EXPECT_EQ(progress(), "20 of 65 vehicles|Continue");
  answer(65, 65);
  EXPECT_EQ(progress(), "40 of 65 vehicles|Continue");
  EXPECT_EQ(client.transport.openCount(), 0u);
  type("xyz");
  EXPECT_EQ(find.emptyLabel().text(), "No vehicle matches “xyz”") << "as far as it was searched";
  client.application.didEnterBackground();
  find.progressButton().tap();
  EXPECT_EQ(client.transport.openCount(), 0u) << "in the background";
  client.application.willEnterForeground();
  client.settle();
  EXPECT_EQ(client.transport.openCount(), 1u);
  client.tapLeftButtonOf(find);
  answer(65, 60);
  EXPECT_EQ(client.transport.openCount(), 0u) << "closed";
  reopen();
  EXPECT_EQ(progress(), "60 of 65 vehicles|Stop");
}

TEST_P(FindFetching, SaysThatItFailedAndTriesAgain) {
  FindViewController& find = openOver(45);
  client.transport.answerOpen("/vehicles", reply(500, "text/plain", ""));
  client.settle();
  EXPECT_EQ(progress(), "The list of vehicles is incomplete|Try again");
  EXPECT_EQ(client.transport.openCount(), 0u);
  client.tap(find.progressButton());
  answer(45, 20);
  client.advance(600);
  EXPECT_EQ(progress(), "The list of vehicles is incomplete|Try again") << "a page without vehicles";
  EXPECT_EQ(client.transport.openCount(), 0u);
}

TEST_P(FindFetching, HelpsOutAListThatHasFailed) {
  FindViewController& find = openOver({});
  EXPECT_EQ(progress(), "Loading|Stop");
  client.transport.answerOpen("/vehicles", reply(500, "text/plain", ""));
  client.settle();
  EXPECT_EQ(progress(), "The list of vehicles is incomplete|Try again");
  EXPECT_EQ(find.emptyLabel().text(), "");
  client.tap(find.progressButton());
  answer(7, 7);
  EXPECT_THAT(rows(), SizeIs(7));
  EXPECT_EQ(progress(), "|");
}

TEST_P(FindFetching, SaysThatAnAccountIsEmpty) {
  FindViewController& find = openOver({});
  answer(0, 0);
  EXPECT_EQ(find.emptyLabel().text(), "No vehicles");
  EXPECT_EQ(progress(), "|");
}

INSTANTIATE_TEST_SUITE_P(OnA, FindFetching, testing::Values(Idiom::phone, Idiom::pad));

INSTANTIATE_TEST_SUITE_P(OnA, Find, testing::Values(Idiom::phone, Idiom::pad));

}  // namespace
}  // namespace fleetor::test
