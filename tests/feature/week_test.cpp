#include <malloc.h>

#include <random>

#include "support/client.h"

namespace fleetor::test {
namespace {

constexpr double hour = 3600;

/// A signed-in phone whose service spoils a fifth of its answers.
class Week : public testing::Test {
 protected:
  Week() {
    client.start();
    Viewport eyes(client.vehicles());
    client.settle();
    for (const char* path : {"/vehicles", "/live", "/map", "/route", "/info"})
      client.transport.answer(path, [this, path](const HttpRequest& request) {
        ++asked[path];
        if (chance() % 5 > 0) return std::optional(whole(path, request));
        ++failed[path];
        return std::optional(spoiled());
      });
  }

  HttpReply spoiled() {
    const HttpReply kinds[] = {failedReply(url_error::timedOut), reply(500, "text/html", "<h1>Sorry</h1>"),
                               jsonReply(R"({"total":1,"err)"), jsonReply(""),
                               jsonReply(envelope(0, "", 500))};
    return kinds[chance() % std::size(kinds)];
  }

  // The vehicle drives to and fro.
  HttpReply whole(const std::string& path, const HttpRequest& request) {
    if (path == "/vehicles") return vehiclesPage(request, 45, 45);
    if (path == "/map") return mapReply({"", "Parking", ""});
    if (path == "/route") return routeReply(2);
    if (path == "/info") return infoReply();
    return liveReply(numberOf(request.url, "vehid"), 57, asked[path] % 2 ? "50.06" : "50.07");
  }

  /// A day: the vehicle's pages, then a night with the list. The heap that is in use at its end, in bytes.
  std::size_t liveThroughADay() {
    auto* pager = client.open(1);
    client.advance(hour);
    for (int page = 1; page < 5; ++page) {
      pager->pagesTabBar().tap(page);
      client.advance(3 * hour);
    }
    client.tapLeftButtonOf(*pager);
    client.advance(11 * hour);
    client.takeMessages();
    client.takeRequests();
    client.log.forget();
    return mallinfo2().uordblks;
  }

  std::mt19937 chance{7};
  std::map<std::string, int> asked;
  std::map<std::string, int> failed;
  Client client;
};

TEST_F(Week, AsksAsOftenAsTheIntervalAllowsAndKeepsNothingOfTheDaysBefore) {
  const std::size_t first = liveThroughADay();
  for (int day = 2; day < 7; ++day)
    liveThroughADay();
  const std::size_t last = liveThroughADay();

  EXPECT_EQ(asked["/live"], 7 * (13 * 240 + 2)) << "the first, and the one that was still to come";
  EXPECT_EQ(asked["/map"], 7);
  EXPECT_EQ(asked["/route"], 7);
  EXPECT_EQ(asked["/info"], 7 + failed["/info"]) << "again with the poll after a failure";
  EXPECT_EQ(asked["/vehicles"], 0);
  EXPECT_GT(failed["/live"], 4000);
  EXPECT_LT(last, first + 16'384) << "bytes of the heap in use; a pager has more";
  EXPECT_TRUE(API::isLogged());
}

}  // namespace
}  // namespace fleetor::test
