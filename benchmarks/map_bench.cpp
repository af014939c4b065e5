// The map: a pan over a day's track beside the same map without a line (and beside other map components, when
// there are any), a live position appended to a trail, a whole day's answer from the last byte to the drawn
// track, the memory that such a day takes, and its replay. Needs a display, and the demo service beside this
// program's folder.
//
//   fleetor_bench_map [program of another map component, with its arguments, as one word]...

#include <QGuiApplication>
#include <QProcess>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "board/board_map.h"
#include "figures.h"
#include "map_stage.h"
#include "service/api.h"
#include "support/memory_stores.h"
#include "support/scripted_transport.h"
#include "vehicle/live_detail_view_controller.h"
#include "vehicle/map_detail_view_controller.h"
#include "vehicle/notifications.h"

namespace {

using namespace fleetor;

/// Notes the longest time that one event kept the main thread.
class WatchedApplication final : public QGuiApplication {
 public:
  using QGuiApplication::QGuiApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    if (depth_++ > 0) {
      const bool handled = QGuiApplication::notify(receiver, event);
      --depth_;
      return handled;
    }
    const double before = pan::now();
    const bool handled = QGuiApplication::notify(receiver, event);
    --depth_;
    longest = std::max(longest, pan::now() - before);
    return handled;
  }
  double longest = 0;

 private:
  int depth_ = 0;
};

double kilobytes(const char* field) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with(field)) return std::stod(line.substr(std::string_view(field).size()));
  return 0;
}

void panOver(Stage& stage, const std::string& name, int points, const pan::Sight& sight) {
  OneLine delegate;
  MapView map;
  map.setDelegate(&delegate);
  if (points > 0) {
    std::vector<Coordinate> coordinates;
    for (const auto& place : pan::track(points))
      coordinates.push_back({place.latitude, place.longitude});
    map.addOverlay(MapPolyline::polylineWithCoordinates(coordinates));
  }
  stage.show(map);
  const auto moveTo = [&](int frame) {
    const auto centre = pan::centre(sight, frame);
    map.moveCamera([&](MapCamera& camera) {
      camera.moveTo({project({centre.latitude, centre.longitude}), sight.zoom}, false);
    });
  };
  moveTo(0);
  stage.rest(1.5);  // tiles and a simplified line have come

  const auto times = timesOfFrames(stage, moveTo);
  stage.surface.setMap(nullptr);
  pan::report(name.c_str(), points, sight.name, times);
}

/// Other components may draw no tiles: without a service neither do we.
void panOverAll(const QString& service) {
  Stage stage(service);
  const std::string name = service.isEmpty() ? "fleetor, no tiles" : "fleetor";
  for (const int points : {0, pan::sizes[0], pan::sizes[1], pan::sizes[2]})
    for (const auto& sight : pan::sights)
      panOver(stage, name, points, sight);
}

std::shared_ptr<const Live> liveAt(const pan::Place& place, std::int64_t vehicleId = 1) {
  auto live = std::make_shared<Live>();
  live->vehicles.vehicleId = vehicleId;
  live->vehicles.mapLineColor = "#1d6fd1";
  live->vehicles.icon = "car";
  live->direction = "90";
  live->location.lat = std::to_string(place.latitude);
  live->location.lon = std::to_string(place.longitude);
  return live;
}

Vehicle vehicle() {
  Vehicle made;
  made.vehicleId = 1;
  made.icon = "car";
  made.mapLineColor = "#1d6fd1";
  return made;
}

struct Arrivals {
  std::vector<double> calls;   ///< ms
  std::vector<double> frames;  ///< ms, with the call before
};

