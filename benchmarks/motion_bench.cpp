// How long the frames of a motion take: the menu, a vehicle that is opened, its pages that turn, and the way
// back, of the real client in a window of a phone's size; beside a rectangle that moves in an empty window.
// Needs a display, and the demo service beside this program's folder.

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "figures.h"
#include "frame_timer.h"
#include "shell/vehicles_table_view_controller.h"
#include "signed_in.h"
#include "ui/containers/navigation_controller.h"
#include "ui/containers/sw_reveal_view_controller.h"
#include "ui/containers/swipe_tab_bar_controller.h"

namespace {

using namespace fleetor;

constexpr int rounds = 10;
constexpr int motion = 350;  // ms, as long as the longest
constexpr int pause = 700;   // ms, until nothing moves any more
constexpr int arrival = 8;   // seconds until rows and tiles have come
constexpr double inTime = 1000.0 / 60;

void wait(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

/// The frames of the motions that these start, one after another, in milliseconds.
std::vector<double> framesOf(QQuickWindow& window, const std::vector<std::function<void()>>& starts) {
  std::vector<double> times;
  bool moves = false;
  FrameTimer timer(window);
  timer.finished = [&](double milliseconds) {
    if (moves) times.push_back(milliseconds);
  };
  for (int round = 0; round <= rounds; ++round)
    for (const auto& start : starts) {
      start();
      moves = round > 0;  // the first time, the screens are made
      wait(motion);
      moves = false;
      wait(pause);
    }
  return times;
}

void print(const char* name, std::vector<double> times) {
  if (times.empty()) return;
  std::ranges::sort(times);
  const auto late = std::ranges::count_if(times, [](double each) { return each > inTime; });
  const double median = times[times.size() / 2];
  const double nearlyAll = times[times.size() * 95 / 100];
  std::printf("%-36s %7zu %8.1f %8.1f %8.1f %13.1f\n", name, times.size(), median, nearlyAll, times.back(),
              100.0 * static_cast<double>(late) / static_cast<double>(times.size()));
  bench::record("motion", name, "median, ms", median);
  bench::record("motion", name, "95 of 100, ms", nearlyAll);
}

void moveRectangle() {
  QQmlApplicationEngine engine;
  engine.loadData(R"(import QtQuick
    Window {
      visible: true; width: 390; height: 844
      function start() { slide.restart(); }
      Rectangle { width: 390; height: 844; color: "steelblue"
        NumberAnimation on x { id: slide; from: 390; to: 0; duration: 350 } }
    })");
  auto* const window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
  if (!window) return;
  wait(1000);
  print("a rectangle in an empty window",
        framesOf(*window, {[window] { QMetaObject::invokeMethod(window, "start"); }}));
}

}  // namespace

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  bench::DemoService service;
  const QTemporaryDir folder;
  const auto client = bench::signedInClient(service.url().toStdString(), service.token().toStdString(),
                                            folder.path().toStdString());
  if (service.token().isEmpty() || !client->open()) {
    std::fputs("fleetor_bench_motion: the demo service or the window is missing\n", stderr);
    return 1;
  }
  wait(arrival * 1000);
  auto* const menu = bench::screenOf<SWRevealViewController>(*client);
  auto* const stack = bench::screenOf<NavigationController>(*client);
  auto* const list = bench::screenOf<VehiclesTableViewController>(*client);
  if (!menu || !stack || !list || list->itemsTableView().numberOfRows() < 2) {
    std::fputs("fleetor_bench_motion: the list of vehicles does not come\n", stderr);
    return 1;
  }

  std::printf("%d x %d points, the basic render loop  frames   median       95  slowest  late, of 100\n", 390,
              844);
  moveRectangle();
  auto& window = client->mainWindow().window();
  const auto toggle = [menu] { menu->revealToggleAnimated(true); };
  print("the menu opens and closes", framesOf(window, {toggle, toggle}));
  const auto open = [list] { list->itemsTableView().tap(0); };
  const auto back = [stack] { stack->popViewControllerAnimated(true); };
  print("a vehicle opens and goes back", framesOf(window, {open, back}));
  open();
  wait(arrival * 1000);
  auto* const pages = bench::screenOf<SwipeTabBarController>(*client);
  const auto turnTo = [pages](int page) {
    return [pages, page] { pages->setSelectedIndexAnimated(page, true); };
  };
  print("Information, Live and Map turn", framesOf(window, {turnTo(1), turnTo(2), turnTo(1), turnTo(0)}));
  return 0;
}
