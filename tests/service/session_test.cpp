#include "service_test.h"

namespace fleetor::test {
namespace {

class SessionTest : public ServiceTest {
 protected:
  std::optional<std::string> authorization() {
    return APIHTTPClient::requestHeaders().objectForKey("Authorization");
  }
  std::string stored() { return keyStore.items().at(0)[sec::valueData]; }
};

TEST_F(SessionTest, SignsInOutAndInAgain) {
  EXPECT_FALSE(API::isLogged());
  ASSERT_THAT(keyStore.items(), SizeIs(1)) << "asking leaves an empty item behind";
  API::configureRequest();
  EXPECT_EQ(authorization(), std::nullopt) << "whose empty text is no token";
  EXPECT_EQ(keyStore.items()[0], (SecItem{{sec::itemClass, sec::genericPassword},
                                          {sec::generic, "Fleetor_Keychain"},
                                          {sec::accessGroup, keyStore.items()[0][sec::accessGroup]},
                                          {sec::accessible, sec::accessibleAlwaysThisDeviceOnly},
                                          {sec::account, ""},
                                          {sec::label, ""},
                                          {sec::description, ""},
                                          {sec::valueData, ""}}));

  API::loginUserWithToken("first");
  EXPECT_THAT(takeEvents(), ElementsAre("show main"));
  EXPECT_EQ(authorization(), "Bearer first");
  EXPECT_EQ(stored(), "first");

  settings.values = {{"WidgetVehicle", std::int64_t{7}}, {"Other", std::int64_t{1}}};
  transport.answer("/logout", jsonReply("{}", 401));
  API::logoutUser();
  EXPECT_THAT(events, ElementsAre("show login")) << "without waiting for the service";
  EXPECT_THAT(settings.values, SizeIs(1));
  EXPECT_EQ(settings.synchronized, 1);
  queues.runUntilIdle();
  EXPECT_THAT(takeEvents(), ElementsAre("show login")) << "a 401 to the sign-out shows nothing";
  EXPECT_EQ(
      wire(transport.last()),
      "POST http://service.test/logout\nContent-type: application/x-www-form-urlencoded; charset=utf-8\n"
      "Authorization: Bearer first\nContent-Length: 40\n\nuid=6F1C2A54-9D3E-4B7A-8C11-0A5E7D2B9F30");
  EXPECT_EQ(authorization(), "Bearer first") << "stays until the next sign-in";

  API::loginUserWithToken("second");
  API::loginUserWithToken("third");
  EXPECT_EQ(authorization(), "Bearer third");
  EXPECT_THAT(keyStore.items(), SizeIs(1));
  EXPECT_EQ(stored(), "third");
}

TEST_F(SessionTest, SignOutReportsAServiceThatFails) {
  API::loginUserWithToken("t");
  takeEvents();
  transport.answerOnce("/logout", failedReply(url_error::timedOut));
  API::logoutUser();
  queues.runUntilIdle();
  EXPECT_THAT(takeEvents(), ElementsAre("show login", connectionMessage));

  transport.answerOnce("/logout", jsonReply("", 400));
  API::logoutUser();
  queues.runUntilIdle();
  EXPECT_THAT(takeEvents(), ElementsAre("show login"));
}

TEST_F(SessionTest, ExpiresOnceWhateverStatusesTheCallerHandles) {
  for (const int status : {401, 403}) {
    API::loginUserWithToken("t");
    takeEvents();
    transport.answer("/live", jsonReply("{}", status));
    const ErrorCodes handled{401, 403};
    API::getWithPath("/live", modelClass<LiveResponse>, handled, completed());
    API::getWithPath("/live", modelClass<LiveResponse>, handled, completed());
    queues.runUntilIdle();
    const std::string end = "completed 2, " + std::to_string(status);
    EXPECT_THAT(takeEvents(), ElementsAre("show login", expiredMessage, end, end));
    EXPECT_FALSE(API::isLogged());
  }
  EXPECT_EQ(transport.count("/logout"), 2u);
}

TEST_F(SessionTest, AnAnswerToARequestOfAnEndedSessionOnlyCompletes) {
  transport.leaveOpen("/live");
  transport.leaveOpen("/logout");
  for (const HttpReply& late : {jsonReply("{}", 401), jsonReply("{}", 500), jsonReply("[]")}) {
    API::loginUserWithToken("first");
    API::getWithPath("/live", modelClass<LiveResponse>, {}, completed());
    API::getWithPath("/live", modelClass<LiveResponse>, {}, completed());
    API::logoutUser();
    queues.runUntilIdle();
    takeEvents();
    transport.answerOpen("/live", late);
    queues.runUntilIdle();
    EXPECT_THAT(takeEvents(), ElementsAre(StartsWith("completed")));
    API::loginUserWithToken("second");
    takeEvents();
    transport.answerOpen("/live", late);
    transport.answerOpen("/logout", late);
    queues.runUntilIdle();
    EXPECT_THAT(takeEvents(), ElementsAre(StartsWith("completed")));
    EXPECT_EQ(transport.openCount(), 0u) << "no sign-out with the second token";
  }
}

TEST_F(SessionTest, ATokenThatIsNoHeaderValueIsNeitherStoredNorSent) {
  for (const char* token : {"a\r\nX-Forged: 1", "a\nb", "a\x7f", "a\x01"}) {
    API::loginUserWithToken(token);
    EXPECT_THAT(takeEvents(), ElementsAre(dataMessage));
    EXPECT_FALSE(API::isLogged());
    keyStore.items().at(0)[sec::valueData] = token;  // by an earlier version
    API::configureRequest();
    EXPECT_EQ(authorization(), std::nullopt);
    keyStore.items().clear();
  }
  APIHTTPClient::requestHeaders().setObject("a\r\nb", "X-Any");
  API::getWithPath("/live", modelClass<LiveResponse>, {}, completed());
  queues.runUntilIdle();
  EXPECT_THAT(takeEvents(), ElementsAre(unexpectedMessage, "completed 6, 0"));
  EXPECT_THAT(transport.requests(), IsEmpty());
}

TEST_F(SessionTest, StartUpInstallsTheStoredToken) {
  API::loginUserWithToken("kept");
  const auto writes = keyStore.writes;
  install(queues, transport);
  EXPECT_EQ(authorization(), std::nullopt);
  API::configureRequest();
  EXPECT_EQ(authorization(), "Bearer kept");
  EXPECT_TRUE(API::isLogged());
  EXPECT_EQ(keyStore.writes, writes) << "reading an item that is in order writes nothing";
  EXPECT_EQ(reachability.started, 1);

  API::requestAuthForToken(std::nullopt);
  EXPECT_EQ(authorization(), "Bearer kept");
}

TEST_F(SessionTest, KeyStoreThatRefusesLeavesTheUserSignedOut) {
  keyStore.failsWrites = true;
  API::loginUserWithToken("t");
  EXPECT_THAT(takeEvents(), ElementsAre("show login"));
  keyStore.failsWrites = false;
  API::loginUserWithToken("");
  EXPECT_THAT(takeEvents(), ElementsAre("show login")) << "an empty token is no session";
}

TEST_F(SessionTest, NothingIsSentAfterTheShutDown) {
  API::getWithPath("/live", modelClass<LiveResponse>, {}, completed());
  API::shutDown();
  queues.runUntilIdle();
  EXPECT_THAT(transport.requests(), IsEmpty());
  EXPECT_THAT(events, IsEmpty());
}

TEST(KeychainItemWrapperTest, KeepsOtherItemsAndGroupsApart) {
  MemoryKeyStore store;
  auto plain = KeychainItemWrapper::initWithIdentifier(store, "a", std::nullopt);
  EXPECT_THAT(store.items(), IsEmpty());
  plain.setObject("one", sec::valueData);
  plain.setObject("one", sec::valueData);
  plain.setObject(std::nullopt, sec::valueData);
  EXPECT_EQ(store.writes, 1);
  KeychainItemWrapper::initWithIdentifier(store, "b", "group").setObject("two", sec::valueData);
  EXPECT_EQ(KeychainItemWrapper::initWithIdentifier(store, "b", "other").objectForKey(sec::valueData), "");

  KeychainItemWrapper::initWithIdentifier(store, "a", std::nullopt).resetKeychainItem();
  ASSERT_THAT(store.items(), SizeIs(1));
  EXPECT_EQ(store.items()[0][sec::valueData], "two");
}

}  // namespace
}  // namespace fleetor::test
