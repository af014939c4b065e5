#include <QDir>
#include <QFile>
#include <QFont>
#include <QGuiApplication>
#include <QIcon>
#include <QInputDevice>
#include <QQuickWindow>
#include <QScreen>
#include <QStandardPaths>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "app/client.h"
#include "app/exit_guard.h"
#include "app/heap.h"
#include "app/options.h"
#include "diagnostics/crash_handler.h"
#include "diagnostics/report_files.h"
#include "qt/components/user_preferences.h"
#include "qt/device/bus_activation.h"
#include "qt/device/guarded_key_store.h"
#include "qt/device/key_store_mark.h"
#include "qt/device/language.h"
#include "qt/device/settings_portal.h"
#include "qt/device/single_instance.h"
#include "qt/device/wayland_seat.h"
#include "ui/device_class.h"

namespace {

bool hasTouchScreen() {
  const auto devices = QInputDevice::devices();
  return std::ranges::any_of(devices, [](const QInputDevice* device) {
    return device->type() == QInputDevice::DeviceType::TouchScreen;
  });
}

/// Called before anything that may crash, the start of Qt included.
fleetor::ReportSetup startReporting() {
  const std::string folder =
      (QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/reports"))
          .toStdString();
  const auto path = fleetor::reportPath(folder, fleetor::crashReport, std::chrono::system_clock::now());
  if (!fleetor::makeReportFolder(folder) || !fleetor::installCrashHandler(path, {"fleetor", FLEETOR_VERSION}))
    std::fputs("fleetor: crashes of this run cannot be reported\n", stderr);
  return {folder, FLEETOR_REPORTS_URL, FLEETOR_VERSION};
}

}  // namespace

int main(int argc, char** argv) {
  std::string problem;
  const auto options = fleetor::parseOptions(std::vector<std::string>(argv + 1, argv + argc),
                                             fleetor::Language::known(), problem);
  if (!options || options->help) {
    const QCoreApplication application(argc, argv);  // needs no display
    if (!options) std::fprintf(stderr, "fleetor: %s\n", problem.c_str());
    std::fputs(fleetor::usage().c_str(), options ? stdout : stderr);
    return options ? 0 : 2;
  }

  QGuiApplication::setOrganizationName(QStringLiteral("fleetor"));
  QGuiApplication::setApplicationName(QStringLiteral("fleetor"));
  const fleetor::ReportSetup reports = startReporting();
  fleetor::returnLargeBlocks();

  fleetor::prepareForMissingSeat();
  QGuiApplication application(argc, argv);
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Fleetor"));
  QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/images/fleetor.svg")));
  QGuiApplication::setDesktopFileName(QStringLiteral("org.fleetor.fleetor"));

  fleetor::SingleInstance instance(fleetor::runtimePath("client"));
  if (!instance.enter(fleetor::requestOf(*options))) {
    std::fputs("fleetor: a client is running already and has taken over; other options are ignored\n",
               stderr);
    return 0;
  }

  // Asked early, so that the answer has most likely arrived when the first frame is drawn.
  fleetor::SettingsPortal portal;

  if (options->textSize) {
    QFont font = QGuiApplication::font();
    font.setPointSizeF(fleetor::UserPreferences::normalPoints * *options->textSize / 100);
    QGuiApplication::setFont(font);
  }

  const std::string standard = fleetor::settingsPath(fleetor::standardSuite);
  const std::string shared = fleetor::settingsPath(fleetor::sharedSuite);
  const std::string signIn = fleetor::keyStoreMarkPath();
  const QString tiles =
      QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/tiles");
  const QString keptFleet =
      QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/last-known");
  if (options->fresh) {
    fleetor::KeyStoreMark(signIn).remove();
    for (const auto& path : {standard, shared})
      QFile::remove(QString::fromStdString(path));
    QDir(tiles).removeRecursively();
  }

  const QScreen* const screen = QGuiApplication::primaryScreen();
  const QSize available =
      screen ? screen->availableSize() : QSize(fleetor::largestSide, fleetor::largestSide);
  const QSizeF whole = screen ? screen->size() : QSize();
  const fleetor::Size screenSize{whole.width(), whole.height()};
  std::optional<fleetor::Size> chosen;
  if (options->width && options->height) chosen = {1.0 * *options->width, 1.0 * *options->height};
  const bool isTouched = hasTouchScreen();
  const fleetor::Idiom idiom =
      options->deviceClass.value_or(fleetor::deviceClassOf(screenSize, isTouched, chosen));
  std::optional<double> border;
  if (!options->deviceClass) border = fleetor::deviceClassBorder(screenSize, isTouched);
  const auto [width, height, fills] =
      fleetor::openingOf(*options, idiom, available.width(), available.height());
  fleetor::ExitGuard guard;
  fleetor::Client client({FLEETOR_SERVICE_URL,
                          idiom,
                          {{width, height}, options->dark, fills},
                          standard,
                          shared,
                          tiles.toStdString(),
                          fleetor::makeKeyStore(signIn),
                          options->language.value_or(fleetor::Language::ofSystem()),
                          reports,
                          border,
                          keptFleet.toStdString()});
  if (!client.open()) {
    std::fputs("fleetor: the window could not be opened\n", stderr);
    return 1;
  }
  // After the first frame the render thread and all that it uses exist.
  QQuickWindow& window = client.mainWindow().window();
  QObject::connect(
      &window, &QQuickWindow::frameSwapped, &window, [&guard] { guard.renew(); },
      static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
  portal.listen([&](fleetor::DesktopPreferences preferences) {
    // X11 applies that scale itself, and --text-size overrides it.
    if (options->textSize || !QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
      preferences.textScale = 1;
    client.mainWindow().followDesktop(preferences);
  });
  if (!options->url.empty()) client.application().receiveURL(options->url);
  instance.listen([&client](const std::string& request) { client.answer(request); });
  const fleetor::BusActivation activation(
      {[&client](const std::string& url) { client.answer(url); },
       [&client](const std::string& action) { client.answer("--" + action); }});
  return QGuiApplication::exec();
}
