#pragma once

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

#include "frame_timer.h"
#include "pan_protocol.h"
#include "qt/components/adapters.h"
#include "qt/device/queues.h"
#include "qt/device/system_clock.h"
#include "qt/map/map_surface.h"
#include "qt/map/tile_source.h"
#include "support/fake_device.h"
#include "ui/appearance.h"
#include "ui/notification_center.h"

namespace fleetor {

/// Everything that a map needs of the client, in a separate window; without a service there are no tiles.
struct Stage {
  explicit Stage(const QString& service)
      : tiles(
            [&service] {
              TileAddresses server;
              if (!service.isEmpty())
                server.standard = service.toStdString() + "/tiles/standard/{z}/{x}/{y}.png?scale={scale}";
              return server;
            }(),
            folder.path()) {
    addMapAdapters(adapters, tiles);
    window.resize(pan::width, pan::height);
    surface.setParentItem(window.contentItem());
    surface.setSize(QSizeF(pan::width, pan::height));
    surface.setProperty("ground", QColor(0xee, 0xea, 0xe2));
    surface.setProperty("grid", QColor(0xe2, 0xde, 0xd6));
    QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [this] {
      if (onFrame) onFrame();
    });
    window.show();
  }
  ~Stage() { surface.setMap(nullptr); }

  void show(MapView& map) { surface.setMap(adapters.itemFor<MapViewItem>(&map)); }

  /// Lets the event loop run until `done`, or gives up.
  bool runUntil(const std::function<bool()>& done, double seconds = 20) {
    for (const double end = pan::now() + seconds * 1e3; pan::now() < end;) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
      if (done()) return true;
    }
    return false;
  }
  void rest(double seconds) {
    runUntil([] { return false; }, seconds);
  }

  std::function<void()> onFrame;

  QTemporaryDir folder;
  QtQueues queues;
  test::FakeDevice device;
  SystemClock clock;
  NotificationCenter center;
  Appearance appearance;
  Environment environment{queues, device, clock, center, appearance};
  TileSource tiles;
  Adapters adapters{environment};
  QQuickWindow window;
  MapSurface surface;
};

/// A line in one colour.
class OneLine final : public MapViewDelegate {
 public:
  std::shared_ptr<MapAnnotationView> mapViewViewForAnnotation(
      MapView&, const std::shared_ptr<MapAnnotation>&) override {
    return nullptr;
  }
  std::shared_ptr<MapPolylineRenderer> mapViewRendererForOverlay(
      MapView&, const std::shared_ptr<MapPolyline>& overlay) override {
    auto renderer = std::make_shared<MapPolylineRenderer>(overlay);
    renderer->setStrokeColor({0.11, 0.44, 0.82, 1});
    renderer->setLineWidth(pan::lineWidth);
    return renderer;
  }
};

/// Lets `step` change the map before each of so many frames, 16 ms apart at least. Each frame's milliseconds,
/// those of the step included, without the first frames.
inline std::vector<double> timesOfFrames(Stage& stage, const std::function<void(int frame)>& step) {
  std::vector<double> times;
  int frame = 0;
  bool pending = false;
  double stepped = 0;
  FrameTimer timer(stage.window);
  timer.finished = [&](double milliseconds) {
    if (pending && frame > pan::warmUpFrames) times.push_back(stepped + milliseconds);
    pending = false;
  };
  QTimer pace;
  pace.setTimerType(Qt::PreciseTimer);
  QObject::connect(&pace, &QTimer::timeout, [&] {
    if (pending || frame > pan::warmUpFrames + pan::frames) return;
    pending = true;
    const double before = pan::now();
    step(frame++);
    stepped = pan::now() - before;
  });
  pace.start(16);
  stage.runUntil([&] { return !pending && frame > pan::warmUpFrames + pan::frames; });
  return times;
}

/// Replays a day of 86,400 points at 300 times its pace.
void replayDay(const QString& service);

}  // namespace fleetor
