#include "lone_page.h"
#include "vehicle/map_detail_view_controller.h"

namespace fleetor::test {
namespace {

/// Requests stay open until they are answered.
class MapPage : public LonePage<MapDetailViewController> {
 protected:
  MapPage() {
    client.transport.leaveOpen("/map");
    map.moveCamera([](MapCamera& camera) { camera.setViewport(390, 780); });
  }

  void arrive(HttpReply reply) { answer("/map", std::move(reply)); }
  /// The days asked for since the last time.
  std::vector<std::string> asked() {
    std::vector<std::string> days;
    for (const auto& request : requests()) {
      EXPECT_EQ(numberOf(request, "vehid"), 7) << request;
      days.push_back(parameterOf(request, "date"));
    }
    return days;
  }

  /// Each marker as its image and the number of its place, raised ones with a star, and the points of each
  /// line: "flag0 parking1 van4* 5".
  std::string drawn() {
    std::string text;
    for (const auto& annotation : map.annotations()) {
      const auto view = map.viewForAnnotation(*annotation);
      text += view->image() + annotation->title().back() + (view->zPosition() == 1000.0 ? "* " : " ");
    }
    for (const auto& overlay : map.overlays())
      text += std::to_string(overlay->coordinates().size());
    return text;
  }
  bool loading() {
    EXPECT_EQ(page->isLoading(), page->loadingIndicator().isAnimating());
    return page->isLoading();
  }

