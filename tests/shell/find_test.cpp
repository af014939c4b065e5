#include "shell/find_view_controller.h"

#include <gmock/gmock.h>

#include "support/client.h"

namespace fleetor::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Find : public testing::TestWithParam<Idiom> {
 protected:
  Find() : machine(GetParam()), client(machine) {}

  /// Looks at the list, whose first page comes with that, and opens the search.
  FindViewController& open() {
    client.start();
    eyes.emplace(client.vehicles());
    client.settle();
    return reopen();
  }
  FindViewController& reopen() {
    auto* const button = client.find<VehiclesTableViewController>()->findOutlet("findButton");
    dynamic_cast<BarButtonItem*>(button)->tap();
    client.settle();
    return *client.find<FindViewController>();
  }
  void type(const char* text) {
    client.find<FindViewController>()->searchTextField().setText(text);
    client.settle();
  }
  std::vector<std::string> rows() {
    return client.textsOf(client.find<FindViewController>()->foundTableView());
  }
  void chooseOrder(int entry) {
    client.tapRightButtonOf(*client.find<FindViewController>());
    client.application.window().actionSheet()->tapEntry(entry);
    client.settle();
  }

  Machine machine;
  Client client;
  std::optional<Viewport> eyes;
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

INSTANTIATE_TEST_SUITE_P(OnA, Find, testing::Values(Idiom::phone, Idiom::pad));

}  // namespace
}  // namespace fleetor::test
