#include "qt/device/desktop_device.h"

#include <QDate>
#include <QFile>
#include <QLocale>
#include <QMessageAuthenticationCode>
#include <QSysInfo>
#include <QUrl>
#include <QUuid>
#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace fleetor {
namespace {

constexpr const char* vendorIdentifierKey = "VendorIdentifier";
constexpr double oldestSystemVersion = 8.0;

std::string schemeOf(const std::string& url) {
  return QUrl(QString::fromStdString(url)).scheme().toStdString();
}

bool isHarmless(std::string_view scheme) {
  constexpr std::string_view harmless[] = {"https", "http", "mailto", "tel", "sms", "geo"};
  return std::ranges::find(harmless, scheme) != std::end(harmless);
}

}  // namespace

DesktopDevice::DesktopDevice(Parts parts) : parts_(std::move(parts)), language_(parts_.language) {}

void DesktopDevice::setScreen(double width, double height, double scale) {
  width_ = width;
  height_ = height;
  scale_ = scale;
}

double DesktopDevice::systemVersion() const {
  // Some systems have no version, or one that is a word or a date: count them as recent.
  return std::max(QSysInfo::productVersion().toDouble(), oldestSystemVersion);
}

std::string DesktopDevice::identifierForVendor() {
  if (!identifier_.empty()) return identifier_;
  QUuid id;
  const auto kept = parts_.settings->object(vendorIdentifierKey);
  if (kept && std::holds_alternative<std::string>(*kept))
    id = QUuid(QString::fromStdString(std::get<std::string>(*kept)));
  if (id.isNull()) id = QUuid::createUuid();
  identifier_ = id.toString(QUuid::WithoutBraces).toUpper().toStdString();
  parts_.settings->setObject(identifier_, vendorIdentifierKey);
  parts_.settings->synchronize();
  return identifier_;
}

std::string DesktopDevice::fingerprintOf(const std::string& text) {
  return QMessageAuthenticationCode::hash(QByteArray::fromStdString(text),
                                          QByteArray::fromStdString(identifierForVendor()),
                                          QCryptographicHash::Sha256)
      .toHex()
      .toStdString();
}

std::string DesktopDevice::textOfDay(std::chrono::year_month_day day, const std::string& pattern) const {
  const QDate date(int(day.year()), static_cast<int>(unsigned(day.month())),
                   static_cast<int>(unsigned(day.day())));
  return QLocale().toString(date, QString::fromStdString(pattern)).toStdString();
}

std::string DesktopDevice::pathForResource(const std::string& name, const std::string& type) const {
  std::string folder = parts_.resourceRoot;
  if (!folder.ends_with('/')) folder += '/';
  const std::string file = type.empty() ? name : name + "." + type;
  const auto exists = [](const std::string& path) { return QFile::exists(QString::fromStdString(path)); };
  if (std::string path = folder + language_.code() + '/' + file; exists(path)) return path;
  if (std::string path = folder + file; exists(path)) return path;
  return {};
}

void DesktopDevice::openURL(const std::string& url) {
  if (isHarmless(schemeOf(url)) && parts_.openURL) parts_.openURL(url);
}

bool DesktopDevice::canOpenURL(const std::string& url) const {
  const std::string scheme = schemeOf(url);
  return isHarmless(scheme) && parts_.opensScheme && parts_.opensScheme(scheme);
}

}  // namespace fleetor
