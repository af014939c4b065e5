#pragma once

#include <QObject>
#include <QQmlApplicationEngine>
#include <QSize>

#include "qt/components/adapters.h"
#include "qt/device/settings_portal.h"
#include "qt/map/tile_source.h"
#include "ui/application.h"

class QQuickWindow;

namespace fleetor {

/// Draws the application's window with Qt Quick and passes the user's gestures on. Also reports to the
/// application when it enters the background (hidden, minimised or suspended; losing the focus does not
/// count) and comes back. Main thread only; destroyed before the application, with every drawing of its
/// components.
class MainWindow : public QObject {
 public:
  /// How the window starts.
  struct Options {
    QSize size{390, 844};  ///< points
    bool dark = false;     ///< always, whatever the desktop asks for
    bool fills = false;    ///< maximised
  };

  MainWindow(Application& application, Environment& environment, TileSource& tiles, const Options& options);
  ~MainWindow() override;

  /// False when the window could not be made; the reason is on standard error.
  bool isOpen() const { return window_ != nullptr; }
  QQuickWindow& window() { return *window_; }

  /// Puts the window on top of the others, minimised or not, as far as the desktop lets it.
  void comeForward();

  /// Makes the window at least that large, as far as its screen allows.
  void growTo(QSize size);

  /// Takes over the preferences of the desktop. The window must be open.
  void followDesktop(const DesktopPreferences& preferences);

 private:
  void followVisibility();

  Application& application_;
  Adapters adapters_;
  QQmlApplicationEngine engine_;
  QQuickWindow* window_ = nullptr;
  bool inBackground_ = false;
};

}  // namespace fleetor
