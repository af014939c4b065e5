#include "support/client.h"

namespace fleetor::test {
namespace {

std::optional<std::string> storedToken() {
  return API::keychain().objectForKey(sec::valueData);
}

TEST(FirstVisit, LeadsFromTheTermsOverTheSignInToTheListAndItsFirstVehicle) {
  Machine phone;
  phone.device.resources["tos.html"] = "/opt/flee tor/tos.html";
  Client client(phone);
  API::keychain().setObject("from-an-earlier-installation", sec::valueData);
  bool hadFirstRun = true;
  phone.keyStore.onRemove = [&] { hadFirstRun = phone.standardSettings.object("FirstRun").has_value(); };
  client.application.launch();
  client.settle();
  EXPECT_EQ(storedToken().value_or(""), "");
  EXPECT_FALSE(hadFirstRun) << "an interrupted first start would be none, with the sign-in still there";

  // The terms, presented once. A link in them opens outside.
  auto* terms = client.find<TermsViewController>();
  ASSERT_TRUE(terms);
  EXPECT_EQ(terms->tosWebView().url(), "file:///opt/flee tor/tos.html");
  terms->tosWebView().tapLink("http://elsewhere.test/");
  EXPECT_THAT(phone.device.openedURLs, ElementsAre("http://elsewhere.test/"));
  EXPECT_EQ(terms->tosWebView().url(), "file:///opt/flee tor/tos.html");
  terms->agreeButton().tap();
  client.settle();  // no three seconds of waiting on this way
  ASSERT_TRUE(client.root<LoginViewController>());
  EXPECT_TRUE(client.root<LoginViewController>()->passwordTextField().secureTextEntry());
  EXPECT_EQ(phone.standardSettings.values["FirstRun"], Settings::Value("FirstRun"));
  EXPECT_EQ(phone.standardSettings.values["TermsAccepted"], Settings::Value("TermsAccepted"));
  EXPECT_THAT(client.takeRequests(), IsEmpty());

  // The sign-in.
  client.transport.answer("/token", tokenReply("new-token"));
  client.signIn("anna & co", "s3cret+");
  ASSERT_TRUE(client.root<MainViewController>());
  EXPECT_EQ(storedToken(), "new-token");
  const HttpRequest token = client.transport.last();
  EXPECT_EQ(token.body, "password=s3cret%2B&uid=" + phone.device.identifier + "&username=anna%20%26%20co");
  EXPECT_THAT(client.takeRequests(), ElementsAre("POST /token?grant_type=password"));

  // The list, and a vehicle.
  ASSERT_TRUE(client.open(0));
  const auto requests = client.transport.requests();
  ASSERT_EQ(requests.size(), 2u);
  for (const HttpRequest& request : requests)
    EXPECT_EQ(headerOf(request, "Authorization"), "Bearer new-token") << request.url;
  EXPECT_EQ(client.textOfRow(client.vehicles(), 0), "Vehicle 1\nKR 1");
  EXPECT_EQ(client.textOfRow(client.find<InfoDetailViewController>()->itemsTableView(), 2), "57km/h | Speed");
}

TEST(LaterVisit, FindsTheUserSignedInUntilTheTabletSignsOut) {
  Machine tablet(Idiom::pad);
  {
    Client client(tablet);
    client.start("");
    client.transport.answer("/token", tokenReply("kept"));
    client.signIn("anna", "secret");
    ASSERT_TRUE(client.root<MainViewController>());
  }
  tablet.sharedSettings.setObject(std::int64_t{7}, "WidgetVehicle");
  {
    Client client(tablet);
    client.application.launch();
    client.advance(2.9);
    EXPECT_EQ(client.find<LaunchViewController>()->launchImageView().image(), "2048x1536.png");
    client.advance(0.1);
    ASSERT_TRUE(client.root<MainViewController>());

    client.tapLeftButtonOf(*client.find<VehiclesTableViewController>());
    client.transport.leaveOpen("/logout");  // nobody waits for the service here
    client.takeRequests();
    client.application.window().alerts().at(0)->tapButton(1);
    EXPECT_TRUE(client.root<LoginViewController>());
    client.settle();
    EXPECT_EQ(client.transport.last().body, "uid=" + tablet.device.identifier);
    EXPECT_THAT(client.takeRequests(), ElementsAre("POST /logout"));
    EXPECT_FALSE(tablet.sharedSettings.values.contains("WidgetVehicle"));

    // The old credential still goes out with the next sign-in.
    client.transport.answer("/token", reply(400, "text/plain", ""));
    client.signIn("anna", "wrong");
    EXPECT_EQ(headerOf(client.transport.last(), "Authorization"), "Bearer kept");
  }
  Client client(tablet);
  client.application.launch();
  client.advance(3);
  EXPECT_TRUE(client.root<LoginViewController>());
}

}  // namespace
}  // namespace fleetor::test
