#include "chosen_vehicle.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QUrl>
#include <chrono>
#include <utility>

namespace fleetor::widget {

using namespace std::chrono_literals;

namespace {

/// Laying out a very long text would stop the window.
QString drawn(const QJsonValue& value) {
  constexpr qsizetype longest = 1000;
  const QString text = value.toString();
  return text.size() > longest ? text.left(longest) + QChar(0x2026) : text;
}

}  // namespace

ChosenVehicle::ChosenVehicle(QString settingsFile) : file_(std::move(settingsFile)) {
  // The file is replaced rather than written, so it is its folder that has to be watched; made here in case
  // the client has not been started yet.
  const QString folder = QFileInfo(file_).path();
  QDir().mkpath(folder);
  watcher_.addPath(folder);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &ChosenVehicle::read);
  // Not every file system reports changes, and the user's watches may be used up.
  timer_.start(2s);
  connect(&timer_, &QTimer::timeout, this, &ChosenVehicle::read);
  read();
}

void ChosenVehicle::read() {
  QFile file(file_);
  // Opening a pipe in its place would wait for whoever writes to it.
  const bool readable = QFileInfo(file_).isFile() && file.open(QIODevice::ReadOnly);
  QByteArray text = readable ? file.readAll() : QByteArray();
  if (text == text_) return;
  text_ = std::move(text);
  const QJsonObject settings = QJsonDocument::fromJson(text_).object();
  const QJsonValue vehicle = settings.value(QStringLiteral("WidgetVehicle"));
  QJsonObject reading = settings.value(QStringLiteral("WidgetReading")).toObject();
  chosen_ = vehicle.isDouble();
  // Between two writes of the client the reading may still be that of the vehicle chosen before.
  if (!chosen_ || reading.value(QStringLiteral("vehicle")).toString() != QString::number(vehicle.toInteger()))
    reading = {};
  name_ = drawn(reading.value(QStringLiteral("name")));
  dateTime_ = drawn(reading.value(QStringLiteral("dateTime")));
  speed_ = drawn(reading.value(QStringLiteral("speed")));
  if (!speed_.isEmpty()) speed_ += QStringLiteral(" km/h");
  street_ = drawn(reading.value(QStringLiteral("street")));
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
