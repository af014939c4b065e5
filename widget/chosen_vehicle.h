#pragma once

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

namespace fleetor::widget {

/// What the client has written for the widget, kept up to date: it follows the file of shared settings, which
/// may appear later, be replaced as a whole, or disappear. Main thread only.
class ChosenVehicle : public QObject {
  Q_OBJECT
  Q_PROPERTY(
      bool chosen MEMBER chosen_ NOTIFY changed)  // a vehicle is chosen; the texts may be empty all the same
  Q_PROPERTY(QString name MEMBER name_ NOTIFY changed)
  Q_PROPERTY(QString dateTime MEMBER dateTime_ NOTIFY changed)
  Q_PROPERTY(QString speed MEMBER speed_ NOTIFY changed)  // km/h, with its unit
  Q_PROPERTY(QString street MEMBER street_ NOTIFY changed)

 public:
  explicit ChosenVehicle(QString settingsFile);

  /// Asks the desktop to open the client's choice of vehicle; false when it does not know how.
  Q_INVOKABLE bool change() const;

 Q_SIGNALS:
  void changed();

 private:
  void read();

  QString file_;
  QByteArray text_;  // what the file last held
  QFileSystemWatcher watcher_;
  QTimer timer_;
  bool chosen_ = false;
  QString name_;
  QString dateTime_;
  QString speed_;
  QString street_;
};

/// Where the client keeps the shared settings of this user.
QString sharedSettingsFile();

}  // namespace fleetor::widget
