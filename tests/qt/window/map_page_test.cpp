#include <gmock/gmock.h>

#include <QBuffer>
#include <QPointingDevice>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <atomic>
#include <cmath>
#include <memory>

#include "../rest.h"
#include "qt/components/view_controller_items.h"
#include "qt/map/map_surface.h"
#include "support/fake_device.h"
#include "support/raw_server.h"
#include "support/virtual_queues.h"
#include "ui/appearance.h"
#include "ui/controls/controls.h"
#include "ui/notification_center.h"
#include "vehicle/live_detail_view_controller.h"
#include "vehicle/notifications.h"

void qml_register_types_Fleetor();

namespace fleetor {
namespace {

const QColor tileColor("#335577");
const QColor darkColor("#112233");
const QColor satelliteColor("#446633");
const QColor lineColor("#ff2010");

class Stop final : public MapAnnotation {
 public:
  explicit Stop(Coordinate at) : at_(at) {}
  Coordinate coordinate() const override { return at_; }
  std::string title() const override { return "Market Square"; }
  std::string subtitle() const override { return "10:15"; }

 private:
  Coordinate at_;
};

/// A page with a map, a line and a marker on it.
class Page final : public ViewController, public MapViewDelegate {
 public:
  explicit Page(Environment& environment) : ViewController(environment) {
    outlet("mapView", map);
    outlet("changeTypeButton", type);
    outlet("zoomOutButton", zoomOut);
    setStoryboard(nullptr, "LiveDetailVC");
    map.setDelegate(this);
  }

  std::shared_ptr<MapAnnotationView> mapViewViewForAnnotation(
      MapView&, const std::shared_ptr<MapAnnotation>& annotation) override {
    auto view = std::make_shared<MapAnnotationView>("stop");
    view->setAnnotation(annotation);
    view->setImage("parking");
    view->setCenterOffset(offset);
    view->setCanShowCallout(true);
    return view;
  }

  std::shared_ptr<MapPolylineRenderer> mapViewRendererForOverlay(
      MapView&, const std::shared_ptr<MapPolyline>& overlay) override {
    auto renderer = std::make_shared<MapPolylineRenderer>(overlay);
    renderer->setStrokeColor({lineColor.redF(), lineColor.greenF(), lineColor.blueF(), 1});
    renderer->setLineWidth(3);
    return renderer;
  }

  void draw(const std::vector<Coordinate>& way) { map.addOverlay(MapPolyline::polylineWithCoordinates(way)); }

  MapView map;
  Button type;
  Button zoomOut;
  ScreenPoint offset;  // of the markers to come
};

std::string solidTile(QColor color) {
  QImage image(256, 256, QImage::Format_RGB32);
  image.fill(color);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return bytes.toStdString();
}

template <class Item>
Item* within(const QQuickItem& item) {
  for (QQuickItem* const child : item.childItems()) {
    if (auto* const found = qobject_cast<Item*>(child)) return found;
    if (auto* const found = within<Item>(*child)) return found;
  }
  return nullptr;
}

/// Three pages in a pager; the one in the middle is shown and has the map. Tiles come from a server that has
/// one colour for each style.
class MapPageTest : public testing::Test {
 protected:
  void SetUp() override {
    qml_register_types_Fleetor();
    addMapAdapters(adapters_, tiles_);
    pager_ = std::make_shared<SwipeTabBarController>(environment_);
    page_ = std::make_shared<Page>(environment_);
    pager_->setViewControllers({std::make_shared<ViewController>(environment_), page_,
                                std::make_shared<ViewController>(environment_)});
    pager_->loadViewIfNeeded();
    pager_->setSelectedIndexAnimated(1, false);
    page_->map.setRegion({0, 0}, 4000, 4000, false);

    engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
    QQmlComponent component(&engine_);
    component.setData("import QtQuick\nimport Fleetor\nPagerPages {}", QUrl());
    window_.resize(400, 600);
    made_.reset(component.createWithInitialProperties(
        {{QStringLiteral("screen"),
          QVariant::fromValue(adapters_.itemFor<ViewControllerItem>(pager_.get()))}}));
    auto* const item = qobject_cast<QQuickItem*>(made_.get());
    ASSERT_NE(item, nullptr) << component.errorString().toStdString();
    item->setParentItem(window_.contentItem());
    item->setSize({400, 600});
    window_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
    ASSERT_EQ(window_.rendererInterface()->graphicsApi() == QSGRendererInterface::Software,
              qEnvironmentVariable("QT_QUICK_BACKEND") == u"software");
    ASSERT_TRUE(QTest::qWaitFor([this] { return camera().hasViewport(); }));
  }

