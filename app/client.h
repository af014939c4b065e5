#pragma once

#include <memory>
#include <optional>
#include <string>

#include "diagnostics/report_post.h"
#include "diagnostics/usage_events.h"
#include "http/http_transport.h"
#include "http/system_reachability.h"
#include "kept/kept_fleet.h"
#include "platform/key_store.h"
#include "qt/device/desktop_device.h"
#include "qt/device/desktop_documents.h"
#include "qt/device/file_settings.h"
#include "qt/device/log_sink.h"
#include "qt/device/network_use_indicator.h"
#include "qt/device/queues.h"
#include "qt/device/system_clock.h"
#include "qt/main_window.h"
#include "qt/map/tile_source.h"
#include "shell/app_delegate.h"
#include "shell/widget_reading.h"
#include "ui/appearance.h"
#include "ui/application.h"
#include "ui/device_class_watch.h"
#include "ui/notification_center.h"
#include "ui/storyboard.h"

namespace fleetor {

/// The whole client, put together. One at a time, on the main thread, inside a QGuiApplication.
class Client {
 public:
  struct Setup {
    std::string serviceURL;  ///< without a trailing slash
    Idiom idiom = Idiom::phone;
    MainWindow::Options window;
    std::string standardSettings;  ///< paths of the settings' files
    std::string sharedSettings;
    std::string tileFolder;  ///< where the tiles of the maps are kept
    std::unique_ptr<KeyStore> keyStore;
    std::string language = "en";        ///< as Language names it
    ReportSetup reports = {};           ///< without a folder there are none
    std::optional<double> border = {};  ///< of the window's width, at which the idiom changes
    std::string keptFleet = {};         ///< path of the file that keeps the vehicles; empty: nothing is kept
  };

  explicit Client(Setup setup);

  /// Destroys the window, then the screens, the transports, the queues with all waiting tasks, then the rest,
  /// so that nothing reaches an object that is gone.
  ~Client();

  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  /// Starts the client and opens its window; false when it cannot be opened.
  bool open();

  /// The client was started again, with that request (see `requestOf`). The window is open.
  void answer(const std::string& request);

  MainWindow& mainWindow() { return *mainWindow_; }
  Application& application() { return *application_; }

 private:
  void handle(KeyStoreEvent event);
  void handle(KeptFleet::Problem problem);
  void become(Idiom idiom);  ///< chosen by hand

  std::string serviceURL_;
  MainWindow::Options window_;
  std::optional<double> border_;
  FileSettings standardSettings_;
  FileSettings sharedSettings_;
  std::unique_ptr<KeyStore> keyStore_;
  DesktopDevice device_;
  SystemClock clock_;
  LogSink log_;
  SystemReachability reachability_;
  NotificationCenter notificationCenter_;
  WidgetReading widgetReading_;
  Appearance appearance_;
  std::optional<QtQueues> queues_;
  NetworkUseIndicator networkUse_;
  DesktopDocuments documents_;
  std::unique_ptr<KeptFleet> kept_;  ///< null: nothing is kept
  std::optional<HttpTransport> transport_;
  std::optional<ReportPost> reportPost_;
  UsageEvents usage_;
  TileSource tiles_;
  Environment environment_;
  Storyboard storyboard_;
  AppDelegate delegate_;
  std::optional<Application> application_;
  std::optional<MainWindow> mainWindow_;
  std::optional<DeviceClassWatch> classWatch_;
};

}  // namespace fleetor
