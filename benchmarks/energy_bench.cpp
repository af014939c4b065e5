// What a page costs while nobody touches it: CPU time, wake-ups and frames of the real client on each page,
// beside an empty Qt Quick window. Each row comes from a separate process; all of them run at the same time,
// so that whatever else the machine does hits all of them. Needs a display, and the demo service beside this
// program's folder.
//
//   fleetor_bench_energy [seconds]

#include <sys/resource.h>

#include <QDateTime>
#include <QDir>
#include <QGuiApplication>
#include <QJsonArray>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "board/board_view_controller.h"
#include "figures.h"
#include "shell/vehicles_table_view_controller.h"
#include "signed_in.h"
#include "ui/containers/sw_reveal_view_controller.h"
#include "vehicle/live_detail_view_controller.h"
#include "vehicle/vehicle_view_controller.h"

namespace {

using namespace fleetor;

constexpr double pollInterval = 15;  // seconds
constexpr int settling = 12;         // seconds until tiles have come and nothing moves any more
constexpr int longestWay = 60;       // seconds to the page
constexpr const char* serviceStart = "14:30:00";

enum class Vehicle { none, standing, driving };

constexpr int list = -1;
constexpr int board = -2;

/// Aims: at most so much; 0: none.
struct Page {
  const char* name;
  int tab;  ///< of the vehicle; or `list`, or `board`
  Vehicle vehicle;
  double cpuAim = 0;
  double framesAim = 0;
  bool animations = true;
  bool minimised = false;
};

constexpr Page pages[] = {
    {"list", list, Vehicle::none, 40},
    {"Fleet, 24 vehicles", board, Vehicle::none},
    {"Information, standing", 0, Vehicle::standing, 40, 12},
    {"Information, driving", 0, Vehicle::driving, 40, 12},
    {"Live, standing", 1, Vehicle::standing, 40, 12},
    {"Live, driving", 1, Vehicle::driving, 250},
    {"Live, driving, animations off", 1, Vehicle::driving, 40, 12, false},
    {"Map", 2, Vehicle::driving, 40},
    {"Trips", 3, Vehicle::driving, 40},
    {"About", 4, Vehicle::driving, 40},
    {"minimised", 1, Vehicle::driving, 5, 0, true, true},
};
constexpr double wakeUpsAim = 1;  // a second

/// What the process has used so far.
struct Use {
  double cpu = 0;      // ms
  double wakeUps = 0;  // of all its threads, by waiting for something
  double frames = 0;
  double moves = 0;  // positions that the trail has got

  static Use now(double frames, double moves) {
    timespec cpu{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &cpu);
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return {static_cast<double>(cpu.tv_sec) * 1e3 + static_cast<double>(cpu.tv_nsec) / 1e6,
            static_cast<double>(usage.ru_nvcsw), frames, moves};
  }
};

/// Measures this process for so many seconds, once it has settled, and ends it. `moves` counts positions.
void measure(
    QQuickWindow& window, int seconds, const std::function<double()>& moves = [] { return 0; }) {
  static std::atomic<int> frames = 0;
  QObject::connect(
      &window, &QQuickWindow::frameSwapped, &window, [] { ++frames; }, Qt::DirectConnection);
  QTimer::singleShot(settling * 1000, &window, [=, &window] {
    const Use before = Use::now(frames, moves());
    QTimer::singleShot(seconds * 1000, Qt::PreciseTimer, &window, [=] {
      const auto [cpu, wakeUps, drawn, moved] = Use::now(frames, moves());
      std::printf("%.3f %.0f %.0f %.0f\n", cpu - before.cpu, wakeUps - before.wakeUps, drawn - before.frames,
                  moved - before.moves);
      QGuiApplication::quit();
    });
  });
}

int emptyWindow(int seconds) {
  QQmlApplicationEngine engine;
  engine.loadData("import QtQuick\nWindow { visible: true; width: 390; height: 844 }");
  auto* const window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
  if (!window) return 1;
  measure(*window, seconds);
  return QGuiApplication::exec();
}

/// Goes to that page as a user does, and stays there.
class Visit {
 public:
  Visit(Client& client, const Page& page, int row, int seconds)
      : client_(client), page_(page), row_(row), seconds_(seconds) {
    if (!page.animations) client.mainWindow().followDesktop({{}, 1, false});
    QObject::connect(&steps_, &QTimer::timeout, [this] { step(); });
    steps_.start(100);
    QTimer::singleShot(longestWay * 1000, &steps_, [this] {
      if (steps_.isActive()) QGuiApplication::exit(1);
    });
  }

 private:
  void step() {
    if (auto* const opened = bench::screenOf<VehicleViewController>(client_)) {
      opened->pagesTabBar().tap(page_.tab);
    } else if (page_.tab == board) {
      auto* const fleet = bench::screenOf<BoardViewController>(client_);
      auto* const container =
          dynamic_cast<SWRevealViewController*>(client_.application().window().rootViewController().get());
      auto* const menu = container ? container->rearViewController().get() : nullptr;
      if (menu && !fleet) dynamic_cast<Button&>(*menu->findOutlet("fleetButton")).tap();
      if (!fleet || fleet->mapView().annotations().size() < BoardViewController::most) return;
    } else {
      auto* const vehicles = bench::screenOf<VehiclesTableViewController>(client_);
      if (!vehicles || vehicles->itemsTableView().numberOfRows() <= row_ + 1) return;
      if (page_.tab >= 0) return vehicles->itemsTableView().tap(row_);
    }
    steps_.stop();
    if (page_.minimised) client_.mainWindow().window().showMinimized();
    measure(client_.mainWindow().window(), seconds_, [this] {
      const auto* const live = bench::screenOf<LiveDetailViewController>(client_);
      return live && live->polyline() ? static_cast<double>(live->polyline()->coordinates().size()) : 0;
    });
  }

