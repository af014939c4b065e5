#include "support/client.h"
#include "ui/controls/action_sheet_date_picker.h"
#include "ui/map/map_view.h"

namespace fleetor::test {
namespace {

/// The pages Map and Trips of vehicle 3; their requests stay open until they are answered.
class DayPages : public testing::Test {
 protected:
  static constexpr int map = 2;
  static constexpr int trips = 3;

  DayPages() {
    client.transport.leaveOpen("/map");
    client.transport.leaveOpen("/route");
    client.start();
    screen = client.open(2);
    go(map);
  }

  void go(int page) {
    screen->pagesTabBar().tap(page);
    client.queues.runUntilIdle();
  }
  template <class Kind>
  Kind& outlet(const char* name) {
    auto& pages = *screen->swipeTabBarController();
    const auto page = pages.viewControllers()[static_cast<std::size_t>(pages.selectedIndex())];
    return outletOf<Kind>(*page, name);
  }
  std::string tap(const char* button) {
    outlet<Button>(button).tap();
    client.queues.runUntilIdle();
    return bar();
  }
  std::string arrive(HttpReply reply) {
    const bool isMap = screen->swipeTabBarController()->selectedIndex() == map;
    EXPECT_TRUE(client.transport.answerOpen(isMap ? "/map" : "/route", std::move(reply)));
    client.queues.runUntilIdle();
    return bar();
  }
  std::string pick(int daysLater) {
    screen->navigationItem().rightBarButtonItems().at(0)->tap();
    auto& picker = *client.application.window().datePicker();
    picker.setSelectedDate(picker.selectedDate() + std::chrono::hours(24 * daysLater));
    picker.done();
    client.queues.runUntilIdle();
    return bar();
  }

  /// What the bar in view shows: "Today", "Fri, 6 Mar: the note [Try again]".
  std::string bar() {
    std::string text = outlet<Label>("dayLabel").text();
    if (const std::string note = outlet<Label>("dayNoteLabel").text(); !note.empty()) text += ": " + note;
    if (const auto& load = outlet<Button>("dayLoadButton"); load.enabled())
      text += " [" + load.accessibleName() + "]";
    return text;
  }
  /// The days asked for since the last time.
  std::vector<std::string> asked() {
    std::vector<std::string> days;
    for (const std::string& request : client.takeRequests())
      if (const std::string day = parameterOf(request, "date"); !day.empty()) days.push_back(day);
    return days;
  }

