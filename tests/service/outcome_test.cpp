#include "service/network_activity_indicator_manager.h"
#include "service_test.h"

namespace fleetor::test {
namespace {

constexpr const char* emptyList = R"({"total":0,"error":{"code":200,"description":"OK"},"vehicles":[]})";

struct Case {  // NOLINT(clang-analyzer-optin.performance.Padding): in the order in which a case reads
  const char* name;
  HttpReply reply;
  const char* message;  ///< none when nothing is shown
  int kind;
  std::string logged = {};  ///< after the two lines of the request and before the body
  bool reachable = true;
  ErrorCodes errorCodes = {};
};

const Case outcomes[] = {
    {"success", jsonReply(emptyList), nullptr, 0},
    {"no JSON at all", jsonReply(""), dataMessage, 1},
    {"an array", jsonReply("[]"), dataMessage, 1},
    {"page", reply(200, "text/html", "<p>"), unexpectedMessage, 2, "Kind = HTTP, 200"},
    {"page, handled", reply(200, "text/html", "<p>"), nullptr, 2, "Kind = HTTP, 200", true, {400, 200}},
    {"broken JSON", jsonReply("{"), unexpectedMessage, 2, "Kind = HTTP, 200"},
    {"server error", jsonReply("{}", 500), unexpectedMessage, 2, "Kind = HTTP, 500"},
    {"status, handled", jsonReply("", 400), nullptr, 2, "Kind = HTTP, 400", true, {400}},
    {"401 while signed out", jsonReply("{}", 401), nullptr, 2, "Kind = HTTP, 401"},
    {"offline", failedReply(url_error::notConnectedToInternet), connectionMessage, 3, "Kind = CONNECTION"},
    {"timed out", failedReply(url_error::timedOut), connectionMessage, 3, "Kind = TIMEOUT"},
    {"both", failedReply(url_error::timedOut), connectionMessage, 3, "Kind = CONNECTION", false},
    {"refused", failedReply(url_error::cannotConnectToHost), unexpectedMessage, 6,
     "Error: NSURLErrorDomain -1004 scripted failure"},
    {"unreachable", failedReply(url_error::cannotConnectToHost), connectionMessage, 3, "Kind = CONNECTION",
     false},
    {"status while unreachable", jsonReply("{}", 503), unexpectedMessage, 2, "Kind = HTTP, 503", false},
    {"cancelled", failedReply(url_error::cancelled), nullptr, 5, "", false}};

class OutcomeTest : public ServiceTest {};

TEST_F(OutcomeTest, IsClassifiedShownOnceAndThenCompleted) {
  for (const Case& each : outcomes) {
    reachability.reachable = each.reachable;
    transport.answer("/vehicles", each.reply);
    const auto before = static_cast<std::ptrdiff_t>(log.lines().size());
    API::getWithPath("/vehicles", modelClass<VehiclesResponse>, each.errorCodes, completed());
    queues.runUntilIdle();
    const std::string status = std::to_string(each.reply.status);
    std::vector<std::string> expected{"completed " + std::to_string(each.kind) + ", " + status +
                                      (each.kind == 0 ? ", a record" : "")};
    if (each.message) expected.insert(expected.begin(), each.message);
    EXPECT_EQ(takeEvents(), expected) << each.name;

    std::vector<std::string> logged;
    if (!each.logged.empty()) logged.push_back(each.logged);
    if (each.kind > 1) logged.push_back(each.reply.body + ", " + status);
    const auto lines = log.lines();
    EXPECT_EQ(std::vector(lines.begin() + before + 2, lines.end()), logged) << each.name;
  }
}

class CompletionTest : public ServiceTest {};

TEST_F(CompletionTest, CarriesTheServicesOwnErrorBehindTheGenericMessage) {
  transport.answer("/live",
                   jsonReply(R"({"total":1,"error":{"code":401,"description":"No such car"},"live":null})"));
  API::getWithPath("/live", modelClass<LiveResponse>, {}, completed());
  queues.runUntilIdle();
  EXPECT_THAT(takeEvents(), ElementsAre(dataMessage, "completed 1, 200")) << "not an expired session";
  ASSERT_TRUE(lastError);
  EXPECT_EQ(lastError->domain, "");
  EXPECT_EQ(lastError->code, 401);
  EXPECT_EQ(lastError->localizedDescription, "No such car");

  transport.answer("/live", jsonReply(R"({"total":1})"));
  API::getWithPath("/live", modelClass<LiveResponse>, {}, completed());
  queues.runUntilIdle();
  EXPECT_EQ(lastError->domain, "JSONModelErrorDomain");
  EXPECT_EQ(lastError->code, 1);
}

TEST_F(CompletionTest, WithoutAModelClassTakesAnyBodyAndGetsNoRecord) {
  device.translations["An unexpected error occurred, please try again"] = "Nieoczekiwany błąd";
  transport.answerOnce("/logout", reply(200, "text/html", "<p>bye"));
  transport.answerOnce("/logout", reply(500, "text/html", ""));
  for (int i = 0; i < 2; ++i) {
    API::postWithPath("/logout", {{"uid", "1"}}, noModelClass, {}, completed());
    queues.runUntilIdle();
  }
  EXPECT_THAT(events, ElementsAre("completed 0, 200", "toast: Nieoczekiwany błąd", "completed 2, 500"));
}

TEST_F(CompletionTest, ThatNobodyWaitsForShowsNothingAndKeepsTheSession) {
  API::loginUserWithToken("t");
  takeEvents();
  transport.answer("/live", jsonReply("{}", 401));
  API::getWithPath("/live", modelClass<LiveResponse>, {}, nullptr);
  queues.runUntilIdle();
  EXPECT_THAT(events, IsEmpty());
  EXPECT_TRUE(API::isLogged());
}

TEST_F(CompletionTest, ReportsARequestThatCannotBeBuilt) {
  class Throwing final : public Transport {
    void send(HttpRequest, Done) override { throw std::runtime_error("no memory"); }
  } throwing;
  install(queues, throwing);
  API::configureRequest();
  API::getWithPath("/live", modelClass<LiveResponse>, {}, completed());
  queues.advance(Seconds(1));
  EXPECT_THAT(events, ElementsAre(unexpectedMessage, "completed 6, 0"));
  EXPECT_FALSE(lastError);
  EXPECT_FALSE(indicator.visible);
}

TEST_F(CompletionTest, NetworkIndicatorOutlastsTheLastOperationBriefly) {
  API::configureRequest();
  transport.leaveOpen("/live");
  const auto start = [&] { API::getWithPath("/live", modelClass<LiveResponse>, {}, nullptr); };
  const auto end = [&] { transport.answerOpen("/live", jsonReply("{}")); };
  const auto isVisibleAfter = [&](double seconds) {
    queues.advance(Seconds(seconds));
    return indicator.visible;
  };
  start();
  start();
  queues.runUntilIdle();
  end();
  EXPECT_TRUE(isVisibleAfter(1)) << "one of two still runs";
  end();
  EXPECT_TRUE(isVisibleAfter(0.16));
  start();
  EXPECT_TRUE(isVisibleAfter(0.1)) << "a new operation within the delay keeps it";
  end();
  EXPECT_TRUE(isVisibleAfter(0.1));
  start();
  queues.runUntilIdle();
  end();
  EXPECT_TRUE(isVisibleAfter(0.1)) << "the delay begins anew";
  EXPECT_FALSE(isVisibleAfter(0.08));
  EXPECT_EQ(indicator.changes, 2);

  APIHTTPClient::setControlsNetworkIndicator(false);
  start();
  EXPECT_FALSE(isVisibleAfter(0));
}

}  // namespace
}  // namespace fleetor::test
