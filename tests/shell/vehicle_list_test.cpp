#include "support/client.h"

namespace fleetor::test {
namespace {

class VehicleList : public testing::Test {
 protected:
  VehicleList() {
    client.transport.leaveOpen("/vehicles");
    client.start();
    table = &client.vehicles();
  }

  HttpReply page(int total, int delivered) { return vehiclesPage(client.transport.last(), total, delivered); }
  void answer(const HttpReply& with) {
    client.transport.answerOpen("/vehicles", with);
    client.queues.runUntilIdle();
  }

  Client client;
  TableView* table = nullptr;
};

TEST_F(VehicleList, AsksForAPageOnceHoweverOftenTheLoadingRowIsDrawn) {
  EXPECT_EQ(table->numberOfRows(), 1);
  for (int i = 0; i < 3; ++i) {
    table->reloadData();
    table->cellForRow(0);
    client.settle();
  }
  EXPECT_THAT(client.takeRequests(), ElementsAre("GET /vehicles?limit=20&offset=0"));
}

TEST_F(VehicleList, OfAnEndedSessionIsNotTheFleetOfTheNext) {
  Viewport eyes(*table);
  client.settle();
  const HttpReply late = page(2, 2);
  API::logoutUser();
  client.settle();
  API::loginUserWithToken("another");
  client.settle();
  answer(late);
  client.takeRequests();
  client.menuEntry("fleetButton").tap();
  client.advance(2);
  EXPECT_THAT(client.takeRequests(), ElementsAre("GET /vehicles?limit=20&offset=0"));
}

// The count that is held decides, whatever a page was asked for or promised.
TEST_F(VehicleList, ContinuesAfterWhatItHoldsWhenPagesAreShort) {
  Viewport eyes(*table);
  client.settle();
  answer(page(45, 7));
  EXPECT_EQ(table->numberOfRows(), 8);
  EXPECT_EQ(table->heightForRow(6), 68.0);
  EXPECT_EQ(table->heightForRow(7), 60.0);
  const auto row = table->cellForRow(4);
  EXPECT_EQ(dynamic_cast<ImageView*>(row->findOutlet("photoImageView"))->image(), "Car5");
  EXPECT_EQ(row->textLabel().text() + "|" + row->detailTextLabel().text(), "Vehicle 5|KR 5");
  eyes.scrollTo(1);
  client.settle();
  EXPECT_EQ(client.transport.openCount(), 1u) << "one at a time";
  answer(page(45, 45));
  EXPECT_EQ(table->numberOfRows(), 28);
  eyes.scrollToEnd();
  client.settle();
  EXPECT_THAT(client.takeRequests(),
              ElementsAre("GET /vehicles?limit=20&offset=0", "GET /vehicles?limit=20&offset=7",
                          "GET /vehicles?limit=20&offset=27"));
}

TEST_F(VehicleList, PausesLongerAndLongerAfterPagesWithoutNewVehicles) {
  Viewport eyes(*table);
  client.settle();
  const auto expectPause = [&](double seconds) {
    client.advance(seconds - 0.1);
    EXPECT_EQ(client.transport.openCount(), 0u) << "before " << seconds << " s";
    client.advance(0.2);
    EXPECT_EQ(client.transport.openCount(), 1u) << "after " << seconds << " s";
  };
  for (const int total : {6, 0, -3}) {
    const int held = table->numberOfRows() - 1;
    answer(page(total, held + 1));
    client.settle();
    EXPECT_EQ(client.transport.openCount(), 1u) << "at once after a new vehicle";
    for (const double pause : {15, 30, 60, 120, 240, 300, 300}) {
      answer(page(total, held + 1));
      EXPECT_EQ(table->numberOfRows(), held + 2);
      expectPause(pause);
    }
  }
  answer(page(3, 3));
  client.advance(600);
  EXPECT_EQ(table->numberOfRows(), 3);
  EXPECT_EQ(client.transport.openCount(), 0u) << "complete";
}

TEST_F(VehicleList, IsEmptyWithoutVehicles) {
  Viewport eyes(*table);
  client.settle();
  answer(page(0, 0));
  client.advance(600);
  EXPECT_EQ(table->numberOfRows(), 0);
  EXPECT_THAT(client.takeRequests(), SizeIs(1));
  EXPECT_THAT(client.takeMessages(), IsEmpty());
}

TEST_F(VehicleList, APauseKeepsNoScreenAlive) {
  Viewport eyes(*table);
  client.settle();
  answer(page(6, 0));
  const auto screen = client.find<VehiclesTableViewController>()->weak_from_this();
  client.delegate.showMainOrLogin();
  client.settle();
  EXPECT_TRUE(screen.expired());
  client.takeRequests();
  client.advance(20);
  EXPECT_THAT(client.takeRequests(), IsEmpty());
}

TEST(VehicleListWithoutVehicles, ShowsWhetherItIsEmptyOrFailedAndIsMadeAnewOnDemand) {
  Client client;
  client.start();
  client.transport.answerOnce("/vehicles", jsonReply(envelope(0, R"("vehicles":[])")));
  client.transport.answerOnce("/vehicles", reply(500, "text/plain", ""));
  for (const char* image : {"ListEmpty", "ListFailed", ""}) {
    auto* list = client.find<VehiclesTableViewController>();
    EXPECT_EQ(list->noVehiclesImageView().image(), "") << "while it loads";
    const Viewport eyes(list->itemsTableView());
    client.settle();
    EXPECT_EQ(list->noVehiclesImageView().image(), image);
    EXPECT_EQ(list->failureLabel().text().empty(), image != std::string("ListFailed")) << image;
    list->reloadButton().tap();
    client.settle();
  }
}

TEST(BrokenVehicleList, IsMadeAnewOnDemand) {
  for (const Idiom idiom : {Idiom::phone, Idiom::pad}) {
    Machine machine(idiom);
    Client client(machine);
    client.start();
    if (idiom == Idiom::pad) client.open(1);
    auto* list = client.find<VehiclesTableViewController>();
    Viewport eyes(list->itemsTableView());
    client.settle();
    EXPECT_EQ(list->failureLabel().text(), "");
    client.transport.answerOnce("/vehicles", reply(500, "text/plain", ""));
    eyes.scrollToEnd();
    client.settle();
    EXPECT_EQ(list->itemsTableView().numberOfRows(), 20);
    EXPECT_EQ(list->failureLabel().text(), "The list of vehicles is incomplete");

    const std::weak_ptr<ViewController> broken = list->weak_from_this();
    client.tap(list->reloadButton());
    EXPECT_TRUE(broken.expired());
    Viewport again(client.vehicles());
    client.settle();
    EXPECT_EQ(client.vehicles().numberOfRows(), 21);
    EXPECT_EQ(client.find<VehiclesTableViewController>()->failureLabel().text(), "");
    const auto marked = client.vehicles().indexPathForSelectedRow();
    EXPECT_EQ(marked ? marked->row : -1, idiom == Idiom::pad ? 1 : -1) << "what is open beside the list";
  }
}

TEST(VehicleRows, ShowWhatTheSessionHasLastReceivedAndHowOldThatIs) {
  Client client;
  client.start();
  client.tapLeftButtonOf(*client.open(0));
  const Viewport eyes(client.vehicles());
  const auto reading = [&](int row) {
    return dynamic_cast<VehicleTableViewCell&>(*client.vehicles().cellForRow(row)).readingLabel().text();
  };
  EXPECT_EQ(reading(0), "57km/h · now");
  EXPECT_EQ(reading(1), "");
  EXPECT_EQ(client.textOfRow(client.vehicles(), 0), "Vehicle 1\nKR 1");
  client.advance(31);
  EXPECT_EQ(reading(0), "57km/h · 30 s");
  client.center.postNotificationName(UIApplicationDidEnterBackgroundNotification);
  client.advance(300);
  EXPECT_EQ(client.queues.waiting(), 0u) << "no timer in the background";
  client.center.postNotificationName(UIApplicationWillEnterForegroundNotification);
  EXPECT_EQ(reading(0), "57km/h · 5 min");
}

}  // namespace
}  // namespace fleetor::test
