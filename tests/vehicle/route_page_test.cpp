#include "lone_page.h"
#include "vehicle/route_detail_view_controller.h"

namespace fleetor::test {
namespace {

/// Requests stay open until they are answered.
class RoutePage : public LonePage<RouteDetailViewController> {
 protected:
  RoutePage() { client.transport.leaveOpen("/route"); }

  void arrive(HttpReply reply) { answer("/route", std::move(reply)); }

  /// Each row as its height and what stands in it, the labels in the order of reading.
  std::vector<std::string> rows() {
    std::vector<std::string> texts;
    for (int row = 0; row < table.numberOfRows(); ++row) {
      const auto cell = table.cellForRow(row);
      std::string text = std::to_string(static_cast<int>(table.heightForRow(row)));
      if (auto* spinner = dynamic_cast<ActivityIndicator*>(cell->viewWithTag(123)))
        text += spinner->isAnimating() ? " ..." : " idle";
      else
        for (const char* name :
             {"statusLabel", "timeLabel", "durationLabel", "distanceLabel", "fromLabel", "toLabel"})
          text += "|" + outletOf<Label>(*cell, name).text();
      texts.push_back(text);
    }
    return texts;
  }

  TableView& table = page->itemsTableView();
};

/// What is drawn beside the labels: the picture and the time without the day.
std::string drawn(TableView& table, int row) {
  const auto cell = table.cellForRow(row);
  return outletOf<ImageView>(*cell, "kindImageView").image() + " " +
         outletOf<Label>(*cell, "clockLabel").text();
}

const std::string drive = "265|Driving|08:00|12 min|12.5 km|Mill Lane|Harbour";
const std::string stop = "265|Parking|08:12|1 h|0 km|Harbour|Harbour";

TEST_F(RoutePage, SpinsWhileItLoadsTodayAndThenListsTheTripsAsTheyWereSent) {
  EXPECT_THAT(rows(), IsEmpty());
  page->tabSelected();
  EXPECT_THAT(rows(), ElementsAre("60 ..."));
  EXPECT_THAT(requests(), ElementsAre("GET /route?date=2026-03-10&vehid=7"));
  arrive(routeReply(2));
  EXPECT_THAT(rows(), ElementsAre(drive, stop));
  EXPECT_EQ(drawn(table, 0), "RowDriving 08:00");
  EXPECT_EQ(drawn(table, 1), "parking 08:12");
  table.tap(1);
  EXPECT_FALSE(table.indexPathForSelectedRow());
  EXPECT_TRUE(table.copy(0));
  EXPECT_EQ(phone.device.clipboard, "Driving\n08:00\n12 min\n12.5 km\nMill Lane\nHarbour");
  page->tabSelected();
  EXPECT_THAT(requests(), IsEmpty());

  choose(7);  // no day
  EXPECT_THAT(requests(), IsEmpty());
  choose(std::string("2026-03-09"));
  EXPECT_THAT(rows(), ElementsAre("60 ..."));
  EXPECT_THAT(requests(), ElementsAre("GET /route?date=2026-03-09&vehid=7"));
  arrive(routeReply(0));
  EXPECT_THAT(rows(), IsEmpty());

  // What the service promised and did not send stands for ever.
  choose(std::string("2026-03-08"));
  arrive(routeReply(1, 2));
  EXPECT_THAT(rows(), ElementsAre(drive, "60 ..."));
  EXPECT_EQ(requests().size(), 1u);
}

TEST_F(RoutePage, ReadsTheHoursAndTheTotalsOfTheDayFromItsRows) {
  TimeRibbon& ribbon = page->dayRibbon();
  std::vector<int> wanted;
  const auto connection = table.rowWanted.connect([&wanted](int row) { wanted.push_back(row); });
  page->tabSelected();
  EXPECT_THAT(ribbon.stretches(), IsEmpty());
  arrive(routeReply(2));
  std::string totals;
  for (const auto& fact : page->dayTotals().facts())
    totals += fact.caption + " " + fact.value + ", ";
  EXPECT_EQ(totals,
            "Distance 12.5 km, Trips 1, Stops 1, Driving time 0:12 h, Standing time 1:00 h, "
            "First start 08:00, Last arrival 08:12, ");
  phone.device.languageCode = "de";
  choose(std::string("2026-03-10"));
  arrive(routeReply(2));
  EXPECT_EQ(page->dayTotals().facts().at(0).value, "12,5 km");
  EXPECT_EQ(ribbon.color(), (Color{0, 1, 0, 1}));
  ribbon.choose(8.5 * 3600);
  EXPECT_EQ(ribbon.description(), "08:12 to 09:12, parked, Harbour");
  ribbon.step(false);
  EXPECT_EQ(ribbon.description(), "08:00 to 08:12, driving, Harbour");
  ribbon.choose(0);
  EXPECT_EQ(ribbon.description(), "00:00 to 08:00, nothing known");
  EXPECT_THAT(wanted, ElementsAre(1, 0, 0));

  choose(std::string("2026-03-09"));
  EXPECT_THAT(page->dayTotals().facts(), IsEmpty());
  EXPECT_EQ(ribbon.stretches().size(), 1u) << "blank, and not gone, so that nothing jumps";
  ribbon.step(true);
  EXPECT_EQ(ribbon.description(), "");
  arrive(failedReply(url_error::notConnectedToInternet));
  EXPECT_THAT(ribbon.stretches(), IsEmpty());
}

TEST_F(RoutePage, IsEmptyAfterAFailureAndForADayChosenDuringALoad) {
  page->tabSelected();
  arrive(failedReply(url_error::notConnectedToInternet));
  EXPECT_THAT(rows(), IsEmpty());

  choose(std::string("2026-03-09"));
  choose(std::string("2026-03-08"));
  EXPECT_EQ(requests().size(), 2u);  // today and the 9th
  EXPECT_THAT(rows(), ElementsAre("60 ..."));
  arrive(routeReply(2));
  EXPECT_THAT(rows(), IsEmpty());
  EXPECT_EQ(page->date(), "2026-03-08");
  EXPECT_FALSE(page->isLoading());
  choose(std::string("2026-03-08"));
  arrive(routeReply(2));
  EXPECT_THAT(rows(), ElementsAre(drive, stop));
}

TEST_F(RoutePage, EmptiesInTheBackgroundAndHasItsDayBackBeforeItAsksWhoeverComesFirst) {
  choose(std::string("2026-03-05"));
  for (const bool pagerFirst : {true, false}) {
    requests();
    client.application.didEnterBackground();
    client.application.didEnterBackground();
    page->clearTabSelected();
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_FALSE(page->date() || page->isLoading());
    if (pagerFirst) page->tabSelected();
    client.application.willEnterForeground();
    if (!pagerFirst) page->tabSelected();
    EXPECT_THAT(requests(), ElementsAre("GET /route?date=2026-03-05&vehid=7"));
  }
  // All three asked for that day and are answered; it is listed once.
  for (int i = 0; i < 3; ++i)
    arrive(routeReply(2));
  EXPECT_THAT(rows(), ElementsAre(drive, stop));

  // Hidden it hears of no day, and from then on of no trip to the background.
  hide();
  requests();
  choose(std::string("2026-03-04"));
  show();
  client.application.didEnterBackground();
  EXPECT_THAT(requests(), IsEmpty());
  EXPECT_THAT(rows(), ElementsAre(drive, stop));
}

}  // namespace
}  // namespace fleetor::test