  Client client;
  VehicleViewController* screen = nullptr;
  const HttpReply track = mapReply({"", "", ""});
  const HttpReply lost = failedReply(url_error::notConnectedToInternet);
};

TEST_F(DayPages, ReportWhatTheMapShowsWhateverComesOfTheChosenDay) {
  EXPECT_EQ(bar(), "Today");
  EXPECT_EQ(arrive(track), "Today");
  EXPECT_FALSE(outlet<Button>("todayButton").enabled());
  EXPECT_EQ(tap("previousDayButton"), "Yesterday");
  EXPECT_EQ(arrive(mapReply({})), "Yesterday: No track on 9 Mar · shown: 10 Mar");
  EXPECT_TRUE(outlet<Button>("chooseDayButton").enabled());
  EXPECT_EQ(tap("previousDayButton"), "Sun, 8 Mar");
  EXPECT_EQ(arrive(lost), "Sun, 8 Mar: 8 Mar could not be loaded · shown: 10 Mar [Try again]");
  EXPECT_EQ(tap("dayLoadButton"), "Sun, 8 Mar");
  EXPECT_EQ(arrive(track), "Sun, 8 Mar");
  EXPECT_EQ(tap("dayButton"), "Sun, 8 Mar");
  EXPECT_EQ(arrive(lost), "Sun, 8 Mar: 8 Mar could not be loaded [Try again]");
  EXPECT_EQ(tap("todayButton"), "Today");
  EXPECT_THAT(asked(), ElementsAre("2026-03-10", "2026-03-09", "2026-03-08", "2026-03-08", "2026-03-08",
                                   "2026-03-10"));
  EXPECT_EQ(pick(-70), "Tue, 30 Dec 2025: loading: 10 Mar");
  EXPECT_EQ(arrive(track), "Tue, 30 Dec 2025: shown: 8 Mar · chosen: 30 Dec 2025 [Load]");
  EXPECT_THAT(asked(), IsEmpty());
  EXPECT_EQ(tap("dayLoadButton"), "Tue, 30 Dec 2025");
  EXPECT_THAT(asked(), ElementsAre("2025-12-30"));
  EXPECT_EQ(arrive(mapReply({}, 0, 5)), "Tue, 30 Dec 2025: No track on 30 Dec 2025") << "and none is shown";
}

TEST_F(DayPages, KeepTheLastStepUntilThePageHasItsAnswer) {
  EXPECT_EQ(tap("previousDayButton"), "Yesterday: loading: 10 Mar");
  EXPECT_EQ(tap("previousDayButton"), "Sun, 8 Mar: loading: 10 Mar");
  EXPECT_EQ(client.queues.day(screen->date()), "2026-03-08");
  EXPECT_EQ(arrive(track), "Sun, 8 Mar");
  EXPECT_THAT(asked(), ElementsAre("2026-03-10", "2026-03-08"));
  arrive(track);

  // To the day under way and back to it: its answer is enough.
  tap("nextDayButton");
  tap("nextDayButton");
  EXPECT_EQ(tap("previousDayButton"), "Yesterday");
  EXPECT_EQ(arrive(track), "Yesterday");
  EXPECT_THAT(asked(), ElementsAre("2026-03-09"));

  // The step waits for the page to come back, unless another day has been chosen meanwhile.
  for (const bool other : {false, true}) {
    tap("dayButton");
    tap("previousDayButton");
    go(trips);
    if (other) tap("nextDayButton");
    EXPECT_TRUE(client.transport.answerOpen("/map", track));
    client.queues.runUntilIdle();
    asked();
    go(map);
    EXPECT_THAT(asked().size(), other ? 0u : 1u);
    if (!other) arrive(track);
    if (!other) tap("nextDayButton"), arrive(track);
  }
}

TEST_F(DayPages, OfTwoPagesAgreeOnTheChosenDayAndEachReportsItsOwn) {
  arrive(track);
  go(trips);
  EXPECT_EQ(bar(), "Today");
  EXPECT_EQ(arrive(routeReply(2)), "Today");
  EXPECT_EQ(tap("previousDayButton"), "Yesterday");
  EXPECT_EQ(arrive(routeReply(0)), "Yesterday: No trips on 9 Mar");
  EXPECT_EQ(tap("dayButton"), "Yesterday");
  EXPECT_EQ(arrive(lost), "Yesterday: 9 Mar could not be loaded [Try again]");
  tap("dayButton");
  EXPECT_EQ(pick(-1), "Sun, 8 Mar: loading: 9 Mar");
  EXPECT_EQ(arrive(routeReply(2)), "Sun, 8 Mar: 8 Mar is not loaded [Load]");
  go(map);
  EXPECT_EQ(bar(), "Sun, 8 Mar: shown: 10 Mar · chosen: 8 Mar [Load]");
  EXPECT_EQ(tap("dayLoadButton"), "Sun, 8 Mar");
}

TEST_F(DayPages, ReportHowMuchOfASlowDayHasComeUntilItIsThere) {
  const auto progress = client.transport.last().progress;
  ASSERT_TRUE(progress);
  const auto shown = [this] { return outlet<Label>("dayProgressLabel").text(); };
  progress->received = 400'500;
  client.advance(0.9);
  EXPECT_EQ(shown(), "") << "most days come within a second";
  client.advance(0.2);
  EXPECT_EQ(shown(), "401 kB");
  progress->total = 1'234'567;
  client.advance(0.5);
  EXPECT_EQ(shown(), "401 of 1235 kB");
  arrive(track);
  EXPECT_EQ(shown(), "");
  client.advance(1);
  EXPECT_EQ(shown(), "");
}

TEST_F(DayPages, KnowThatTodayHasBecomeYesterday) {
  arrive(track);
  client.advance(16.0 * 3600);
  EXPECT_EQ(bar(), "Yesterday");
  EXPECT_TRUE(outlet<Button>("todayButton").enabled());
}

TEST_F(DayPages, OpenTheMapOnTheTripOfACardAndLeadBackToIt) {
  MapView& drawn = outlet<MapView>("mapView");
  const auto& page = *screen->swipeTabBarController();
  arrive(track);
  go(trips);
  arrive(routeReply(2));
  tap("previousDayButton");
  arrive(routeReply(2));  // from 08:00 to 08:12, and a stop
  auto& table = outlet<TableView>("itemsTableView");
  const auto tapCard = [&](int row) {
    table.tap(row);
    client.queues.runUntilIdle();
  };
  tapCard(1);
  EXPECT_EQ(page.selectedIndex(), trips);
  asked();
  tapCard(0);
  EXPECT_EQ(page.selectedIndex(), map);
  EXPECT_THAT(asked(), ElementsAre("2026-03-09"));
  EXPECT_EQ(outlet<Label>("tripLabel").text(), "08:00 · 12.5 km · 12 min");
  EXPECT_EQ(outlet<Label>("tripWayLabel").text(), "Mill Lane → Harbour");
  arrive(mapReply(std::vector<std::string>(10)));  // from 08:00 to 08:09
  const auto& lines = drawn.overlays();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1]->coordinates().size(), 10u);
  const auto alpha = [&](std::size_t line) {
    return drawn.rendererForOverlay(*lines[line])->strokeColor().alpha;
  };
  EXPECT_LT(alpha(0), alpha(1));
  const auto markers = [&] {
    std::vector<std::string> names;
    for (const auto& annotation : drawn.annotations())
      names.push_back(drawn.viewForAnnotation(*annotation)->accessibleName());
    return names;
  };
  EXPECT_THAT(markers(),
              ElementsAre("Start, Street 0, 08:00", "Vehicle, Street 9, 08:09",
                          "Start of the trip, Mill Lane, 08:00", "End of the trip, Harbour, 08:12"));
  drawn.selectAnnotation(drawn.annotations()[3]);
  tap("sharePositionButton");
  ASSERT_TRUE(client.application.window().actionSheet());
  EXPECT_EQ(client.application.window().actionSheet()->content().entries[0].detail, "50.090000, 19.940000");
  client.application.window().goBack();

