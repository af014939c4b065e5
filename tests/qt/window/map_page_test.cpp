#include "map_page_test.h"

#include "vehicle/live_detail_view_controller.h"
#include "vehicle/notifications.h"

namespace fleetor {
namespace {

TEST_F(MapPageTest, DrawsTilesAndOnThemTheLineInItsColourAndTheMarkersImage) {
  EXPECT_TRUE(colored({100, 200}, tileColor));
  page_->draw({at(-5000, 0), at(500, 0), at(500, 5000)});
  page_->map.addAnnotation(std::make_shared<StopMarker>(at(-1000, -1000)));
  const double pointsPerMetre = camera().scale() / metresPerWorldUnit(0);
  EXPECT_TRUE(colored({100, 300}, lineColor));
  EXPECT_TRUE(colored({static_cast<int>(200 + 500 * pointsPerMetre), 100}, lineColor));
  EXPECT_TRUE(colored({100, 305}, tileColor)) << "the line is too wide";
  const QPoint stop(static_cast<int>(200 - 1000 * pointsPerMetre),
                    static_cast<int>(300 + 1000 * pointsPerMetre));
  EXPECT_TRUE(colored(stop - QPoint(11, 0), QColor("#2f7fc2")));
  page_->offset = {0, -20};
  page_->map.addAnnotation(std::make_shared<StopMarker>(at(-1000, 1000)));
  EXPECT_TRUE(colored(QPoint(stop.x() - 11, 600 - stop.y() - 20), QColor("#2f7fc2")));

  // At the closest zoom, and with the world's seam in view, the line stays where it belongs.
  page_->map.moveCamera([](MapCamera& camera) { camera.moveTo({project(at(500, 0)), 20}, false); });
  EXPECT_TRUE(colored({100, 300}, lineColor));
  EXPECT_TRUE(colored({200, 100}, lineColor));
  page_->draw({{10, 179.99}, {10, -179.99}});
  page_->map.setRegion({10, 180}, 1000, 1000, false);
  EXPECT_TRUE(colored({100, 300}, lineColor));
  EXPECT_TRUE(colored({300, 300}, lineColor));
}

TEST_F(MapPageTest, DrawsALongLineOnceItIsPreparedAndWhatItGrowsBy) {
  std::vector<Coordinate> way;
  for (int i = 0; i <= 50'000; ++i)
    way.push_back(at(-5000 + i * 0.1, 0));
  auto line = MapPolyline::polylineWithCoordinates(way);
  page_->map.addOverlay(line);
  EXPECT_TRUE(colored({100, 200}, tileColor));
  EXPECT_NE(window_.grabWindow().pixelColor(100, 300), lineColor);
  queues_.runUntilIdle();
  EXPECT_TRUE(colored({100, 300}, lineColor));
  EXPECT_TRUE(colored({300, 300}, tileColor));

  page_->map.removeOverlay(line);
  page_->map.addOverlay(MapPolyline::polylineByAppendingCoordinate(*line, at(5000, 0)));
  EXPECT_TRUE(colored({300, 300}, lineColor));
}

// All points but the ends lie on the straight line between these, and are left out; their distances grow.
TEST_F(MapPageTest, DrawsALineStrongBehindWhatTravelsAlongItAndFaintAhead) {
  std::vector<Coordinate> way;
  for (int i = 0; i <= 1000; ++i)
    way.push_back(at(-2000 + i * i * 0.004, 0));
  const auto line = MapPolyline::polylineWithCoordinates(way);
  page_->map.addOverlay(line);
  EXPECT_TRUE(colored({300, 300}, lineColor));
  const auto isFaint = [this](int x) {
    const QColor seen = window_.grabWindow().pixelColor(x, 300);
    return seen != lineColor && seen.red() > tileColor.red() + 30;
  };
  page_->map.setTraveller(MapTraveller{line, project(at(-1000, 0)), 90, 500, "car"});
  EXPECT_TRUE(QTest::qWaitFor([&] { return isFaint(150); }));
  EXPECT_TRUE(colored({60, 300}, lineColor));
  page_->map.setTraveller(MapTraveller{line, project(at(890, 0)), 90, 850, "car"});
  EXPECT_TRUE(colored({250, 300}, lineColor));
  EXPECT_TRUE(isFaint(390));
  page_->map.setTraveller(std::nullopt);
  EXPECT_TRUE(colored({390, 300}, lineColor));
}

TEST_F(MapPageTest, DrawsGapsAsFaintDashesWhetherOrNotSomethingTravelsAlongTheLine) {
  const auto line = MapPolyline::polylineWithCoordinates(
      {at(-1900, 0), at(-1000, 0), at(1000, 0), at(1900, 0)});  // of which only the ends are kept
  page_->map.addOverlay(line);
  EXPECT_TRUE(colored({200, 300}, lineColor));
  page_->map.rendererForOverlay(*line)->setGaps(
      std::make_shared<const std::vector<std::uint32_t>>(std::vector<std::uint32_t>{1}));
  page_->map.redrawOverlays();
  /// What of the line is seen around there, the gap being from 100 to 300: '#' strong, '-' dashes, ':' faint.
  const auto around = [this](int x) {
    const QImage seen = window_.grabWindow();
    int strong = 0, tiles = 0;
    for (int i = x - 8; i < x + 8; ++i) {
      strong += seen.pixelColor(i, 300) == lineColor;
      tiles += seen.pixelColor(i, 300) == tileColor;
    }
    return strong == 16                             ? '#'
           : strong == 0 && tiles > 3 && tiles < 13 ? '-'
           : strong + tiles == 0                    ? ':'
                                                    : '?';
  };
  const auto becomes = [&](const std::string& wanted) {
    std::string seen;
    const auto look = [&] {
      seen = {around(60), around(140), around(200), around(310), around(378)};
      return seen == wanted;
    };
    return QTest::qWaitFor(look) ? wanted : seen;
  };
  EXPECT_EQ(becomes("#--##"), "#--##");
  page_->map.setTraveller(MapTraveller{line, project(at(500, 0)), 90, 1.75, ""});
  EXPECT_EQ(becomes("#--::"), "#--::");
  page_->map.setTraveller(MapTraveller{line, project(at(1450, 0)), 90, 2.5, ""});
  EXPECT_EQ(becomes("#--#:"), "#--#:");
}

TEST_F(MapPageTest, KeepsManyLinesInPlaceWhileTheMapMovesAndZooms) {
  page_->draw(upAndDown());
  const auto* const layer = within<LineLayer>(*window_.contentItem());
  ASSERT_NE(layer, nullptr);
  const auto isPicture = [&] {
    return layer->property("layer").value<QObject*>()->property("enabled").toBool();
  };
  const auto isRight = [&](double east, double north) {
    const QImage seen = window_.grabWindow();
    for (int i = 0; i < 3; ++i) {
      const double line = std::round(east / 200) * 200 + 200 * i;
      const auto [x, y] = camera().screenPoint(project(at(line, north)));
      const auto between = camera().screenPoint(project(at(line + 100, north))).x;
      if (seen.pixelColor(static_cast<int>(x), static_cast<int>(y)) != lineColor ||
          seen.pixelColor(static_cast<int>(between), static_cast<int>(y)) != tileColor)
        return false;
    }
    return true;
  };
  ASSERT_TRUE(QTest::qWaitFor([&] { return isRight(0, 0); }));
  EXPECT_FALSE(isPicture()) << "before anybody moves the map";

  int wrong = 0;
  for (int i = 1; i <= 50; ++i) {  // far beyond the picture that it began with
    const double east = i * 37.3;
    const double north = i * 53.1;
    page_->map.setCenterCoordinate(at(east, north), false);
    if (!QTest::qWaitFor([&] { return isPicture() && isRight(east, north); }, 1'000)) ++wrong;
  }
  EXPECT_EQ(wrong, 0);

  page_->map.moveCamera([](MapCamera& camera) { camera.zoomBy(0.8, {200, 300}); });
  EXPECT_TRUE(QTest::qWaitFor([&] { return isRight(1865, 2655); }, 1'000));
  page_->map.removeOverlay(page_->map.overlays().front());
  EXPECT_TRUE(QTest::qWaitFor([&] { return !isPicture() && !isRight(1865, 2655); }, 1'000));
}

TEST_F(MapPageTest, DrawsOfACrowdWhatCanBeDistinguished) {
  MapAnnotations crowd;
  for (int row = -50; row < 50; ++row)
    for (int column = -100; column < 100; ++column)
      crowd.push_back(std::make_shared<StopMarker>(at(10 * column, 10 * row)));
  const auto drawn = [&] { return adapters_.itemFor<MapViewItem>(&page_->map)->markers()->rowCount(); };
  page_->map.addAnnotations(crowd);
  int begun = 0;
  int most = 0;
  const auto counting = QObject::connect(&window_, &QQuickWindow::beforeSynchronizing, [&] {
    ++begun;
    most = std::max(most, drawn() - 24 * begun);
  });
  EXPECT_TRUE(QTest::qWaitFor([&] { return drawn() > 60; }));
  ASSERT_TRUE(comesToRest(window_));
  QObject::disconnect(counting);
  EXPECT_LE(most, 0) << "more than 24 in one frame";
  EXPECT_LE(drawn(), 302);

  page_->map.setRegion({0, 0}, 6, 6, false);
  EXPECT_TRUE(colored({189, 300}, QColor("#2f7fc2"))) << "close enough, every one that shows";
}

TEST_F(MapPageTest, ShowsTheTilesOfTheStyleAndTheirAttribution) {
  auto* const surface = within<MapSurface>(*window_.contentItem());
  EXPECT_TRUE(colored({100, 200}, tileColor));
  EXPECT_EQ(surface->attribution(), "drawn by a test");
  surface->setDark(true);
  EXPECT_TRUE(colored({100, 200}, darkColor));
  page_->map.setMapType(MapType::satellite);
  EXPECT_TRUE(colored({100, 200}, satelliteColor));
  EXPECT_EQ(surface->attribution(), "seen by a test");
  EXPECT_EQ(surface->message(), "");
}

TEST_F(MapPageTest, ReportsThatThereAreNoTilesUntilTheServiceIsBack) {
  const auto* const surface = within<MapSurface>(*window_.contentItem());
  ASSERT_TRUE(colored({100, 200}, tileColor));
  mode_ = Mode::fails;
  page_->map.setMapType(MapType::satellite);
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return surface->message() == u"Map pictures are not available"; }, 10'000));
  EXPECT_EQ(surface->attribution(), "");
  mode_ = Mode::waits;
  tiles_.noteServiceBack();
  EXPECT_TRUE(QTest::qWaitFor([&] { return surface->message().isEmpty() && waiting_ == 6; }))
      << "until then one request at a time tries";
}

TEST_F(MapPageTest, RequestsNothingWhileItIsHidden) {
  ASSERT_TRUE(colored({100, 200}, tileColor));
  mode_ = Mode::waits;
  page_->map.setMapType(MapType::satellite);
  ASSERT_TRUE(QTest::qWaitFor([&] { return waiting_ == 6; }));
  pager_->setSelectedIndexAnimated(2, false);
  EXPECT_TRUE(QTest::qWaitFor([&] { return waiting_ == 0; })) << "cancelled";
  const auto asked = server_.requests().size();
  page_->map.setRegion({20, 20}, 4000, 4000, false);
  tiles_.noteServiceBack();
  EXPECT_FALSE(QTest::qWaitFor([&] { return server_.requests().size() > asked; }, 200));
  mode_ = Mode::answers;
  pager_->setSelectedIndexAnimated(1, false);
  EXPECT_TRUE(colored({100, 200}, satelliteColor));
}

TEST_F(MapPageTest, TheLivePageFollowsTheVehicleAndDrawsTheLineOfItsTrail) {
  const auto live = std::make_shared<LiveDetailViewController>(environment_);
  Vehicle vehicle;
  vehicle.vehicleId = 7;
  vehicle.mapLineColor = lineColor.name().toStdString();
  live->setVehicle(vehicle);
  live->setStoryboard(nullptr, "LiveDetailVC");
  pager_->setViewControllers({live});
  pager_->setSelectedIndexAnimated(0, false);
  live->viewDidAppear(false);
  EXPECT_TRUE(colored({200, 450}, QColor("#eef1ee"))) << "covered until there is a position";
  for (const double north : {0.0, 600.0}) {
    auto position = std::make_shared<Live>();
    position->vehicles = vehicle;
    position->location.lat = std::to_string(at(0, north).latitude);
    position->location.lon = "0";
    center_.postNotificationName(kFleetorNotificationLive, std::shared_ptr<const Live>(position));
    EXPECT_TRUE(colored({100, 450}, tileColor));
  }
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return std::abs(live->mapView().centerCoordinate().latitude - at(0, 600).latitude) < 1e-6; }));
  EXPECT_TRUE(colored({200, 350}, lineColor));
  EXPECT_TRUE(colored({200, 250}, tileColor)) << "no trail ahead of it";
}

TEST_F(MapPageTest, DrawsAFrameForAChangeAndNoneWhileNothingMoves) {
  ASSERT_TRUE(colored({100, 200}, tileColor));
  page_->map.addAnnotation(std::make_shared<StopMarker>(at(0, 500)));
  ASSERT_TRUE(comesToRest(window_));
  int frames = 0;
  const auto counting = QObject::connect(&window_, &QQuickWindow::frameSwapped, [&] { ++frames; });
  const auto framesOf = [&](const std::function<void()>& change) {
    frames = 0;
    change();
    EXPECT_TRUE(comesToRest(window_));
    return frames;
  };
  EXPECT_EQ(framesOf([] {}), 0);
  EXPECT_EQ(framesOf([this] { page_->map.setCenterCoordinate(at(20, 0), false); }), 1);
  EXPECT_EQ(framesOf([this] { page_->map.removeAnnotations(page_->map.annotations()); }), 1);
  EXPECT_GE(framesOf([this] { page_->map.setCenterCoordinate(at(500, 0), true); }), 5);
  within<MapSurface>(*window_.contentItem())->setProperty("animated", false);
  EXPECT_EQ(framesOf([this] { page_->map.setCenterCoordinate(at(0, 0), true); }), 1);
  EXPECT_TRUE(std::abs(page_->map.centerCoordinate().longitude) < 1e-9);
  QObject::disconnect(counting);
}

}  // namespace
}  // namespace fleetor
