#include "lone_page.h"
#include "vehicle/about_detail_view_controller.h"
#include "vehicle/info_detail_view_controller.h"
#include "vehicle/live_detail_view_controller.h"
#include "vehicle/map_detail_view_controller.h"
#include "vehicle/route_detail_view_controller.h"

namespace fleetor::test {
namespace {

std::vector<std::string> titlesOf(const ActionSheet& sheet) {
  std::vector<std::string> titles;
  for (const SheetEntry& entry : sheet.content().entries)
    titles.push_back(entry.title);
  return titles;
}

using SharingInfo = LonePage<InfoDetailViewController>;

TEST_F(SharingInfo, TheAddressLeadsToASheetThatHandsThePositionOn) {
  constexpr int addressRow = 5;
  auto& window = client.application.window();
  pollBrings(liveAt("50.06143", "19.93744"));
  page->itemsTableView().tap(addressRow);
  ASSERT_TRUE(window.actionSheet());
  EXPECT_EQ(window.actionSheet()->content().message, "Long Street 5\n2026-03-10 08:00:15");
  EXPECT_THAT(titlesOf(*window.actionSheet()),
              ElementsAre("Copy the coordinates", "Copy as degrees", "Open in a map program", "Send mail",
                          "Show a QR code"));
  window.actionSheet()->tapEntry(1);
  EXPECT_FALSE(window.actionSheet());
  EXPECT_EQ(phone.device.clipboard, "50°03′41.1″N 19°56′14.8″E");

  phone.device.unknownSchemes = {"mailto"};
  page->itemsTableView().tap(addressRow);
  ASSERT_EQ(titlesOf(*window.actionSheet()).size(), 4u) << "no entry for what no program does";
  window.actionSheet()->tapEntry(2);
  EXPECT_THAT(phone.device.openedURLs, ElementsAre("geo:50.061430,19.937440"));
  page->itemsTableView().tap(addressRow);
  window.actionSheet()->tapEntry(3);
  EXPECT_GT(window.actionSheet()->content().picture.side, 0);
  EXPECT_TRUE(window.goBack());
  EXPECT_FALSE(window.actionSheet());
}

TEST_F(SharingInfo, APositionThatIsNoneIsNotOffered) {
  for (const auto& [latitude, longitude] : {std::pair{"none", ""}, {"50.06 N", "19.9"}, {"50.06", ""}}) {
    pollBrings(liveAt(latitude, longitude));
    page->itemsTableView().tap(5);
    EXPECT_FALSE(client.application.window().actionSheet()) << latitude << " " << longitude;
  }
  pollBrings(liveAt("50,06143", "19,93744"));
  page->itemsTableView().tap(5);
  ASSERT_TRUE(client.application.window().actionSheet());
  EXPECT_EQ(client.application.window().actionSheet()->content().entries[0].detail, "50.061430, 19.937440");
}

using SharingLive = LonePage<LiveDetailViewController>;

TEST_F(SharingLive, TheCalloutOffersItsPosition) {
  auto& window = client.application.window();
  pollBrings(liveAt("50", "19.93744"));
  tap("sharePositionButton");
  EXPECT_FALSE(window.actionSheet()) << "no callout is open";
  for (const auto& [latitude, offered] :
       {std::pair{"50.06143", "50.061430, 19.937440"}, {"51,5", "51.500000, 19.937440"}, {"52.5 N", ""}}) {
    pollBrings(liveAt(latitude, "19.93744"));
    page->mapView().selectAnnotation(page->mapView().annotations().front());
    tap("sharePositionButton");
    const auto sheet = window.actionSheet();
    EXPECT_EQ(sheet ? sheet->content().entries[0].detail : "", offered) << latitude;
    if (!sheet) continue;
    EXPECT_EQ(sheet->content().message, "2026-03-10 08:00:15\nLong Street 5");
    EXPECT_TRUE(window.goBack());
  }
}

/// Entries of the sheet.
constexpr int pdf = 0, csv = 1, gpx = 2;

template <class Page>
class Exporting : public LonePage<Page> {
 protected:
  void save(int format) {
    this->tap("exportButton");
    this->client.application.window().actionSheet()->tapEntry(format);
    this->client.queues.runUntilIdle();
  }
};

using ExportingMap = Exporting<MapDetailViewController>;

TEST_F(ExportingMap, TakesWhatIsShownAndAsksForTheRest) {
  page->tabSelected();
  EXPECT_THAT(requests(), ElementsAre("GET /map?date=2026-03-10&vehid=7"));
  save(gpx);
  EXPECT_THAT(requests(), IsEmpty());
  EXPECT_THAT(documents.files["Van 2026-03-10.gpx"],
              HasSubstr("<trkpt lat=\"50.020000\" lon=\"19.940000\">"));
  EXPECT_THAT(client.takeMessages(), ElementsAre("Saved as ~/Van 2026-03-10.gpx [square]"));

  save(pdf);
  EXPECT_THAT(requests(), ElementsAre("GET /route?date=2026-03-10&vehid=7"));
  EXPECT_EQ(documents.files["Van 2026-03-10.pdf"], "%PDF");
  const auto& lines = documents.printed.lines;
  EXPECT_TRUE(std::ranges::any_of(lines, [](const PageLine& line) { return line.colour == 0x00ff00; }));

  documents.outcome = SaveOutcome::diskFull;
  save(gpx);
  documents.outcome = SaveOutcome::cancelled;
  save(gpx);
  client.transport.answer("/route", jsonReply(envelope(0, R"("route":[])")));
  save(csv);
  EXPECT_THAT(client.takeMessages(),
              ElementsAre("Saved as ~/Van 2026-03-10.pdf [square]", "Not saved: the disk is full [square]",
                          "There is nothing on this day [square]"));
}

using ExportingTrips = Exporting<RouteDetailViewController>;

TEST_F(ExportingTrips, SavesTheListAndAFailureIsReportedOnce) {
  page->tabSelected();
  EXPECT_THAT(requests(), ElementsAre("GET /route?date=2026-03-10&vehid=7"));
  save(csv);
  EXPECT_THAT(requests(), IsEmpty());
  EXPECT_THAT(documents.files["Van 2026-03-10.csv"],
              HasSubstr("\r\nDriving,08:00,08:12,12 min,12.5,Mill Lane,Harbour\r\n"));
  client.takeMessages();
  client.transport.answer("/map", jsonReply(envelope(0, "", 500)));
  save(gpx);
  EXPECT_EQ(client.takeMessages().size(), 1u);
  EXPECT_FALSE(documents.files.contains("Van 2026-03-10.gpx"));
  client.transport.answer("/map", mapReply({}));
  save(pdf);
  EXPECT_TRUE(documents.files.contains("Van 2026-03-10.pdf")) << "its trips are a day's log, too";
}

class MarkedAbout : public LonePage<AboutDetailViewController> {
 protected:
  MarkedAbout() {
    page = open();
    show();
  }

