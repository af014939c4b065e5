#include <any>

#include "support/client.h"
#include "ui/controls/action_sheet_date_picker.h"
#include "vehicle/notifications.h"
#include "vehicle/track_page_view_controller.h"

namespace fleetor::test {
namespace {

class Pager : public testing::Test {
 protected:
  Pager() {
    client.start();
    screen = client.open(2);
    swipe = screen->swipeTabBarController();
    client.center.addObserver(this, kFleetorNotificationLive, [this](const Notification& notification) {
      posts.push_back(notification.object);
    });
  }
  void TearDown() override { client.center.removeObserver(this); }

  /// Which pages have been selected since they were last cleared, one letter a page.
  std::string selected() {
    std::string pages;
    for (const auto& page : swipe->viewControllers())
      pages += std::static_pointer_cast<DetailPageViewController>(page)->wasSelected() ? 'x' : '-';
    return pages;
  }
  int tab() { return screen->pagesTabBar().indexOfItem(screen->pagesTabBar().selectedItem()); }

  Client client;
  VehicleViewController* screen = nullptr;
  std::shared_ptr<SwipeTabBarController> swipe;
  std::vector<std::any> posts;
};

TEST_F(Pager, SwipesAndTapsSelectAPageAndKeepTheTabInStep) {
  EXPECT_EQ(selected(), "x----");
  swipe->scrollToIndex(2);
  EXPECT_EQ(selected(), "x-x--");
  EXPECT_EQ(tab(), 2);
  screen->pagesTabBar().tap(4);
  EXPECT_EQ(selected(), "x-x-x");
  EXPECT_EQ(swipe->selectedIndex(), 4);

  client.application.didEnterBackground();
  EXPECT_EQ(selected(), "-----");
  screen->pagesTabBar().tap(4);  // the page that shows already
  EXPECT_EQ(selected(), "-----");
  client.application.willEnterForeground();
  EXPECT_EQ(selected(), "----x");

  // A swipe to where the tab bar stands already changes nothing.
  screen->pagesTabBar().setSelectedItem(screen->pagesTabBar().items()[1]);
  swipe->scrollToIndex(1);
  EXPECT_EQ(selected(), "----x");
}

TEST_F(Pager, PostsFailedPollsTooButNothingWhileHidden) {
  client.transport.answerOnce("/live", failedReply(url_error::notConnectedToInternet));
  client.advance(15);
  ASSERT_EQ(posts.size(), 1u);
  const auto* failure = std::any_cast<APIFailure>(&posts[0]);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->code, url_error::notConnectedToInternet);
  client.advance(15);
  ASSERT_EQ(posts.size(), 2u);
  EXPECT_EQ((*std::any_cast<std::shared_ptr<const Live>>(&posts[1]))->vehicle().vehicleId, 3);

  client.transport.leaveOpen("/live");
  client.advance(15);
  client.application.didEnterBackground();
  EXPECT_TRUE(client.transport.answerOpen("/live", liveReply(3, 50)));
  client.takeRequests();
  client.advance(100);
  EXPECT_EQ(posts.size(), 2u);
  EXPECT_TRUE(client.takeRequests().empty());
}

TEST_F(Pager, OpensTheMapsAtTheLastPositionOfItsVehicle) {
  client.transport.answerOnce("/live", liveReply(3, 57, "50.5"));
  client.advance(15);
  client.transport.answerOnce("/live", liveReply(7, 57, "10.0"));
  client.advance(15);
  for (const int tab : {1, 2}) {
    auto& page =
        dynamic_cast<TrackPageViewController&>(*swipe->viewControllers()[static_cast<std::size_t>(tab)]);
    EXPECT_NEAR(page.mapView().centerCoordinate().latitude, 50.5, 1e-6);
  }
}

TEST_F(Pager, PostsTheChosenDayEachTimeItIsConfirmed) {
  std::vector<std::string> days;
  client.center.addObserver(this, kFleetorNotificationDate, [&](const Notification& notification) {
    days.push_back(std::any_cast<std::string>(notification.object));
  });
  const Date start = screen->date();
  const auto ask = [&] {
    screen->navigationItem().rightBarButtonItems().at(0)->tap();
    return client.application.window().datePicker();
  };
  ask()->setSelectedDate(start + std::chrono::hours(240));
  client.application.window().datePicker()->cancel();
  EXPECT_EQ(ask()->selectedDate(), start);
  client.application.window().datePicker()->setSelectedDate(start + std::chrono::hours(24));
  client.application.window().datePicker()->done();
  ask()->done();
  EXPECT_THAT(days, ElementsAre("2026-03-11", "2026-03-11"));
}

TEST(ColorFromHexString, ReadsAllLengths) {
  const auto eighths = [](const char* text) {
    const Color color = DetailPageViewController::colorFromHexString(text);
    std::vector<long> bytes;
    for (const double component : {color.red, color.green, color.blue, color.alpha})
      bytes.push_back(std::lround(component * 255));
    return bytes;
  };
  EXPECT_THAT(eighths("#0f0"), ElementsAre(0, 255, 0, 255));
  EXPECT_THAT(eighths("00FF0080"), ElementsAre(0, 255, 0, 128));
  EXPECT_THAT(eighths("12zz56"), ElementsAre(0, 0, 0, 0x12));
  EXPECT_THAT(eighths("123456789"), ElementsAre(255, 255, 255, 255));
  EXPECT_THAT(eighths(""), ElementsAre(0, 0, 0, 0));
}

}  // namespace
}  // namespace fleetor::test
