#include <gmock/gmock.h>

#include <any>
#include <cmath>

#include "support/client.h"
#include "ui/action_sheet_date_picker.h"
#include "vehicle/notifications.h"

namespace fleetor::test {
namespace {

using testing::Each;
using testing::ElementsAre;

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
    pager = client.open(1);
  }

  /// Goes to that second after the first poll.
  void goTo(long second) {
    client.advance(opened + static_cast<double>(second) - client.queues.elapsed().count());
  }

  void choose(Date day) {
    pager->navigationItem().rightBarButtonItems().at(0)->tap();
    const auto picker = client.application.window().datePicker();
    picker->setSelectedDate(day);
    picker->done();
  }

  Client client;
  VehicleViewController* pager = nullptr;
  double opened = 0;
  bool answers = true;
  std::vector<long> polls;
};

TEST_F(Watching, ADayOfPollingWithTripsToTheBackgroundAndChosenDaysSendsEachPollInItsSecond) {
  std::vector<std::string> chosen;
  client.center.addObserver(this, kFleetorNotificationDate, [&](const Notification& notification) {
    chosen.push_back(std::any_cast<std::string>(notification.object));
  });
  std::vector<long> expected;
  std::vector<std::string> days;
  for (long hour = 0; hour < 24; ++hour) {
    const long start = hour * 3600;
    for (long second = start; second <= start + 2985; second += 15)
      expected.push_back(second);
    expected.push_back(
        start + 3000);  // was due already when the client went to the background; its answer is dropped

    choose(client.queues.now() + std::chrono::hours(24 * hour));
    days.push_back(client.queues.day(client.queues.now() + std::chrono::hours(24 * hour)));
    goTo(start + 2990);
    client.application.didEnterBackground();
    goTo(start + 3600);
    client.application.willEnterForeground();
  }
  client.queues.runUntilIdle();
  expected.push_back(24L * 3600);
  EXPECT_EQ(polls, expected);
  EXPECT_THAT(client.takeRequests(), Each("GET /live?vehid=2"));
  EXPECT_EQ(chosen, days);
  client.center.removeObserver(this);
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
  EXPECT_THAT(polls, testing::SizeIs(9));
  EXPECT_EQ(client.transport.openCount(), 1u);
  answers = true;
  client.transport.answerOpen("/live", liveReply(2, 57));
  goTo(115);
  EXPECT_THAT(std::vector(polls.begin() + 8, polls.end()), ElementsAre(70, 99, 114));
}

TEST(LongList, TenThousandVehiclesArriveInOrderWithOneRequestAPage) {
  Client client;
  serveFleet(client.transport, 10'000, 10'000);
  client.start();
  auto& table = client.vehicles();
  Viewport eyes(table);
  client.settle();
  while (table.numberOfRows() < 10'000) {
    const int before = table.numberOfRows();
    eyes.scrollToEnd();
    client.queues.runUntilIdle();
    ASSERT_GT(table.numberOfRows(), before - 1);
    ASSERT_LE(client.transport.count("/vehicles"), 500u);
  }
  const auto requests = client.takeRequests();
  ASSERT_EQ(requests.size(), 500u);
  for (std::size_t page = 0; page < requests.size(); ++page)
    EXPECT_EQ(requests[page], "GET /vehicles?limit=20&offset=" + std::to_string(page * 20));
  EXPECT_EQ(client.textOfRow(table, 9'999), "Vehicle 10000\nKR 10000");
}

}  // namespace
}  // namespace fleetor::test