  const MapCamera& camera() { return page_->map.camera(); }

  bool colored(QPoint at, QColor wanted) {
    return QTest::qWaitFor([&] { return window_.grabWindow().pixelColor(at) == wanted; }, 5'000);
  }

  bool waitForRest() {
    return QTest::qWaitFor([this] { return !camera().moving(); });
  }

  void drag(QPoint from, QPoint to) {
    QTest::mousePress(&window_, Qt::LeftButton, {}, from);
    for (int i = 1; i <= 12; ++i)
      QTest::mouseMove(&window_, from + (to - from) * i / 12, 10);
    QTest::mouseRelease(&window_, Qt::LeftButton, {}, to);
  }

  /// Of metres east and north of the middle of the map.
  static Coordinate at(double east, double north) { return {north / 111'319.49, east / 111'319.49}; }

  /// Every 200 m.
  static std::vector<Coordinate> upAndDown() {
    std::vector<Coordinate> way;
    for (int i = -30; i <= 30; ++i) {
      way.push_back(at(200 * i, i % 2 ? -6000 : 6000));
      way.push_back(at(200 * i, i % 2 ? 6000 : -6000));
    }
    return way;
  }

  void serve(RawServer::Peer& peer) {
    for (std::string request; !(request = peer.read()).empty();) {
      if (mode_ == Mode::waits) {
        ++waiting_;
        peer.hold();
        --waiting_;
        return;
      }
      const std::string tile = solidTile(request.starts_with("GET /dark/")        ? darkColor
                                         : request.starts_with("GET /satellite/") ? satelliteColor
                                                                                  : tileColor);
      peer.write((mode_ == Mode::answers ? "HTTP/1.1 200 OK" : "HTTP/1.1 500 Oops") +
                 ("\r\nContent-Length: " + std::to_string(tile.size())) + "\r\n\r\n" + tile);
    }
  }

  enum class Mode { answers, fails, waits };
  std::atomic<Mode> mode_ = Mode::answers;
  std::atomic<int> waiting_ = 0;  // requests without an answer
  RawServer server_{[this](RawServer::Peer& peer) { serve(peer); }};
  test::VirtualQueues queues_;
  test::FakeDevice device_;
  NotificationCenter center_;
  Appearance appearance_;
  Environment environment_{queues_, device_, queues_, center_, appearance_};
  QTemporaryDir folder_;
  TileSource tiles_{{.standard = server_.url("/{z}/{x}/{y}"),
                     .dark = server_.url("/dark/{z}/{x}/{y}"),
                     .satellite = server_.url("/satellite/{z}/{x}/{y}"),
                     .attribution = "drawn by a test",
                     .satelliteAttribution = "seen by a test",
                     .userAgent = "",
                     .maximumZoom = 19},
                    folder_.path()};
  std::shared_ptr<Page> page_;
  std::shared_ptr<SwipeTabBarController> pager_;
  Adapters adapters_{environment_};
  QQmlApplicationEngine engine_;
  QQuickWindow window_;
  std::unique_ptr<QObject> made_;
};

TEST_F(MapPageTest, DrawsTilesAndOnThemTheLineInItsColourAndTheMarkersImage) {
  EXPECT_TRUE(colored({100, 200}, tileColor));
  page_->draw({at(-5000, 0), at(500, 0), at(500, 5000)});
  page_->map.addAnnotation(std::make_shared<Stop>(at(-1000, -1000)));
  const double pointsPerMetre = camera().scale() / metresPerWorldUnit(0);
  EXPECT_TRUE(colored({100, 300}, lineColor));
  EXPECT_TRUE(colored({static_cast<int>(200 + 500 * pointsPerMetre), 100}, lineColor));
  EXPECT_TRUE(colored({100, 305}, tileColor)) << "the line is too wide";
  const QPoint stop(static_cast<int>(200 - 1000 * pointsPerMetre),
                    static_cast<int>(300 + 1000 * pointsPerMetre));
  EXPECT_TRUE(colored(stop - QPoint(11, 0), QColor("#2f7fc2")));
  page_->offset = {0, -20};
  page_->map.addAnnotation(std::make_shared<Stop>(at(-1000, 1000)));
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

TEST_F(MapPageTest, ADragMovesTheMapAndFromTheEdgeThePager) {
  page_->draw(upAndDown());
  drag({300, 300}, {200, 250});
  ASSERT_TRUE(waitForRest());
  EXPECT_EQ(pager_->selectedIndex(), 1);
  const ScreenPoint zero = camera().screenPoint(project({0, 0}));
  EXPECT_LT(zero.x, 112) << "100 points, and on as it was thrown";
  EXPECT_LT(zero.y, 260);

  const CameraPosition before = camera().position();
  drag({390, 300}, {150, 300});
  EXPECT_TRUE(QTest::qWaitFor([&] { return pager_->selectedIndex() == 2; }));
  EXPECT_EQ(camera().position(), before);
}

TEST_F(MapPageTest, ZoomsByDoubleTapWheelKeyAndPinch) {
  const auto zoomsTo = [&](double zoom) {
    return QTest::qWaitFor([&] { return !camera().moving() && std::abs(camera().zoom() - zoom) < 0.01; });
  };
  const double zoom = camera().zoom();
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {100, 200});
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {100, 200}, 100);
  EXPECT_TRUE(zoomsTo(zoom + 1));
  QWheelEvent wheel({100, 200}, window_.mapToGlobal(QPointF(100, 200)), {}, {0, 240}, Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&window_, &wheel);
  EXPECT_TRUE(zoomsTo(zoom + 2));
  QTest::keyClick(&window_, Qt::Key_Minus);
  EXPECT_TRUE(zoomsTo(zoom + 1));
  const WorldPoint centre = camera().centre();
  QTest::keyClick(&window_, Qt::Key_Right);
  EXPECT_TRUE(QTest::qWaitFor([&] { return camera().centre().x > centre.x; }));
  EXPECT_TRUE(zoomsTo(zoom + 1));

