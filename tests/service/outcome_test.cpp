#include "service/network_activity_indicator_manager.h"
#include "service_test.h"

namespace fleetor::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* emptyList = R"({"total":0,"error":{"code":200,"description":"OK"},"vehicles":[]})";

struct Case {
  const char* name;
  HttpReply reply;
  std::vector<std::string> events;
  std::vector<std::string> logged = {};  ///< after the two lines of the request
  bool reachable = true;
  ErrorCodes errorCodes = {};
};

void PrintTo(const Case& each, std::ostream* out) {
  *out << each.name;
}

class OutcomeTest : public ServiceTest, public testing::WithParamInterface<Case> {};

TEST_P(OutcomeTest, IsClassifiedShownOnceAndThenCompleted) {
  reachability.reachable = GetParam().reachable;
  transport.answer("/vehicles", GetParam().reply);
  API::getWithPath("/vehicles", modelClass<VehiclesResponse>, GetParam().errorCodes, completed());
  queues.runUntilIdle();
  EXPECT_EQ(events, GetParam().events);
  auto lines = log.lines();
  lines.erase(lines.begin(), lines.begin() + 2);
  EXPECT_EQ(lines, GetParam().logged);
}

INSTANTIATE_TEST_SUITE_P(
    All, OutcomeTest,
    testing::Values(Case{"success", jsonReply(emptyList), {"completed 0, 200, a record"}},
                    Case{"no JSON at all", jsonReply(""), {dataMessage, "completed 1, 200"}},
                    Case{"an array", jsonReply("[]"), {dataMessage, "completed 1, 200"}},
                    Case{"HTML page",
                         reply(200, "text/html", "<p>"),
                         {unexpectedMessage, "completed 2, 200"},
                         {"Kind = HTTP, 200", "<p>, 200"}},
                    Case{"HTML page that the caller handles",
                         reply(200, "text/html", "<p>"),
                         {"completed 2, 200"},
                         {"Kind = HTTP, 200", "<p>, 200"},
                         true,
                         {400, 200}},
                    Case{"broken JSON",
                         jsonReply("{"),
                         {unexpectedMessage, "completed 2, 200"},
                         {"Kind = HTTP, 200", "{, 200"}},
                    Case{"server error",
                         jsonReply("{}", 500),
                         {unexpectedMessage, "completed 2, 500"},
                         {"Kind = HTTP, 500", "{}, 500"}},
                    Case{"status that the caller handles",
                         jsonReply("", 400),
                         {"completed 2, 400"},
                         {"Kind = HTTP, 400", ", 400"},
                         true,
                         {400}},
                    Case{"401 while signed out",
                         jsonReply("{}", 401),
                         {"completed 2, 401"},
                         {"Kind = HTTP, 401", "{}, 401"}},
                    Case{"offline",
                         failedReply(url_error::notConnectedToInternet),
                         {connectionMessage, "completed 3, 0"},
                         {"Kind = CONNECTION", ", 0"}},
                    Case{"timed out",
                         failedReply(url_error::timedOut),
                         {connectionMessage, "completed 3, 0"},
                         {"Kind = TIMEOUT", ", 0"}},
                    Case{"timed out and unreachable",
                         failedReply(url_error::timedOut),
                         {connectionMessage, "completed 3, 0"},
                         {"Kind = CONNECTION", ", 0"},
                         false},
                    Case{"refused",
                         failedReply(url_error::cannotConnectToHost),
                         {unexpectedMessage, "completed 6, 0"},
                         {"Error: NSURLErrorDomain -1004 scripted failure", ", 0"}},
                    Case{"refused and unreachable",
                         failedReply(url_error::cannotConnectToHost),
                         {connectionMessage, "completed 3, 0"},
                         {"Kind = CONNECTION", ", 0"},
                         false},
                    Case{"status while unreachable",
                         jsonReply("{}", 503),
                         {unexpectedMessage, "completed 2, 503"},
                         {"Kind = HTTP, 503", "{}, 503"},
                         false},
                    Case{
                        "cancelled", failedReply(url_error::cancelled), {"completed 5, 0"}, {", 0"}, false}));

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
  transport.answer("/logout", reply(200, "text/html", "<p>bye"));
  API::postWithPath("/logout", {{"uid", "1"}}, noModelClass, {}, completed());
  queues.runUntilIdle();
  EXPECT_THAT(events, ElementsAre("completed 0, 200"));
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

TEST_F(CompletionTest, ShowsMessagesInTheLanguageOfTheDevice) {
  device.translations["An unexpected error occurred, please try again"] = "Nieoczekiwany błąd";
  transport.answer("/live", jsonReply("{}", 500));
  API::getWithPath("/live", modelClass<LiveResponse>, {}, completed());
  queues.runUntilIdle();
  EXPECT_THAT(events, ElementsAre("toast: Nieoczekiwany błąd", "completed 2, 500"));
}

TEST_F(CompletionTest, ReportsARequestThatCannotBeBuilt) {
  class Throwing final : public Transport {
    void send(HttpRequest, Done) override { throw std::runtime_error("no memory"); }
  } throwing;
  API::install({queues, throwing, keyStore, settings, reachability, indicator, log, device,
                [this](const std::string& text, double, bool) { events.push_back("toast: " + text); },
                [] {}});
  API::configureRequest();
  API::getWithPath("/live", modelClass<LiveResponse>, {}, completed());
  queues.advance(Seconds(1));
  EXPECT_THAT(events, ElementsAre(unexpectedMessage, "completed 6, 0"));
  EXPECT_FALSE(lastError);
  EXPECT_FALSE(indicator.visible);
}

TEST_F(CompletionTest, KeepsWhatItCapturesUntilItWasCalledAndNoLonger) {
  auto screen = std::make_shared<int>(1);
  transport.leaveOpen("/live");
  API::getWithPath("/live", modelClass<LiveResponse>, {}, [screen](auto&&...) {});
  queues.runUntilIdle();
  EXPECT_EQ(screen.use_count(), 2);
  transport.answerOpen("/live", jsonReply("{}"));
  queues.runUntilIdle();
  EXPECT_EQ(screen.use_count(), 1);
}

TEST_F(CompletionTest, NetworkIndicatorOutlastsTheLastOperationBriefly) {
  API::configureRequest();
  transport.leaveOpen("/live");
  const auto start = [&] {
    API::getWithPath("/live", modelClass<LiveResponse>, {}, nullptr);
    queues.runUntilIdle();
  };
  const auto end = [&] {
    ASSERT_TRUE(transport.answerOpen("/live", jsonReply("{}")));
    queues.runUntilIdle();
  };
  start();
  start();
  end();
  queues.advance(Seconds(1));
  EXPECT_TRUE(indicator.visible) << "one of two still runs";
  end();
  queues.advance(Seconds(0.16));
  EXPECT_TRUE(indicator.visible);
  start();
  queues.advance(Seconds(0.1));
  EXPECT_TRUE(indicator.visible) << "a new operation within the delay keeps it";
  end();
  queues.advance(Seconds(0.16));
  EXPECT_TRUE(indicator.visible);
  queues.advance(Seconds(0.02));
  EXPECT_FALSE(indicator.visible);
  EXPECT_EQ(indicator.changes, 2);

  APIHTTPClient::setControlsNetworkIndicator(false);
  start();
  EXPECT_FALSE(indicator.visible);
}

}  // namespace
}  // namespace fleetor::test