  EXPECT_TRUE(client.application.window().goBack());
  EXPECT_EQ(page.selectedIndex(), trips);
  tapCard(0);
  EXPECT_THAT(asked(), IsEmpty());
  EXPECT_EQ(lines.size(), 2u);
  tap("tripCloseButton");
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(drawn.annotations().size(), 2u);
  EXPECT_EQ(alpha(0), 1);
  EXPECT_EQ(outlet<Label>("tripLabel").text(), "");

  // Points that end long before the trip does are not its own.
  tap("tripBackButton");
  tapCard(0);
  tap("dayButton");
  arrive(track);
  EXPECT_EQ(lines.size(), 1u);
  EXPECT_EQ(outlet<Label>("tripNoteLabel").text(), "The track has no points at the times of this trip");
  tap("previousDayButton");
  arrive(track);
  EXPECT_EQ(outlet<Label>("tripLabel").text(), "") << "it is not of this day";

  go(trips);
  tapCard(0);
  EXPECT_EQ(outlet<Label>("tripWayLabel").text(), "Mill Lane → Harbour");
  arrive(lost);
  EXPECT_EQ(outlet<Label>("tripWayLabel").text(), "") << "nor is its day on the map";
}

TEST_F(DayPages, KeepATripWhoseDayComesAfterTheOneThatTheMapOpensWith) {
  arrive(track);
  client.application.window().goBack();
  screen = client.open(1);
  go(trips);
  arrive(routeReply(2));
  tap("previousDayButton");
  arrive(routeReply(2));
  outlet<TableView>("itemsTableView").tap(0);
  client.queues.runUntilIdle();
  arrive(track);
  EXPECT_EQ(outlet<Label>("tripWayLabel").text(), "Mill Lane → Harbour");
  arrive(mapReply(std::vector<std::string>(10)));
  MapView& drawn = outlet<MapView>("mapView");
  drawn.moveCamera([](MapCamera& camera) { camera.setViewport(390, 700); });
  ASSERT_EQ(drawn.overlays().size(), 2u);

  // The replay gives way to a trip.
  outlet<Button>("replayButton").tap();
  EXPECT_TRUE(drawn.traveller());
  tap("tripBackButton");
  outlet<TableView>("itemsTableView").tap(0);
  client.queues.runUntilIdle();
  EXPECT_FALSE(drawn.traveller());
  while (drawn.camera().moving())
    drawn.advance(0.02);
  for (const auto& end :
       {drawn.overlays()[1]->coordinates().front(), drawn.overlays()[1]->coordinates().back()})
    EXPECT_NEAR(drawn.camera().screenPoint(project(end)).y, 350, 350);
}