  const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
  int beside = 50;
  QTest::touchEvent(&window_, screen.get()).press(0, QPoint(150, 300)).press(1, QPoint(250, 300));
  EXPECT_TRUE(QTest::qWaitFor([&] {
    beside = std::min(beside + 5, 190);
    const QPoint left(200 - beside, 300), right(200 + beside, 300);
    QTest::touchEvent(&window_, screen.get()).move(0, left).move(1, right);
    return camera().zoom() > zoom + 2;
  }));
  QTest::touchEvent(&window_, screen.get()).release(0, QPoint(10, 300)).release(1, QPoint(390, 300));
}

TEST_F(MapPageTest, ATapOnAMarkerOpensItsCalloutAndATapOnTheMapClosesIt) {
  const auto stop = std::make_shared<Stop>(at(0, 0));
  page_->map.addAnnotation(stop);
  ASSERT_TRUE(colored({189, 300}, QColor("#2f7fc2")));
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {200, 300});
  EXPECT_EQ(page_->map.selectedAnnotation(), stop);
  ASSERT_TRUE(comesToRest(window_));
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {200, 250});  // on the callout itself
  EXPECT_EQ(page_->map.selectedAnnotation(), stop);
  ASSERT_TRUE(comesToRest(window_));
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {200, 450});
  EXPECT_EQ(page_->map.selectedAnnotation(), nullptr);

  // Quick taps go round the markers of one place, of which the upper one has their count at its corner.
  const auto second = std::make_shared<Stop>(at(1, 1));
  page_->map.addAnnotation(second);
  ASSERT_TRUE(QTest::qWaitFor([&] {
    return adapters_.itemFor<MapMarkerItem>(page_->map.viewForAnnotation(*second).get())->stacked() == 2;
  }));
  for (const auto& opened : {second, stop, second}) {
    QTest::mouseClick(&window_, Qt::LeftButton, {}, {200, 300}, 100);
    EXPECT_EQ(page_->map.selectedAnnotation(), opened);
  }
  EXPECT_TRUE(colored({214, 284}, QColor("#3b4a59")));
  page_->map.removeAnnotations({second});

  // By keyboard, too.
  QTest::keyClick(&window_, Qt::Key_Tab);
  QTest::keyClick(&window_, Qt::Key_Return);
  EXPECT_EQ(page_->map.selectedAnnotation(), stop);
  QTest::keyClick(&window_, Qt::Key_Return);
  EXPECT_EQ(page_->map.selectedAnnotation(), nullptr);
}

