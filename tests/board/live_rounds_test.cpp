#include "board/live_rounds.h"

#include "support/testing.h"
#include "support/virtual_queues.h"

namespace fleetor::test {
namespace {

/// Every request is answered after `latency` with the vehicle's outcome; a request that is sent while another
/// one is in flight fails the test.
class Rounds : public testing::Test {
 protected:
  void ask(std::int64_t id) {
    EXPECT_FALSE(inFlight) << "two at a time";
    inFlight = true;
    asked.push_back(id);
    at.push_back(queues.elapsed().count());
    queues.mainAfter(latency, [this, id] {
      inFlight = false;
      rounds.ended(outcomes[id]);
    });
  }
  std::vector<std::int64_t> askedIn(double seconds) {
    asked.clear();
    at.clear();
    queues.advance(Seconds(seconds));
    return asked;
  }

  VirtualQueues queues;
  Seconds latency{0.1};
  std::map<std::int64_t, LiveRounds::Outcome> outcomes;
  std::vector<std::int64_t> asked;
  std::vector<double> at;
  bool inFlight = false;
  LiveRounds rounds{queues, queues, [this](std::int64_t id) { ask(id); }};
};

TEST_F(Rounds, AskOneAtATimeAtMostTwiceASecondAndEachEvery15Seconds) {
  rounds.setVehicles({7, 5, 6});
  EXPECT_THAT(askedIn(60), IsEmpty()) << "not visible";
  rounds.setRunning(true);
  EXPECT_THAT(askedIn(15), ElementsAre(5, 6)) << "the first one was asked at once";
  EXPECT_THAT(askedIn(15), ElementsAre(7, 5, 6));
  EXPECT_GE(at[1] - at[0], 0.5);

  std::vector<std::int64_t> many(60);
  for (std::size_t i = 0; i < many.size(); ++i)
    many[i] = static_cast<std::int64_t>(100 + i);
  rounds.setVehicles(many);
  EXPECT_THAT(askedIn(29).size(), AllOf(testing::Ge(55u), testing::Le(58u)))
      << "more than 15 seconds' worth: two a second";
  latency = Seconds(3);
  askedIn(10);
  EXPECT_LE(askedIn(30).size(), 11u) << "a slow service sets the pace";
}

TEST_F(Rounds, LeaveWhatWasHeardOfJustNowUntilItIsDue) {
  const Seconds start = queues.uptime();
  rounds.setVehicles({1, 2}, [&](std::int64_t id) { return start + Seconds(id == 1 ? 10 : 0); });
  rounds.setRunning(true);
  EXPECT_THAT(asked, ElementsAre(2));
  asked.clear();
  EXPECT_THAT(askedIn(9), IsEmpty());
  EXPECT_THAT(askedIn(2), ElementsAre(1));
}

TEST_F(Rounds, StopWhenHiddenAndGoOnWithWhatIsDue) {
  rounds.setVehicles({1, 2});
  rounds.setRunning(true);
  askedIn(0.3);
  rounds.setRunning(false);
  EXPECT_THAT(askedIn(60), IsEmpty());
  asked.clear();
  rounds.setRunning(true);
  EXPECT_THAT(askedIn(1), ElementsAre(1));
  rounds.setRunning(false);
  asked.clear();
  rounds.setRunning(true);
  EXPECT_THAT(asked, IsEmpty()) << "both were answered a moment ago";
  askedIn(20);
  rounds.setRunning(false);
  queues.advance(Seconds(60));
  EXPECT_EQ(queues.waiting(), 0u) << "nothing waits for a hidden board";
}

TEST_F(Rounds, BackOffFromAVehicleThatFailsAndForgetOneThatIsRemoved) {
  outcomes[1] = LiveRounds::Outcome::failed;
  rounds.setVehicles({1});
  rounds.setRunning(true);
  askedIn(1000);
  std::vector<double> pauses;
  for (std::size_t i = 1; i < at.size(); ++i)
    pauses.push_back(std::round(at[i] - at[i - 1]));
  EXPECT_THAT(pauses, ElementsAre(60, 120, 240, 300)) << "after 30";
  outcomes[1] = LiveRounds::Outcome::received;
  askedIn(300);
  EXPECT_GE(askedIn(60).size(), 3u) << "it answers again";

  rounds.setVehicles({2, 1});
  askedIn(0.05);
  rounds.setVehicles({1});  // while 2 is in flight
  EXPECT_THAT(askedIn(60), Each(1));
  EXPECT_FALSE(asked.empty());
}

TEST_F(Rounds, LetAllWaitWhileNothingCanBeReached) {
  for (int id = 1; id <= 8; ++id)
    outcomes[id] = LiveRounds::Outcome::unreachable;
  rounds.setVehicles({1, 2, 3, 4, 5, 6, 7, 8});
  rounds.setRunning(true);
  EXPECT_THAT(askedIn(110), ElementsAre(2, 3, 4)) << "after 15, 30 and 60 seconds";
  for (int id = 1; id <= 8; ++id)
    outcomes[id] = LiveRounds::Outcome::received;
  EXPECT_GE(askedIn(65).size(), 8u);
  outcomes[5] = LiveRounds::Outcome::unreachable;
  askedIn(16);
  rounds.setRunning(false);
  asked.clear();
  rounds.setRunning(true);
  askedIn(15);
  EXPECT_FALSE(asked.empty()) << "who comes back does not wait";
}

}  // namespace
}  // namespace fleetor::test
