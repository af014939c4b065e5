// QtLocation's line over an empty map, panned as the protocol says: one figure a size and a sight.
//
//   pan_qtlocation default|linestrip|extruded

#include <QGeoCoordinate>
#include <QGeoPath>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTemporaryFile>
#include <QTimer>
#include <map>

#include "frame_timer.h"
#include "pan_protocol.h"

namespace {

using namespace fleetor;

constexpr const char* document = R"(
import QtQuick 2.15
import QtLocation 5.15
import QtPositioning 5.15

Map {
    plugin: Plugin { name: "itemsoverlay" }
    color: "#eeeae2"
    copyrightsVisible: false
    MapPolyline { objectName: "line"; line.width: %1; line.color: "#1d6fd1"; backend: MapPolyline.%2 }
}
)";

class Run : public QObject {
 public:
  Run(QQuickView& view, const char* name) : view_(view), timer_(view), name_(name) {
    timer_.finished = [this](double milliseconds) {
      if (frame_ > pan::warmUpFrames) times_.push_back(moved_ + milliseconds);
      pending_ = false;
    };
    connect(&pace_, &QTimer::timeout, this, [this] { step(); });
    begin();
    pace_.start(16);
  }

 private:
  void begin() {
    frame_ = 0;
    times_.clear();
    const auto& sight = pan::sights[sight_];
    view_.rootObject()->setProperty("zoomLevel", sight.zoom);
    QGeoPath path;
    if (points() > 0)
      for (const auto& place : pan::track(points()))
        path.addCoordinate({place.latitude, place.longitude});
    QMetaObject::invokeMethod(view_.rootObject()->findChild<QObject*>("line"), "setPath",
                              Q_ARG(QGeoPath, path));
  }

  int points() const { return size_ == 0 ? 0 : pan::sizes[size_ - 1]; }

  void step() {
    if (pending_) return;
    if (frame_ > pan::warmUpFrames + pan::frames) {
      const auto& sight = pan::sights[sight_];
      pan::report(name_, points(), sight.name, times_);
      if (++sight_ == pan::sights.size()) {
        sight_ = 0;
        if (++size_ > pan::sizes.size()) return QGuiApplication::quit();
      }
      begin();
    }
    const auto centre = pan::centre(pan::sights[sight_], frame_++);
    pending_ = true;
    const double before = pan::now();
    view_.rootObject()->setProperty("center",
                                    QVariant::fromValue(QGeoCoordinate(centre.latitude, centre.longitude)));
    moved_ = pan::now() - before;
    view_.update();
  }

  QQuickView& view_;
  FrameTimer timer_;
  const char* name_;
  QTimer pace_;
  std::size_t size_ = 0;
  std::size_t sight_ = 0;
  int frame_ = 0;
  double moved_ = 0;
  bool pending_ = false;
  std::vector<double> times_;
};

}  // namespace

int main(int argc, char** argv) {
  const std::map<std::string, std::pair<QString, const char*>> backends{
      {"default", {"Software", "QtLocation 5.15, default"}},
      {"linestrip", {"OpenGLLineStrip", "QtLocation 5.15, GL line strip"}},
      {"extruded", {"OpenGLExtruded", "QtLocation 5.15, GL extruded"}}};
  const auto backend = backends.find(argc == 2 ? argv[1] : "");
  if (backend == backends.end()) {
    std::fprintf(stderr, "usage: %s default|linestrip|extruded\n", argv[0]);
    return 2;
  }
  qputenv("QSG_RENDER_LOOP", "basic");
  QGuiApplication application(argc, argv);
  QTemporaryFile file("XXXXXX.qml");
  if (!file.open()) return 1;
  file.write(QString(document).arg(pan::lineWidth).arg(backend->second.first).toUtf8());
  file.close();
  QQuickView view(QUrl::fromLocalFile(file.fileName()));
  if (!view.rootObject()) return 1;
  view.setResizeMode(QQuickView::SizeRootObjectToView);
  view.resize(pan::width, pan::height);
  view.show();
  const Run run(view, backend->second.second);
  return QGuiApplication::exec();
}