/// So many records, each once the map has drawn the one before and come to rest.
Arrivals timesOfArrivals(Stage& stage, int count, const std::function<void(int)>& receive) {
  Arrivals times;
  FrameTimer timer(stage.window);
  bool drawn = false;
  timer.finished = [&](double milliseconds) {
    if (!drawn) times.frames.push_back(times.calls.back() + milliseconds);
    drawn = true;
  };
  for (int i = 0; i < count; ++i) {
    drawn = true;
    const double before = pan::now();
    receive(i);
    times.calls.push_back(pan::now() - before);
    drawn = false;
    stage.runUntil([&] { return drawn; }, 2);
    stage.rest(0.35);  // the map has followed
  }
  return times;
}

void appendTo(const QString& service, int trail) {
  constexpr int appended = 60;
  Stage stage(service);
  const auto page = std::make_shared<LiveDetailViewController>(stage.environment);
  page->setVehicle(vehicle());
  page->loadViewIfNeeded();
  page->viewDidAppear(false);
  stage.show(page->mapView());
  const auto places = pan::track(pan::longest);
  const auto receive = [&](std::size_t index) {
    stage.center.postNotificationName(kFleetorNotificationLive, liveAt(places[index % places.size()]));
  };
  for (int i = 0; i < trail; ++i)
    receive(static_cast<std::size_t>(i));
  stage.rest(2);

  const Arrivals arrivals = timesOfArrivals(stage, appended, [&](int i) {
    receive(static_cast<std::size_t>(trail) + static_cast<std::size_t>(i));
  });
  pan::report("append, the page's call", trail, "live", arrivals.calls);
  pan::report("append, with the first frame", trail, "live", arrivals.frames);
  page->viewDidDisappear(false);
  stage.surface.setMap(nullptr);
}

std::string dayOf(int points, int stopEvery) {
  std::string json =
      "{\"total\":" + std::to_string(points) + ",\"error\":{\"code\":200,\"description\":\"OK\"},\"map\":[";
  const auto places = pan::track(pan::longest);
  for (int i = 0; i < points; ++i) {
    char text[320];
    const auto& place = places[static_cast<std::size_t>(i)];
    std::snprintf(text, sizeof text,
                  "%s{\"lp\":%d,\"location\":{\"lat\":\"%.6f\",\"lon\":\"%.6f\"},\"dateTime\":\"2026-05-04 "
                  "%02d:%02d:%02d\",\"duration\":\"%s\",\"totdist\":\"%.1f km\",\"label\":\"%s\",\"street\":"
                  "\"Alderfen Road %d, Larkh\xC3\xA5ven\"}",
                  i ? "," : "", i, place.latitude, place.longitude, i / 3600, i / 60 % 60, i % 60,
                  i % stopEvery ? "" : "12 min", i * 0.008, i % stopEvery ? "" : "Parking", i % 180 + 1);
    json += text;
  }
  return json + "]}";
}