TEST_F(DayPages, LeadFromAStopOnTheMapToItsCard) {
  MapView& drawn = outlet<MapView>("mapView");
  arrive(track);
  tap("previousDayButton");
  arrive(mapReply({"", "Parking", "", "Parking", ""}));  // a point each minute from 08:00
  const auto openStop = [&](std::size_t marker) {
    drawn.selectAnnotation(drawn.annotations().at(marker));
    return outlet<Button>("stopCardButton").enabled();
  };
  EXPECT_FALSE(openStop(0)) << "the flag is no stop";
  ASSERT_TRUE(openStop(1));
  tap("stopCardButton");
  std::vector<int> wanted;
  const Connection onRow =
      outlet<TableView>("itemsTableView").rowWanted.connect([&](int row) { wanted.push_back(row); });
  const auto row = [](const char* from, const char* to, const char* address) {
    return std::string(R"({"lp":1,"status":"","duration":"","distance":"0","from":"A","to":")") + address +
           R"(","timeFrom":")" + from + R"(","timeTo":")" + to + R"("})";
  };
  // To the minute, times may overlap: the trip is not the stop.
  const HttpReply rows = jsonReply(
      envelope(2, R"("route":[)" + row("08:00", "08:02", "B") + "," + row("08:01", "08:01", "A") + "]"));
  arrive(routeReply(2));
  EXPECT_THAT(wanted, IsEmpty()) << "today, while the stop is of yesterday";
  arrive(rows);
  EXPECT_THAT(wanted, ElementsAre(1));

  go(map);
  openStop(2);
  tap("stopCardButton");
  EXPECT_THAT(wanted, ElementsAre(1));
  EXPECT_THAT(client.takeMessages(), ElementsAre("The trips have no stop at this time [square]"));
}

// Each clock's noon in London falls on another day somewhere.
class ZoneClock final : public Clock {
 public:
  explicit ZoneClock(int hours) : offset_(hours) {}
  Date now() const override { return std::chrono::sys_days(std::chrono::year(2026) / 3 / 1); }
  std::string day(Date moment) const override { return VirtualQueues().day(moment + offset_); }
  std::string timeOfDay(Date moment) const override { return VirtualQueues().timeOfDay(moment + offset_); }
  std::chrono::duration<double> uptime() const override { return {}; }

 private:
  std::chrono::hours offset_;
};

TEST(DayChoice, StepsByTheCalendarInEveryTimeZone) {
  for (const int hours : {-12, -5, 0, 11, 12, 14}) {
    Client client;
    ZoneClock clock(hours);
    Environment environment{client.queues, client.machine.device, clock, client.center, client.appearance};
    DayChoice days(environment);
    const std::string start = days.day();
    days.selectLater(-1);
    EXPECT_EQ(days.day(), hours < 0 ? "2026-02-27" : "2026-02-28") << hours;
    days.selectLater(1);
    EXPECT_EQ(days.day(), start) << hours;
  }
}

}  // namespace
}  // namespace fleetor::test