  Client& client_;
  const Page& page_;
  int row_;
  int seconds_;
  QTimer steps_;
};

/// In the first rows of the list, one vehicle that stands the whole time and one that drives.
std::map<Vehicle, int> rowsOf(int seconds) {
  const QDateTime start(QDate::currentDate(), QTime::fromString(serviceStart));
  const auto positions = [&start](int after) {
    bench::DemoService service({"--now", start.addSecs(after).toString("yyyy-MM-dd HH:mm:ss")});
    std::vector<QJsonValue> found;
    for (const QJsonValue vehicle : service.ask("/vehicles?offset=0&limit=20")["vehicles"].toArray())
      found.push_back(
          service.ask("/live?vehid=" + QString::number(vehicle["vehicleId"].toInt()))["live"]["location"]);
    return found;
  };
  const int end = settling + seconds + 30;
  const auto first = positions(0), middle = positions(end / 2), last = positions(end);
  std::map<Vehicle, int> rows{{Vehicle::none, 0}};
  for (std::size_t i = 0; i < std::min({first.size(), middle.size(), last.size()}); ++i)
    if ((first[i] == middle[i]) == (middle[i] == last[i]))
      rows.emplace(first[i] == middle[i] ? Vehicle::standing : Vehicle::driving, static_cast<int>(i));
  return rows;
}

std::optional<Use> usedBy(QProcess& child) {
  if (!child.waitForFinished(-1) || child.exitCode() != 0) return std::nullopt;
  const auto words = child.readAllStandardOutput().trimmed().split(' ');
  if (words.size() != 4) return std::nullopt;
  return Use{words[0].toDouble(), words[1].toDouble(), words[2].toDouble(), words[3].toDouble()};
}

int compare(int seconds) {
  const std::map<Vehicle, int> rows = rowsOf(seconds);
  bench::DemoService service({"--now", QDate::currentDate().toString("yyyy-MM-dd ") + serviceStart});
  if (service.token().isEmpty() || rows.size() < 3) {
    std::fputs(
        "fleetor_bench_energy: the demo service does not answer, or has no vehicle that stands or none that "
        "drives\n",
        stderr);
    return 1;
  }

  const QTemporaryDir folder;
  std::vector<std::unique_ptr<QProcess>> children;
  const auto start = [&](const QStringList& arguments) {
    children.push_back(std::make_unique<QProcess>());
    children.back()->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    children.back()->start(QCoreApplication::applicationFilePath(), arguments);
    // So that their polls do not coincide.
    QEventLoop pause;
    QTimer::singleShot(static_cast<int>(1000 * pollInterval / (std::size(pages) + 1)), &pause,
                       &QEventLoop::quit);
    pause.exec();
  };
  start({"empty", QString::number(seconds)});
  for (std::size_t i = 0; i < std::size(pages); ++i) {
    const QString number = QString::number(i);
    QDir(folder.path()).mkdir(number);
    start({number, QString::number(seconds), service.url(), service.token(), folder.filePath(number),
           QString::number(rows.at(pages[i].vehicle))});
  }

  const double minutes = seconds / 60.0;
  std::printf("%d s each, all at the same time    CPU ms/min  (aim)  wake-ups/s  (aim)  frames/min  (aim)\n",
              seconds);
  const auto print = [&](const char* name, const Use& use, const Page& aims, double wakeUps) {
    const auto aim = [](double most) {
      char text[16] = "";
      if (most > 0) std::snprintf(text, sizeof text, "(%g)", most);
      return std::string(text);
    };
    const double cpu = use.cpu / minutes, woken = use.wakeUps / seconds, frames = use.frames / minutes;
    std::printf("%-36s %8.1f %6s %11.2f %6s %11.1f %6s\n", name, cpu, aim(aims.cpuAim).c_str(), woken,
                aim(wakeUps).c_str(), frames, aim(aims.framesAim).c_str());
    bench::record("energy", name, "CPU ms a minute", cpu);
    bench::record("energy", name, "wake-ups a second", woken);
    bench::record("energy", name, "frames a minute", frames);
  };
  bool whole = true;
  for (std::size_t i = 0; i < children.size(); ++i) {
    const char* const name = i == 0 ? "empty window" : pages[i - 1].name;
    const auto use = usedBy(*children[i]);
    if (!use) {
      std::fprintf(stderr, "fleetor_bench_energy: \"%s\" did not reach its end\n", name);
      whole = false;
    } else if (i == 0) {
      print(name, *use, {}, 0);
    } else {
      const Page& page = pages[i - 1];
      const bool trail = page.tab == 1 && page.vehicle == Vehicle::driving && !page.minimised;
      if (trail && use->moves < seconds / pollInterval / 2) {
        std::fprintf(stderr, "fleetor_bench_energy: \"%s\" moved only %.0f times\n", name, use->moves);
        whole = false;
      }
      print(name, *use, page, wakeUpsAim);
    }
  }
  return whole ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc <= 2) {
    const int seconds = argc == 2 ? std::atoi(argv[1]) : 60;
    if (seconds < 1) {
      std::fprintf(stderr, "usage: %s [seconds]\n", argv[0]);
      return 2;
    }
    const QCoreApplication application(argc, argv);
    return compare(seconds);
  }
  const QGuiApplication application(argc, argv);
  const int seconds = std::stoi(argv[2]);
  if (std::string(argv[1]) == "empty") return emptyWindow(seconds);
  const auto client = bench::signedInClient(argv[3], argv[4], argv[5]);
  if (!client->open()) return 1;
  const Visit visit(*client, pages[std::stoul(argv[1])], std::stoi(argv[6]), seconds);
  return QGuiApplication::exec();
}
