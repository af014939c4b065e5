#pragma once

#include <QBuffer>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>
#include <atomic>

#include "../rest.h"
#include "qt/components/view_controller_items.h"
#include "qt/map/map_surface.h"
#include "qt/outlined_pictures.h"
#include "support/fake_device.h"
#include "support/raw_server.h"
#include "support/testing.h"
#include "support/virtual_queues.h"
#include "ui/appearance.h"
#include "ui/controls/controls.h"
#include "ui/notification_center.h"

void qml_register_types_Fleetor();

namespace fleetor {

inline const QColor tileColor("#335577");
inline const QColor darkColor("#112233");
inline const QColor satelliteColor("#446633");
inline const QColor lineColor("#ff2010");

class StopMarker final : public MapAnnotation {
 public:
  explicit StopMarker(Coordinate at) : at_(at) {}
  Coordinate coordinate() const override { return at_; }
  std::string title() const override { return "Market Square"; }
  std::string subtitle() const override { return "10:15"; }

 private:
  Coordinate at_;
};

/// A page with a map, a line and a marker on it.
class PageWithMap final : public ViewController, public MapViewDelegate {
 public:
  explicit PageWithMap(Environment& environment) : ViewController(environment) {
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

inline std::string solidTile(QColor color) {
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
    page_ = std::make_shared<PageWithMap>(environment_);
    pager_->setViewControllers({std::make_shared<ViewController>(environment_), page_,
                                std::make_shared<ViewController>(environment_)});
    pager_->loadViewIfNeeded();
    pager_->setSelectedIndexAnimated(1, false);
    page_->map.setRegion({0, 0}, 4000, 4000, false);

    engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine_.addImageProvider(QStringLiteral("outlined"), new OutlinedPictures);
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
  std::shared_ptr<PageWithMap> page_;
  std::shared_ptr<SwipeTabBarController> pager_;
  Adapters adapters_{environment_};
  QQmlApplicationEngine engine_;
  QQuickWindow window_;
  std::unique_ptr<QObject> made_;
};

}  // namespace fleetor
