#include "shell/about_view_controller.h"
#include "shell/account_view_controller.h"
#include "shell/menu_view_controller.h"
#include "support/client.h"

namespace fleetor::test {
namespace {

/// A signed-in phone.
class SideMenu : public testing::Test {
 protected:
  SideMenu() {
    phone.device.resources["about.html"] = "/opt/about.html";
    client.transport.leaveOpen("/user");
    client.start();
    client.takeRequests();
  }

  bool frontTakesTouches() { return container().frontViewController()->view().userInteractionEnabled(); }
  MainViewController& container() { return *client.root<MainViewController>(); }

  const std::string& accountNamed() {
    return dynamic_cast<Label&>(*container().rearViewController()->findOutlet("accountLabel")).text();
  }

  /// Opens the menu by the front screen's button and taps the entry.
  void choose(const char* entry) {
    auto& front = dynamic_cast<NavigationController&>(*container().frontViewController());
    client.tapLeftButtonOf(*front.topViewController());
    EXPECT_FALSE(frontTakesTouches());
    client.tap(client.menuEntry(entry));
  }

  Machine phone;
  Client client{phone};
};

TEST_F(SideMenu, PutsANewScreenInFrontAtEveryChoice) {
  const std::weak_ptr<ViewController> list = client.find<VehiclesTableViewController>()->weak_from_this();
  choose("vehiclesButton");
  EXPECT_TRUE(list.expired());
  Viewport eyes(client.vehicles());
  client.settle();
  EXPECT_THAT(client.takeRequests(), ElementsAre("GET /vehicles?limit=20&offset=0"));
  EXPECT_EQ(container().frontViewPosition(), FrontViewPosition::left);
  EXPECT_TRUE(container().panShouldBegin(120));
  EXPECT_FALSE(container().panShouldBegin(121));
  EXPECT_TRUE(frontTakesTouches());

  const auto isMarked = [this](const char* entry) { return client.menuEntry(entry).selected(); };
  EXPECT_TRUE(isMarked("vehiclesButton"));
  choose("aboutButton");
  client.tapLeftButtonOf(*client.find<AboutViewController>());
  EXPECT_TRUE(isMarked("aboutButton") && !isMarked("vehiclesButton"));
  container().revealToggleAnimated(false);
  auto* about = client.find<AboutViewController>();
  ASSERT_TRUE(about);
  EXPECT_EQ(about->title(), "About");
  about->aboutWebView().tapLink("https://elsewhere.test/");
  EXPECT_THAT(phone.device.openedURLs, ElementsAre("https://elsewhere.test/"));
  EXPECT_EQ(about->aboutWebView().url(), "file:///opt/about.html");
}

TEST_F(SideMenu, AsksBeforeItSignsOut) {
  choose("logoutButton");
  client.application.window().alerts().at(0)->tapButton(0);
  EXPECT_TRUE(API::isLogged());
  EXPECT_THAT(client.takeRequests(), IsEmpty());
  client.menuEntry("logoutButton").tap();
  client.application.window().alerts().at(0)->tapButton(1);
  EXPECT_TRUE(client.root<LoginViewController>());
  client.settle();
  EXPECT_THAT(client.takeRequests(), ElementsAre("POST /logout"));
}

TEST_F(SideMenu, OpensTheAccountThatIsAskedForOnce) {
  choose("accountButton");
  auto* account = client.find<AccountViewController>();
  ASSERT_TRUE(account);
  auto& table = account->infoTableView();
  Viewport eyes(table);
  table.reloadData();
  client.settle();
  EXPECT_EQ(table.numberOfRows(), 1);
  EXPECT_EQ(table.heightForRow(0), 60.0);
  EXPECT_THAT(client.takeRequests(), ElementsAre("GET /user?"));
  client.transport.answerOpen("/user", userReply());
  client.queues.runUntilIdle();
  EXPECT_THAT(Client::textsOf(table),
              ElementsAre("Anna Nowak | Name", "Nowak Transport | Company", "Active | Status",
                          "Long Street 5 | Address", " | Address", "PL123 | VAT ID", "+48 1 | SMS",
                          "+48 2 | Phone", "anna@nowak.test | Mail", "2027-01-31 | Expiration date"));
  EXPECT_EQ(table.heightForRow(9), 50.0);
  EXPECT_EQ(accountNamed(), "Anna Nowak");

  choose("accountButton");
  auto& other = client.find<AccountViewController>()->infoTableView();
  Viewport again(other);
  client.settle();
  client.transport.answerOpen("/user", reply(500, "text/plain", ""));
  client.settle();
  EXPECT_EQ(other.numberOfRows(), 0);

  choose("accountButton");
  Viewport late(client.find<AccountViewController>()->infoTableView());
  client.settle();
  API::logoutUser();
  API::loginUserWithToken("of someone else");
  client.settle();
  client.transport.answerOpen("/user", userReply());
  client.settle();
  EXPECT_EQ(accountNamed(), "") << "what belongs to another session";
}

}  // namespace
}  // namespace fleetor::test