/// With a parking stop at every so many points.
void openDay(WatchedApplication& application, int stopEvery, const std::string& name) {
  constexpr int points = 86400;
  const auto report = [&name](const char* what, double value) {
    pan::report((name + what).c_str(), points, "day", {value});
  };
  Stage stage({});
  test::ScriptedTransport transport(stage.queues);
  test::MemoryKeyStore keyStore;
  test::MemorySettings settings;
  test::FakeReachability reachability;
  test::FakeIndicator indicator;
  test::RecordingLog log;
  API::install({stage.queues, transport, keyStore, settings, reachability, indicator, log, stage.device,
                [](const std::string& text, double, bool) { std::fprintf(stderr, "%s\n", text.c_str()); },
                [] {}});
  API::setAPIBaseURLWithString("http://service.test");
  transport.leaveOpen("/map");
  auto page = std::make_shared<MapDetailViewController>(stage.environment);
  page->setVehicle(vehicle());
  page->loadViewIfNeeded();
  page->viewDidAppear(false);
  stage.show(page->mapView());
  stage.rest(1.5);
  page->firstSelected();
  stage.runUntil([&] { return transport.openCount() == 1; });

  HttpReply day = test::jsonReply(dayOf(points, stopEvery));
  const double body = static_cast<double>(day.body.size());
  const double memory = kilobytes("VmRSS:");
  std::ofstream("/proc/self/clear_refs") << "5";  // the peak starts anew
  application.longest = 0;
  const double before = pan::now();
  double lastFrame = before;
  stage.onFrame = [&] { lastFrame = pan::now(); };
  transport.answerOpen("/map", std::move(day));
  // Nothing is animated and no tile comes, so the last frame is the one with the finished line.
  double arrived = 0;
  const auto rests = [&] {
    if (arrived == 0 && page->polyline()) arrived = pan::now();
    return arrived > 0 && lastFrame > arrived && pan::now() - lastFrame > 500;
  };
  if (!stage.runUntil(rests)) std::fputs("the day did not arrive\n", stderr);
  report(", last byte to the drawn track, ms", lastFrame - before);
  report(", longest stall of the main thread, ms", application.longest);
  report(", peak memory in bodies", (kilobytes("VmHWM:") - memory) * 1024 / body + 1);
  report(", memory held in bodies", (kilobytes("VmRSS:") - memory) * 1024 / body + 1);
  stage.onFrame = nullptr;
  stage.surface.setMap(nullptr);
  page->viewDidDisappear(false);
  page.reset();
  API::shutDown();
}

/// The board with 24 vehicles, each with a trail of 1,000 points: a frame of a pan over all of them, and one
/// in which a record of one vehicle arrives.
void showFleet(const QString& service) {
  constexpr int vehicles = 24;
  constexpr int trail = 1000;
  constexpr int arriving = 60;
  Stage stage(service);
  Outlets screen;
  BoardMap board(stage.environment, screen);
  board.map().setCovered(false);
  const auto places = pan::track(pan::longest);
  const auto receive = [&](int vehicle, int index) {
    const auto place = static_cast<std::size_t>(vehicle * 4000 + index) % places.size();
    board.show({liveAt(places[place], vehicle), Seconds(index)});
  };
  for (int vehicle = 0; vehicle < vehicles; ++vehicle)
    for (int i = 0; i < trail - 1; ++i)
      receive(vehicle, i);
  stage.show(board.map());
  for (const auto& sight : pan::sights) {
    const auto moveTo = [&](int frame) {
      const auto centre = pan::centre(sight, frame);
      board.map().moveCamera([&](MapCamera& camera) {
        camera.moveTo({project({centre.latitude, centre.longitude}), sight.zoom}, false);
      });
    };
    moveTo(0);
    stage.rest(2);
    pan::report((std::string("24 trails, a frame of a pan, ") + sight.name).c_str(), vehicles * trail,
                "fleet", timesOfFrames(stage, moveTo));
  }
  const Arrivals arrivals =
      timesOfArrivals(stage, arriving, [&](int i) { receive(i % vehicles, trail + i / vehicles); });
  pan::report("24 trails, a record with its first frame", vehicles * trail, "fleet", arrivals.frames);
  stage.surface.setMap(nullptr);
}

/// Figures by name, sight and size: median and 95th percentile.
struct Figure {
  double median = 0;
  double high = 0;
};
using Key = std::tuple<std::string, std::string, int>;
using Figures = std::map<Key, Figure>;

bool collect(Figures& figures, QStringList command) {
  QProcess child;
  child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  const QString program = command.takeFirst();
  child.start(program, command);
  if (!child.waitForFinished(600000) || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0) {
    std::fprintf(stderr, "%s did not finish\n", qPrintable(program));
    return false;
  }
  for (const QByteArray& line : child.readAllStandardOutput().split('\n'))
    if (const auto parts = line.split('\t'); parts.size() == 5)
      figures[{parts[0].toStdString(), parts[2].toStdString(), parts[1].toInt()}] = {parts[3].toDouble(),
                                                                                     parts[4].toDouble()};
  return true;
}

