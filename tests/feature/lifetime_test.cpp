#include "shell/choose_vehicle_table_view_controller.h"
#include "support/client.h"
#include "ui/controls/action_sheet_date_picker.h"

namespace fleetor::test {
namespace {

constexpr const char* chooserURL = "fleetor-widget://vehicles";

/// Remembers every screen that it has seen.
class Census {
 public:
  void take(Client& client) {
    for (auto each = client.application.window().rootViewController(); each;
         each = each->presentedViewController())
      note(*each);
  }

  /// Identifiers of those that live, but for the ones that are in the client's window; containers count as
  /// "-".
  std::multiset<std::string> leftOver(Client* client = nullptr) {
    Census now;
    if (client) now.take(*client);
    std::multiset<std::string> names;
    for (const auto& [address, screen] : seen_)
      if (const auto alive = screen.lock(); alive && !now.seen_.contains(address))
        names.insert(alive->storyboardIdentifier().empty() ? "-" : alive->storyboardIdentifier());
    return names;
  }

  std::size_t size() const { return seen_.size(); }

 private:
  void note(ViewController& screen) {
    seen_[&screen] = screen.weak_from_this();
    for (const auto& child : screen.childViewControllers())
      note(*child);
  }

  std::map<const void*, std::weak_ptr<ViewController>> seen_;
};

class Lifetime : public testing::TestWithParam<Idiom> {
 protected:
  bool onTablet() const { return GetParam() == Idiom::pad; }

  /// Fills the screen with whatever can be up at once: a vehicle, the alert (on a tablet), the picker and a
  /// screen presented over all that, its first page still under way.
  void openEverything(Client& client) {
    auto* list = client.find<VehiclesTableViewController>();
    Viewport eyes(list->itemsTableView());
    client.settle();
    census.take(client);
    client.open(0);
    census.take(client);
    auto* pager = onTablet() ? client.open(1) : client.find<VehicleViewController>();
    for (int page = 4; page >= 0; --page)
      pager->pagesTabBar().tap(page);
    pager->navigationItem().rightBarButtonItems().at(0)->tap();
    if (onTablet()) {
      list->navigationItem().leftBarButtonItems().at(0)->tap();
      list->navigationItem().rightBarButtonItems().at(0)->tap();
    } else {
      client.transport.leaveOpen("/vehicles");
      client.application.receiveURL(chooserURL);
      client.find<ChooseVehicleTableViewController>()->loadItems();
    }
    client.transport.leaveOpen("/live");
    client.advance(16);
    census.take(client);
  }

  Machine machine{GetParam()};
  Census census;
};

INSTANTIATE_TEST_SUITE_P(On, Lifetime, testing::Values(Idiom::phone, Idiom::pad),
                         [](const auto& named) { return named.param == Idiom::pad ? "Tablet" : "Phone"; });

TEST_P(Lifetime, NoScreenOutlivesItsSessionHoweverItEnds) {
  Client client(machine);
  client.start("");
  client.transport.answer("/token", tokenReply("t"));
  for (int round = 0; round < 4; ++round) {
    census.take(client);
    client.signIn("anna", "secret");
    ASSERT_TRUE(client.root<MainViewController>());
    openEverything(client);
    const char* path = onTablet() ? "/live" : "/vehicles";
    if (round % 2 == 0)
      client.transport.answerOpen(path, reply(401, "application/json", "{}"));
    else
      API::logoutUser();
    client.settle();
    ASSERT_TRUE(client.root<LoginViewController>());
    EXPECT_FALSE(client.application.window().datePicker());
    EXPECT_TRUE(client.application.window().alerts().empty()) << "nobody is left whom the answer concerns";
    while (client.transport.answerOpen("/live", liveReply(1, 5)) ||
           client.transport.answerOpen("/vehicles", jsonReply("{}"))) {
    }
    client.advance(16);
    EXPECT_THAT(census.leftOver(&client), IsEmpty());
    client.transport.answer("/live", liveReply(1, 57));
    serveFleet(client.transport, 45, 45);
  }
  EXPECT_GE(census.size(), 30u);
}

TEST_P(Lifetime, NothingSurvivesAClientThatEndsInTheMiddleOfEverything) {
  {
    Client client(machine);
    client.start();
    openEverything(client);
  }
  EXPECT_THAT(census.leftOver(), IsEmpty());

  machine.standardSettings.values.erase("TermsAccepted");
  {
    Client client(machine);
    client.application.launch();
    client.settle();
    census.take(client);
    client.find<TermsViewController>()->agreeButton().tap();
  }
  EXPECT_THAT(census.leftOver(), IsEmpty());
}

// The poll that was still to come may run; coming back to the program must not start a new loop for a screen
// that the user has left.
TEST_P(Lifetime, AVehicleThatWasLeftStaysLeftAfterATripToTheBackground) {
  Client client(machine);
  client.start();
  const std::weak_ptr<ViewController> left = client.open(0)->weak_from_this();
  if (onTablet())
    client.open(1);
  else
    client.tapLeftButtonOf(*client.find<VehicleViewController>());
  client.application.didEnterBackground();
  client.application.willEnterForeground();
  client.advance(31);
  EXPECT_TRUE(left.expired());
  client.takeRequests();
  client.advance(60);
  EXPECT_THAT(client.takeRequests(), Each("GET /live?vehid=2"));
}

}  // namespace
}  // namespace fleetor::test
