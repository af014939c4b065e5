#include "chosen_vehicle.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QUrl>
#include <utility>

namespace fleetor::widget {

ChosenVehicle::ChosenVehicle(QString settingsFile) : file_(std::move(settingsFile)) {
  const auto look = [this] {
    watch();
    read();
  };
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, look);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, look);
  look();
}

// The file is replaced rather than written, so that its folder has to be watched as well; and before the
// client's first start there is only some folder above that.
void ChosenVehicle::watch() {
  for (QString path = file_;; path = QFileInfo(path).path()) {
    const bool exists = QFileInfo::exists(path);
    if (exists) watcher_.addPath(path);
    if ((exists && path != file_) || path == QFileInfo(path).path()) return;
  }
}

void ChosenVehicle::read() {
  QFile file(file_);
  const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  const QJsonObject settings = QJsonDocument::fromJson(text).object();
  const QJsonValue vehicle = settings.value(QStringLiteral("WidgetVehicle"));
  QJsonObject reading = settings.value(QStringLiteral("WidgetReading")).toObject();
  chosen_ = vehicle.isDouble();
  // Between two writes of the client the reading may still be that of the vehicle before.
  if (!chosen_ || reading.value(QStringLiteral("vehicle")).toString() != QString::number(vehicle.toInteger()))
    reading = {};
  name_ = reading.value(QStringLiteral("name")).toString();
  dateTime_ = reading.value(QStringLiteral("dateTime")).toString();
  speed_ = reading.value(QStringLiteral("speed")).toString();
  if (!speed_.isEmpty()) speed_ += QStringLiteral(" km/h");
  street_ = reading.value(QStringLiteral("street")).toString();
  Q_EMIT changed();
}

bool ChosenVehicle::change() const {
  return QDesktopServices::openUrl(QUrl(QStringLiteral("fleetor:vehicles")));
}

QString sharedSettingsFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QStringLiteral("/fleetor/fleetor/group.fleetor.json");
}

}  // namespace fleetor::widget