void keep(const Key& key, const Figure& figure) {
  const auto& [name, sight, points] = key;
  const std::string row = sight + ", " + name + ", " + std::to_string(points) + " points";
  bench::record("map", row, "median", figure.median);
  bench::record("map", row, "p95", figure.high);
}

void printPan(const Figures& figures) {
  std::printf("a pan of %d frames, ms a frame: median (95th percentile)\n%-34s", pan::frames, "");
  for (const char* column : {"no line", "1,000", "10,000", "100,000"})
    std::printf(" %15s", column);
  std::set<std::pair<std::string, std::string>, std::greater<>> rows;
  for (const auto& [key, figure] : figures)
    if (std::get<1>(key) == "whole" || std::get<1>(key) == "street")
      rows.emplace(std::get<1>(key), std::get<0>(key));
  for (const auto& [sight, name] : rows) {
    std::printf("\n%-7s%-27s", sight.c_str(), name.c_str());
    for (const int points : {0, pan::sizes[0], pan::sizes[1], pan::sizes[2]}) {
      const auto figure = figures.find({name, sight, points});
      if (figure == figures.end()) continue;
      std::printf(" %7.2f (%5.1f)", figure->second.median, figure->second.high);
      keep(figure->first, figure->second);
    }
  }
  for (const auto& sight : pan::sights) {
    const auto of = [&](int points) { return figures.at({"fleetor", sight.name, points}).median; };
    std::printf("\nfleetor, %s: 100,000 points against 1,000: %.2f, against no line: %.2f", sight.name,
                of(100000) / of(1000), of(100000) / of(0));
  }
  std::printf("\n\n");
}

int compare(const QStringList& peers) {
  QProcess demo;
  demo.start(QCoreApplication::applicationDirPath() + "/../demo/fleetor-demo-service",
             {"--port", "0", "--seed", "7"});
  if (!demo.waitForReadyRead(10000)) {
    std::fputs("fleetor_bench_map: the demo service did not start\n", stderr);
    return 1;
  }
  const QString url = QString::fromUtf8(demo.readLine()).trimmed().section(' ', -1);
  const QString self = QCoreApplication::applicationFilePath();
  Figures pans;
  Figures others;
  bool measured = collect(pans, {self, "pan", url});
  measured = collect(pans, {self, "pan"}) && measured;
  for (const QString& peer : peers)
    measured = collect(pans, peer.split(' ')) && measured;
  for (const int trail : {100, 10000, 100000})
    measured = collect(others, {self, "append", url, QString::number(trail)}) && measured;
  measured = collect(others, {self, "day"}) && measured;
  measured = collect(others, {self, "stops"}) && measured;
  measured = collect(others, {self, "replay", url}) && measured;
  measured = collect(others, {self, "fleet", url}) && measured;
  demo.terminate();
  demo.waitForFinished(5000);
  if (!measured) return 1;
  printPan(pans);
  std::printf("%-46s %8s %10s %10s\n", "", "points", "median", "95th");
  for (const auto& [key, figure] : others) {
    std::printf("%-46s %8d %10.3f %10.3f\n", std::get<0>(key).c_str(), std::get<2>(key), figure.median,
                figure.high);
    keep(key, figure);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string task = argc > 1 ? argv[1] : "";
  if (task == "pan" || task == "append" || task == "day" || task == "stops" || task == "replay" ||
      task == "fleet") {
    WatchedApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (task == "pan") panOverAll(arguments.value(2));
    if (task == "append") appendTo(arguments.value(2), arguments.value(3).toInt());
    if (task == "day") openDay(application, 2000, "a day");
    if (task == "replay") replayDay(arguments.value(2));
    if (task == "fleet") showFleet(arguments.value(2));
    if (task == "stops") openDay(application, 1, "a day of stops");
    return 0;
  }
  const QCoreApplication application(argc, argv);
  return compare(QCoreApplication::arguments().mid(1));
}