  MapView& map = page->mapView();
};

TEST_F(MapPage, DrawsTheDaysTrackItsEndsAndItsParkingStops) {
  EXPECT_FALSE(loading());
  page->tabSelected();
  EXPECT_TRUE(loading());
  EXPECT_THAT(asked(), ElementsAre("2026-03-10"));
  arrive(mapReply({"Parking", "Parking", "Car wash", "Parking", "Parking"}));
  EXPECT_FALSE(loading());
  EXPECT_EQ(drawn(), "flag0 parking1 parking3 van4* 5");
  std::vector<std::string> names;
  for (const auto& annotation : map.annotations())
    names.push_back(map.viewForAnnotation(*annotation)->accessibleName());
  EXPECT_THAT(names, ElementsAre("Start, Street 0, 08:00", "Parking stop, Street 1, 08:01",
                                 "Parking stop, Street 3, 08:03", "Vehicle, Street 4, 08:04"));
  EXPECT_EQ(map.viewForAnnotation(*map.annotations()[0])->centerOffset(), (ScreenPoint{0, -20}));
  const auto renderer = map.rendererForOverlay(*page->polyline());
  EXPECT_EQ(renderer->strokeColor(), (Color{0, 1, 0, 1}));
  EXPECT_EQ(renderer->lineWidth(), 2.0);
  EXPECT_EQ(page->polyline()->line()->nearestLevel(0), TrackLine::levelFor(map.camera().zoom()))
      << "the first frame has no line";
  for (const auto& annotation : map.annotations()) {
    const ScreenPoint at = map.camera().screenPoint(project(annotation->coordinate()));
    EXPECT_TRUE(at.x >= 47 && at.x <= 343 && at.y >= 47 && at.y <= 733) << at.x << " " << at.y;
  }

  // A used marker loses the height and the offset that it had before, and the callout.
  map.selectAnnotation(map.annotations()[0]);
  choose(std::string("2026-03-09"));
  arrive(mapReply({"", "Parking", "Parking", ""}, 1));
  EXPECT_EQ(drawn(), "van0* parking1 parking2 van3* 4");
  EXPECT_FALSE(map.selectedAnnotation());
  for (const auto& annotation : map.annotations())
    EXPECT_EQ(map.viewForAnnotation(*annotation)->centerOffset(), ScreenPoint{});
}

TEST_F(MapPage, KeepsWhatADayWithoutPointsAndAFailureLeaveAlone) {
  int changes = 0;
  const auto connection = page->dayChanged.connect([&changes] { ++changes; });
  page->tabSelected();
  arrive(mapReply({"", "", ""}));
  const auto line = page->polyline();
  EXPECT_EQ(drawn(), "flag0 van2* 3");
  const auto next = [this](HttpReply reply) {
    choose(std::string("2026-03-09"));
    arrive(std::move(reply));
    EXPECT_FALSE(loading());
    return drawn();
  };
  for (const HttpReply& nothing :
       {mapReply({}), failedReply(url_error::notConnectedToInternet), jsonReply(envelope(2, ""))}) {
    EXPECT_EQ(next(nothing), "flag0 van2* 3");
    EXPECT_EQ(page->dayPoints()->size(), 3u);
    EXPECT_EQ(changes, 1);
  }
  EXPECT_EQ(next(mapReply({"Parking"}, 5)), "van0* 3");
  EXPECT_EQ(page->dayPoints()->size(), 1u);
  EXPECT_EQ(page->polyline(), line);
  EXPECT_NEAR(map.centerCoordinate().latitude, 50, 1e-6);
  // The service's count decides, not the number of points that come with it.
  EXPECT_EQ(next(mapReply({"", "", ""}, 0, 1)), "flag0 van2* 3");
  EXPECT_EQ(page->polyline(), line);
  EXPECT_EQ(next(mapReply({}, 0, 2)), "0");
  choose(7);
  EXPECT_EQ(asked().size(), 7u);
}

TEST_F(MapPage, DrawsWhatTheRibbonLeavesBlankAsAGapOfTheLine) {
  page->tabSelected();
  HttpReply day = mapReply({"", "", "", ""});
  for (const char* const time : {"08:02", "08:03"})
    day.body.replace(day.body.find(time), 5, time[4] == '2' ? "08:30" : "08:31");
  arrive(day);
  ASSERT_TRUE(page->polylineRenderer()->gaps());
  EXPECT_THAT(*page->polylineRenderer()->gaps(), ElementsAre(1));
  EXPECT_EQ(page->polyline()->coordinates().size(), 4u);
  choose(std::string("2026-03-09"));
  arrive(mapReply({"", "", ""}));
  EXPECT_FALSE(page->polylineRenderer()->gaps());
}

TEST_F(MapPage, SharesTheStrictReadingOfAStopsPositionOrNothing) {
  page->tabSelected();
  HttpReply day = mapReply({"", "Parking", "Parking", ""});
  for (const auto& [number, text] : {std::pair{"50.01", "50,0123"}, {"50.02", "50.02 N"}})
    day.body.replace(day.body.find(number), 5, text);
  arrive(day);
  auto& share = outlet<Button>("sharePositionButton");
  auto& window = client.application.window();
  map.selectAnnotation(map.annotations()[1]);
  share.tap();
  ASSERT_TRUE(window.actionSheet());
  EXPECT_EQ(window.actionSheet()->content().entries[0].detail, "50.012300, 19.940000");
  window.actionSheet()->tapEntry(0);
  map.selectAnnotation(map.annotations()[2]);
  EXPECT_FALSE(share.enabled());

  // The line goes through places that the texts do not mean.
  page->replay().setOpen(true);
  const auto& shareMoment = outlet<Button>("shareMomentButton");
  EXPECT_TRUE(shareMoment.enabled());
  page->replay().moveTo(8 * 3600 + 30);
  EXPECT_FALSE(shareMoment.enabled());
  page->replay().moveTo(8 * 3600 + 180);
  EXPECT_TRUE(shareMoment.enabled());
}

TEST_F(MapPage, IsCoveredUntilATrackIsDrawnOrADayWithoutOneLeavesTheLastPosition) {
  const auto shown = [this] { return std::string(map.isCovered() ? "covered" : "map"); };
  const auto after = [&](HttpReply reply) {
    choose(std::string("2026-03-09"));
    arrive(std::move(reply));
    return shown();
  };
  const HttpReply empty = mapReply({});
  const HttpReply lost = failedReply(url_error::notConnectedToInternet);
  page->tabSelected();
  EXPECT_EQ(shown(), "covered");
  arrive(empty);
  EXPECT_EQ(shown(), "covered");
  EXPECT_EQ(after(lost), "covered");
  EXPECT_EQ(after(mapReply({}, 0, 2)), "covered");
  page->receivedPosition({51, 21});
  EXPECT_EQ(shown(), "map");
  EXPECT_NEAR(map.centerCoordinate().latitude, 51, 1e-6);
  EXPECT_NEAR(390 / map.camera().scale() * metresPerWorldUnit(51), 2000, 1);
  page->receivedPosition({52, 21});
  EXPECT_NEAR(map.centerCoordinate().latitude, 51, 1e-6) << "where the user may be looking around";
  choose(std::string("2026-03-08"));
  EXPECT_EQ(shown(), "covered");
  arrive(lost);
  EXPECT_EQ(shown(), "map");

  EXPECT_EQ(after(mapReply({"", ""})), "map");
  EXPECT_EQ(after(empty), "map");
  EXPECT_EQ(after(lost), "map");
  choose(std::string("2026-03-08"));
  EXPECT_EQ(shown(), "map") << "the picture from before stays";
}

TEST_F(MapPage, EmptiesInTheBackgroundAndLoadsItsDayAgain) {
  choose(std::string("2026-03-05"));
  arrive(mapReply({"Parking", ""}));
  page->tabSelected();
  asked();
  EXPECT_THAT(page->dayPoints()->seconds, ElementsAre(28800, 28860));
  page->dayRibbon().choose(28830);
  EXPECT_EQ(page->dayRibbon().description(), "08:00 to 08:01, parked, Street 0");
  client.application.didEnterBackground();
  EXPECT_FALSE(page->dayPoints());
  EXPECT_THAT(page->dayRibbon().stretches(), IsEmpty());
  page->clearTabSelected();
  EXPECT_EQ(drawn(), "");
  EXPECT_FALSE(page->polyline() || page->polylineRenderer() || page->date() || loading());
  arrive(mapReply({"", ""}));  // too late
  EXPECT_EQ(drawn(), "");
  client.application.willEnterForeground();
  page->tabSelected();
  EXPECT_THAT(asked(), ElementsAre("2026-03-05"));
  hide();
  arrive(mapReply({"", ""}));
  EXPECT_EQ(map.overlays().size(), 1u);
  show();
  EXPECT_EQ(drawn(), "flag0 van1* 2");
}

TEST_F(MapPage, ReplaysTheDayOnItsLineAndPausesInTheBackgroundAndOnAnotherPage) {
  page->tabSelected();
  arrive(mapReply({"", "", ""}));
  tap("replayButton");
  ASSERT_TRUE(map.traveller());
  EXPECT_EQ(map.traveller()->line, page->polyline());
  EXPECT_EQ(map.traveller()->image, "van");
  DayReplay& replay = page->replay();
  auto& ribbon = outlet<TimeRibbon>("dayRibbon");
  EXPECT_EQ(ribbon.moment(), 8 * 3600);
  ribbon.choose(8 * 3600 + 90);
  EXPECT_NEAR(map.traveller()->passed, 1.5, 1e-9);
  auto& share = outlet<Button>("shareMomentButton");
  auto& window = client.application.window();
  replay.togglePlaying();
  share.tap();
  EXPECT_FALSE(replay.state().playing) << "the place does not change below the sheet";
  ASSERT_TRUE(window.actionSheet());
  EXPECT_EQ(window.actionSheet()->content().message, "2026-03-10 08:01:30\nStreet 1");
  window.actionSheet()->tapEntry(0);
  EXPECT_EQ(phone.device.clipboard.substr(0, 7), "50.0150");
  client.takeMessages();
  replay.setOpen(false);
  EXPECT_FALSE(ribbon.moment());
  share.tap();
  EXPECT_FALSE(window.actionSheet());
  ribbon.choose(8 * 3600 + 60);
  EXPECT_NEAR(map.traveller()->passed, 1, 1e-9);
  replay.togglePlaying();
  EXPECT_TRUE(replay.state().playing);
  hide();
  EXPECT_FALSE(replay.state().playing);
  show();
  replay.togglePlaying();
  client.application.didEnterBackground();
  EXPECT_TRUE(replay.state().open);
  EXPECT_FALSE(replay.state().playing);
  client.application.willEnterForeground();

  choose(std::string("2026-03-09"));
  arrive(mapReply({"", ""}));
  EXPECT_EQ(map.traveller()->line, page->polyline()) << "the other day";
  page->clearView();
  EXPECT_FALSE(map.traveller());
}

}  // namespace
}  // namespace fleetor::test