  std::shared_ptr<AboutDetailViewController> open() {
    auto made = std::make_shared<AboutDetailViewController>(client.environment, known);
    made->setVehicle(page->vehicle());
    onMark = made->marked.connect([this](const std::string& reason) { marks.push_back(reason); });
    return made;
  }
  static void receive(AboutDetailViewController& by, const char* odometer) {
    const auto live = liveAt("50", "20");
    live->odometer = odometer;
    by.receivedRecord(live);
  }

  std::shared_ptr<KnownInfo> known = std::make_shared<KnownInfo>();
  Connection onMark;
  std::vector<std::string> marks;
};

TEST_F(MarkedAbout, StatesWhatIsDueOnceBothSidesAreKnownAndMarksItsTab) {
  auto& overdue = outlet<Label>("overdueLabel");
  receive(*page, "150340");
  EXPECT_EQ(overdue.text(), "");
  poll(0);  // which makes it ask
  EXPECT_EQ(overdue.text(), "Distance service: 340 km overdue");
  EXPECT_THAT(marks, ElementsAre("Distance service: 340 km overdue"));
  receive(*page, "100000");
  EXPECT_EQ(overdue.text(), "");
  EXPECT_EQ(marks.back(), "");
}

TEST_F(MarkedAbout, MarksItsTabUnopenedByWhatTheSessionKnowsOfTheVehicle) {
  poll(0);
  client.takeRequests();
  const auto next = open();
  receive(*next, "150340");
  EXPECT_THAT(marks, ElementsAre("Distance service: 340 km overdue"));
  EXPECT_EQ(outletOf<Label>(*next, "overdueLabel").text(), "") << "its list is empty";
  EXPECT_THAT(requests(), IsEmpty());
  API::loginUserWithToken("of somebody else");
  marks.clear();
  receive(*open(), "150340");
  EXPECT_THAT(marks, IsEmpty());
}

}  // namespace
}  // namespace fleetor::test
