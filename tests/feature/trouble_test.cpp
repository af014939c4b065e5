#include "support/client.h"
#include "vehicle/notifications.h"

namespace fleetor::test {
namespace {

constexpr const char* connectionMessage =
    "The call ended with an error, please check the status of your Internet connection";
constexpr const char* unexpectedMessage = "An unexpected error occurred, please try again";
constexpr const char* dataMessage = "The data returned by the server is incorrect, please try again";

struct Trouble {
  const char* name;
  HttpReply reply;
  const char* message;
};

const Trouble troubles[] = {{"not running", failedReply(url_error::cannotConnectToHost), unexpectedMessage},
                            {"offline", failedReply(url_error::notConnectedToInternet), connectionMessage},
                            {"failing", reply(500, "text/html", "<h1>Sorry</h1>"), unexpectedMessage},
                            {"garbage", jsonReply("{\"total\": 1, \"err"), unexpectedMessage},
                            {"refusing", jsonReply(envelope(0, "", 500)), dataMessage}};

// One message each, and everything goes on when the service is back.
void expectShownOnceOnEveryScreen(const Trouble& trouble) {
  SCOPED_TRACE(trouble.name);
  Client client;
  client.start("");
  client.transport.answer("/token", trouble.reply);
  client.signIn("anna", "secret");
  EXPECT_THAT(client.takeMessages(), ElementsAre(trouble.message));
  EXPECT_FALSE(client.root<LoginViewController>()->loginButton().loading());
  EXPECT_EQ(client.root<LoginViewController>()->passwordTextField().text(), "secret");
  client.advance(10);
  client.transport.answer("/token", tokenReply("t"));
  client.signIn("anna", "secret");
  ASSERT_TRUE(client.root<MainViewController>());

  // The list keeps the page that it has and stops asking.
  auto& table = client.vehicles();
  Viewport eyes(table);
  client.settle();
  client.transport.answerOnce("/vehicles", trouble.reply);
  eyes.scrollToEnd();
  client.settle();
  EXPECT_THAT(client.takeMessages(), ElementsAre(trouble.message));
  EXPECT_EQ(table.numberOfRows(), 20);
  client.takeRequests();
  eyes.scrollToEnd();
  client.advance(10);
  EXPECT_THAT(client.takeRequests(), IsEmpty());

  // The readings stay and go on.
  ASSERT_TRUE(client.open(1));
  auto& readings = client.find<InfoDetailViewController>()->itemsTableView();
  client.transport.answerOnce("/live", trouble.reply);
  client.advance(15);
  EXPECT_THAT(client.takeMessages(), ElementsAre(trouble.message));
  EXPECT_EQ(client.textOfRow(readings, 2), "57km/h | Speed");
  client.transport.answer("/live", liveReply(2, 80));
  client.advance(15);
  EXPECT_EQ(client.textOfRow(readings, 2), "80km/h | Speed");
  EXPECT_THAT(client.takeMessages(), IsEmpty());
}

TEST(AnyTrouble, IsShownOnceOnEveryScreenAndEndsWithTheService) {
  for (const Trouble& trouble : troubles)
    expectShownOnceOnEveryScreen(trouble);
}

TEST(WrongPassword, IsShownByTheSignInScreenAlone) {
  Client client;
  client.start("");
  client.transport.answer("/token", reply(400, "application/json", R"({"error":"invalid_grant"})"));
  client.signIn("anna", "wrong");
  EXPECT_THAT(client.takeMessages(),
              ElementsAre("Unable to sign in - please verify your logon credentials and try again [square]"));
  auto& login = *client.root<LoginViewController>();
  EXPECT_FALSE(login.loginButton().loading());
  EXPECT_TRUE(login.loginTextField().invalid() && login.passwordTextField().invalid());
  EXPECT_EQ(login.refusalLabel().text(), "User name or password is wrong");
  login.passwordTextField().setText("right");
  EXPECT_EQ(login.refusalLabel().text(), "");
  EXPECT_FALSE(login.loginTextField().invalid() || login.passwordTextField().invalid());
}

TEST(WrongPassword, IsIgnoredOnceSomeoneIsSignedIn) {
  Client client;
  client.start("");
  client.transport.answer("/token", reply(400, "application/json", R"({"error":"invalid_grant"})"));
  auto& login = *client.root<LoginViewController>();
  login.loginTextField().setText("anna");
  login.passwordTextField().setText("wrong");
  login.passwordTextField().becomeFirstResponder();
  login.loginButton().tap();
  API::loginUserWithToken("read-late");
  client.settle();
  EXPECT_THAT(client.takeMessages(), IsEmpty());
  EXPECT_FALSE(client.environment.window->keyboard().visible());
}

TEST(SignIn, GoesToTheEmptyFieldAndSendsNothingTwice) {
  Client client;
  client.start("");
  auto& login = *client.root<LoginViewController>();
  login.loginButton().tap();
  EXPECT_TRUE(login.loginTextField().isFirstResponder());
  login.loginTextField().setText(" ");
  login.loginButton().tap();
  EXPECT_TRUE(login.passwordTextField().isFirstResponder());
  login.passwordTextField().setText("x");
  login.loginTextField().pressReturn();
  EXPECT_TRUE(login.passwordTextField().isFirstResponder());
  client.settle();
  EXPECT_THAT(client.takeRequests(), IsEmpty());

  login.passwordTextField().pressReturn();
  EXPECT_FALSE(client.application.window().keyboard().visible());
  EXPECT_TRUE(login.loginButton().loading());
  client.tap(login.loginButton());
  EXPECT_THAT(client.takeRequests(), ElementsAre("POST /token?grant_type=password"));
  EXPECT_THAT(client.takeMessages(), IsEmpty());

  client.transport.answerOpen("/token", reply(400, "application/json", "{}"));
  client.settle();
  EXPECT_TRUE(login.passwordTextField().isFirstResponder())
      << "to be corrected without a search for the field";
}

// Its last poll is still to come, or the answer to it is.
TEST(EndedSession, ReachesTheNextUserNeitherWithAPollNorWithAnAnswer) {
  for (const int status : {200, 401, 403, 404}) {
    for (const bool answerIsLate : {false, true}) {
      SCOPED_TRACE(status);
      SCOPED_TRACE(answerIsLate);
      Client client;
      if (answerIsLate) client.transport.leaveOpen("/live");
      client.start();
      client.open(0);
      API::logoutUser();
      client.transport.answer("/token", tokenReply("of the next user"));
      client.signIn("nora", "secret");
      client.takeRequests();
      int posts = 0;
      client.center.addObserver(&posts, kFleetorNotificationLive, [&](const Notification&) { ++posts; });

      const HttpReply late = status == 200 ? liveReply(1, 57) : jsonReply("{}", status);
      client.transport.answer("/live", late);
      EXPECT_EQ(client.transport.answerOpen("/live", late), answerIsLate);
      EXPECT_THAT(client.takeMessages(), IsEmpty());
      EXPECT_THAT(client.takeRequests(), IsEmpty());
      EXPECT_EQ(posts, 0);
      EXPECT_TRUE(client.root<MainViewController>());
      client.center.removeObserver(&posts);
    }
  }
}

}  // namespace
}  // namespace fleetor::test
