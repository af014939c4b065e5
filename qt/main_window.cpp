#include "qt/main_window.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QInputMethod>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtPlugin>

#include "qt/components/accessible_layer.h"
#include "qt/components/user_preferences.h"
#include "qt/components/window_item.h"
#include "qt/map/map_view_item.h"
#include "qt/outlined_pictures.h"

// The QML module is part of this library; naming its registration keeps the linker from leaving it out.
extern void qml_register_types_Fleetor();

namespace fleetor {

MainWindow::MainWindow(Application& application, Environment& environment, TileSource& tiles,
                       const Options& options)
    : application_(application), adapters_(environment) {
  addMapAdapters(adapters_, tiles);
  qml_register_types_Fleetor();
  QAccessible::installFactory(AccessibleLayer::interfaceOf);
  auto* item = adapters_.itemFor<WindowItem>(&application.window());
  engine_.setInitialProperties(
      {{QStringLiteral("content"), QVariant::fromValue(item)},
       {QStringLiteral("width"), options.size.width()},
       {QStringLiteral("height"), options.size.height()},
       {QStringLiteral("visibility"), options.fills ? QWindow::Maximized : QWindow::AutomaticVisibility},
       {QStringLiteral("forceDark"), options.dark}});
  engine_.addImageProvider(QStringLiteral("outlined"), new OutlinedPictures);
  engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
  engine_.load(QUrl(QStringLiteral("qrc:/qt/qml/Fleetor/Main.qml")));
  if (engine_.rootObjects().isEmpty()) return;
  window_ = qobject_cast<QQuickWindow*>(engine_.rootObjects().constFirst());
  if (!window_) return;

  const auto resize = [this, item] { item->setSize(window_->width(), window_->height()); };
  connect(window_, &QWindow::widthChanged, this, resize);
  connect(window_, &QWindow::heightChanged, this, resize);
  resize();
  const QInputMethod* const input = QGuiApplication::inputMethod();
  const auto keyboard = [item, input] {
    item->setKeyboardHeight(input->isVisible() ? input->keyboardRectangle().height() : 0);
  };
  connect(input, &QInputMethod::keyboardRectangleChanged, this, keyboard);
  connect(input, &QInputMethod::visibleChanged, this, keyboard);
  connect(window_, &QWindow::visibilityChanged, this, &MainWindow::followVisibility);
  connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &MainWindow::followVisibility);
}

MainWindow::~MainWindow() {
  if (window_) window_->disconnect(this);
  qGuiApp->disconnect(this);
  QGuiApplication::inputMethod()->disconnect(this);
}

void MainWindow::comeForward() {
  window_->setWindowStates(window_->windowStates() & ~Qt::WindowMinimized);
  window_->show();
  window_->raise();
  window_->requestActivate();
}

void MainWindow::growTo(QSize size) {
  window_->resize(window_->size().expandedTo(size.boundedTo(window_->screen()->availableSize())));
}

void MainWindow::followDesktop(const DesktopPreferences& preferences) {
  engine_.singletonInstance<UserPreferences*>(qmlTypeId("Fleetor", 1, 0, "UserPreferences"))
      ->followDesktop(preferences);
}

void MainWindow::followVisibility() {
  const auto state = QGuiApplication::applicationState();
  const bool inBackground = window_->visibility() == QWindow::Hidden ||
                            window_->visibility() == QWindow::Minimized ||
                            state == Qt::ApplicationSuspended || state == Qt::ApplicationHidden;
  if (inBackground == inBackground_) return;
  inBackground_ = inBackground;
  window_->contentItem()->setVisible(!inBackground);  // what turns or fades rests meanwhile
  if (inBackground)
    application_.didEnterBackground();
  else
    application_.willEnterForeground();
}

}  // namespace fleetor