TEST_F(MapPageTest, TheTabOrderIsButtonsMapMarkers) {
  for (int i = 0; i < 5; ++i)
    page_->map.addAnnotation(std::make_shared<Stop>(at(200.0 * i, 0)));
  const auto marker = [&](std::size_t index) {
    const auto view = page_->map.viewForAnnotation(*page_->map.annotations()[index]);
    return adapters_.itemFor<MapMarkerItem>(view.get());
  };
  const auto focused = [&](const char* property) {
    const QQuickItem* const item = window_.activeFocusItem();
    return item ? item->property(property).value<ComponentItem*>() : nullptr;
  };
  ASSERT_TRUE(QTest::qWaitFor([&] { return marker(4)->nearby(); }));
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {100, 450});
  QTest::keyClick(&window_, Qt::Key_Backtab);
  EXPECT_EQ(focused("button"), adapters_.itemFor(&page_->zoomOut));
  QTest::keyClick(&window_, Qt::Key_Backtab);
  EXPECT_EQ(focused("button"), adapters_.itemFor(&page_->type));
  QTest::keyClick(&window_, Qt::Key_Tab);
  QTest::keyClick(&window_, Qt::Key_Tab);
  EXPECT_EQ(focused("map"), adapters_.itemFor(&page_->map));
  QTest::keyClick(&window_, Qt::Key_Tab);
  EXPECT_EQ(focused("marker"), marker(0));
  for (const auto key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up})
    QTest::keyClick(&window_, key);
  EXPECT_EQ(focused("marker"), marker(2));
  QTest::keyClick(&window_, Qt::Key_Tab);
  EXPECT_EQ(focused("marker"), nullptr);
  QTest::keyClick(&window_, Qt::Key_Backtab);
  EXPECT_EQ(focused("marker"), marker(2)) << "the one that had it last";
}

TEST_F(MapPageTest, DrawsOfACrowdWhatCanBeDistinguished) {
  MapAnnotations crowd;
  for (int row = -50; row < 50; ++row)
    for (int column = -100; column < 100; ++column)
      crowd.push_back(std::make_shared<Stop>(at(10 * column, 10 * row)));
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
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {200, 300});
  EXPECT_EQ(page_->map.selectedAnnotation(), crowd[50 * 200 + 100]);
  page_->map.removeAnnotations(crowd);
  EXPECT_TRUE(QTest::qWaitFor([&] { return drawn() == 0; }));
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

TEST_F(MapPageTest, ShowsNothingButItsGroundAndTakesNoGestureWhileItIsCovered) {
  ASSERT_TRUE(colored({100, 200}, tileColor));
  page_->map.setCovered(true);
  EXPECT_TRUE(colored({100, 200}, QColor("#eef1ee")));
  const CameraPosition before = camera().position();
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {200, 300});
  QTest::keyClick(&window_, Qt::Key_Right);
  drag({300, 300}, {200, 250});
  EXPECT_EQ(camera().position(), before);
  page_->map.setCovered(false);
  EXPECT_TRUE(colored({100, 200}, tileColor));
}

TEST_F(MapPageTest, DrawsAFrameForAChangeAndNoneWhileNothingMoves) {
  ASSERT_TRUE(colored({100, 200}, tileColor));
  page_->map.addAnnotation(std::make_shared<Stop>(at(0, 500)));
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
  EXPECT_EQ(framesOf([this] { page_->map.replaceAnnotations({std::make_shared<Stop>(at(0, 400))}); }), 1);
  EXPECT_GE(framesOf([this] { page_->map.setCenterCoordinate(at(500, 0), true); }), 5);
  within<MapSurface>(*window_.contentItem())->setProperty("animated", false);
  EXPECT_EQ(framesOf([this] { page_->map.setCenterCoordinate(at(0, 0), true); }), 1);
  EXPECT_TRUE(std::abs(page_->map.centerCoordinate().longitude) < 1e-9);
  QObject::disconnect(counting);
}

}  // namespace
}  // namespace fleetor
