// From the start of the process to the launch screen's first frame and to the first row of vehicles, and the
// memory held with the list open: the client beside an empty Qt Quick window. Each figure comes from a
// separate process; the two kinds take turns. Needs a display, and the demo service beside this program's
// folder.

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "figures.h"
#include "shell/vehicles_table_view_controller.h"
#include "signed_in.h"

namespace {

using namespace fleetor;

constexpr int rounds = 15;
constexpr double launchWait = 3000;  // ms; the launch screen stays that long by design
constexpr int settling = 1000;       // ms, before the memory is read

double monotonicMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double residentMegabytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with("VmRSS:")) return std::stod(line.substr(6)) / 1024;
  return 0;
}

void report(const char* figure, double value) {
  std::printf("%s %.3f\n", figure, value);
  std::fflush(stdout);
}

void endSettled() {
  QTimer::singleShot(settling, [] {
    report("memory", residentMegabytes());
    QGuiApplication::quit();
  });
}

int emptyWindow(double started) {
  QQmlApplicationEngine engine;
  engine.loadData("import QtQuick\nWindow { visible: true; width: 390; height: 844 }");
  auto* const window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
  if (!window) return 1;
  QObject::connect(
      window, &QQuickWindow::frameSwapped, window,
      [started] {
        report("frame", monotonicMilliseconds() - started);
        endSettled();
      },
      Qt::SingleShotConnection);
  return QGuiApplication::exec();
}

/// Whether the list of vehicles has rows besides the loading row.
bool showsVehicles(Client& client) {
  auto* const list = bench::screenOf<VehiclesTableViewController>(client);
  return list && list->itemsTableView().numberOfRows() > 1;
}

int wholeClient(double started, const std::string& url, const std::string& token, const std::string& folder) {
  const auto client = bench::signedInClient(url, token, folder);
  if (!client->open()) return 1;

  int frames = 0;
  bool ready = false;
  bool done = false;
  QObject::connect(&client->mainWindow().window(), &QQuickWindow::frameSwapped, &client->mainWindow(), [&] {
    if (++frames == 1) report("frame", monotonicMilliseconds() - started);
    if (ready && !done) {  // this frame was the first to be made with the rows there
      done = true;
      report("row", monotonicMilliseconds() - started - launchWait);
      endSettled();
    }
    ready = ready || showsVehicles(*client);
  });
  return QGuiApplication::exec();
}

using Figures = std::map<std::string, std::vector<double>>;

bool measure(Figures& figures, QStringList arguments) {
  QProcess child;
  child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  arguments.insert(1, QString::number(monotonicMilliseconds(), 'f', 3));
  child.start(QCoreApplication::applicationFilePath(), arguments);
  if (!child.waitForFinished(60000) || child.exitCode() != 0) return false;
  for (const QByteArray& line : child.readAllStandardOutput().split('\n'))
    if (const auto parts = line.split(' '); parts.size() == 2)
      figures[parts[0].toStdString()].push_back(parts[1].toDouble());
  return true;
}

double median(std::vector<double> values) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

int compare() {
  const bench::DemoService service;
  if (service.token().isEmpty()) {
    std::fputs("fleetor_bench_start: the demo service does not answer\n", stderr);
    return 1;
  }
  const QTemporaryDir folder;

  Figures empty;
  Figures client;
  bool measured = true;
  for (int round = 0; measured && round < rounds; ++round)
    measured = measure(empty, {"empty"}) &&
               measure(client, {"client", service.url(), service.token(), folder.path()});
  if (!measured) {
    std::fputs("fleetor_bench_start: a process did not finish its round\n", stderr);
    return 1;
  }

  std::printf("medians of %d processes each              empty window   client   ratio\n", rounds);
  const auto row = [](const char* name, double reference, double ours) {
    std::printf("%-40s %12.1f %8.1f %7.2f\n", name, reference, ours, ours / reference);
    bench::record("start", name, "client", ours);
    bench::record("start", name, "client by empty window", ours / reference);
  };
  row("process start to first frame, ms", median(empty["frame"]), median(client["frame"]));
  row("process start to first vehicle, ms", median(empty["frame"]), median(client["row"]));
  row("resident memory with the list open, MB", median(empty["memory"]), median(client["memory"]));
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 1) {
    const QCoreApplication application(argc, argv);
    return compare();
  }
  const QGuiApplication application(argc, argv);
  const double started = std::stod(argv[2]);
  return argc == 3 ? emptyWindow(started) : wholeClient(started, argv[3], argv[4], argv[5]);
}
