#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <functional>

#include "qt/device/settings_portal.h"

namespace fleetor {

/// The settings portal's end on the session bus: asks for the settings as soon as it is made, and takes
/// what comes.
class SettingsPortal::Wire : public QObject {
  Q_OBJECT

 public:
  Wire();

  void listen(std::function<void(const DesktopPreferences&)> changed);

 private:
  Q_SLOT void take(const QString& space, const QString& key, const QDBusVariant& packed);

  void ask(const QString& space, const QString& key);
  void notify();

  QDBusConnection bus_ = QDBusConnection::sessionBus();
  std::function<void(const DesktopPreferences&)> changed_;
  DesktopPreferences preferences_;
  DesktopPreferences reported_;
};

}  // namespace fleetor
