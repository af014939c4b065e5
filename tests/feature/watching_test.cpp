#include "support/client.h"

namespace fleetor::test {
namespace {

/// A signed-in phone with the second vehicle open; polls are noted by the second in which they were sent,
/// counted from the first.
class Watching : public testing::Test {
 protected:
  Watching() {
    client.start();
    Viewport eyes(client.vehicles());
    client.settle();
    client.transport.answer("/live", [this](const HttpRequest& request) {
      if (polls.empty()) opened = client.queues.elapsed().count();
      polls.push_back(std::lround(client.queues.elapsed().count() - opened));
      return answers ? std::optional(liveReply(numberOf(request.url, "vehid"), 57)) : std::nullopt;
    });
    client.takeRequests();
    client.open(1);
  }

  /// Goes to that second after the first poll.
  void goTo(long second) {
    client.advance(opened + static_cast<double>(second) - client.queues.elapsed().count());
  }

  Client client;
  double opened = 0;
  bool answers = true;
  std::vector<long> polls;
};

TEST_F(Watching, ADayOfPollingWithTripsToTheBackgroundSendsEachPollInItsSecond) {
  std::vector<long> expected;
  for (long hour = 0; hour < 24; ++hour) {
    const long start = hour * 3600;
    for (long second = start; second <= start + 2985; second += 15)
      expected.push_back(second);
    expected.push_back(
        start + 3000);  // was due already when the client went to the background; its answer is dropped

    goTo(start + 2990);
    client.application.didEnterBackground();
    goTo(start + 3600);
    client.application.willEnterForeground();
  }
  client.queues.runUntilIdle();
  expected.push_back(24L * 3600);
  EXPECT_EQ(polls, expected);
  EXPECT_THAT(client.takeRequests(), Each("GET /live?vehid=2"));
}

TEST_F(Watching, AQuickReturnRunsTwoLoopsThatNeverOverlap) {
  goTo(20);
  client.application.didEnterBackground();
  goTo(25);
  client.application.willEnterForeground();
  goTo(61);
  EXPECT_THAT(polls, ElementsAre(0, 15, 25, 30, 40, 45, 55, 60));

  // While one answer is late, the other loop's turn passes and that loop is over.
  answers = false;
  goTo(84);
  EXPECT_THAT(polls, SizeIs(9));
  EXPECT_EQ(client.transport.openCount(), 1u);
  answers = true;
  client.transport.answerOpen("/live", liveReply(2, 57));
  goTo(115);
  EXPECT_THAT(std::vector(polls.begin() + 8, polls.end()), ElementsAre(70, 99, 114));
}

}  // namespace
}  // namespace fleetor::test
