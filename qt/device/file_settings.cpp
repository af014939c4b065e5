#include "qt/device/file_settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <cstdio>
#include <utility>

namespace fleetor {
namespace {

QJsonValue jsonOf(const Settings::Value& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return QString::fromStdString(*text);
  if (const auto* texts = std::get_if<Settings::Texts>(&value)) {
    QJsonObject object;
    for (const auto& [name, each] : *texts)
      object.insert(QString::fromStdString(name), QString::fromStdString(each));
    return object;
  }
  return static_cast<qint64>(std::get<std::int64_t>(value));
}

}  // namespace

struct FileSettings::Contents {
  QString path;
  QJsonObject values;
  std::map<std::string, std::optional<Value>> pending;  ///< changes not written yet; nothing: removed
  bool isBroken = false;                                ///< the file is there and cannot be understood
  bool reportedUnreadable = false;
  bool reportedUnwritable = false;

  void report(bool& reported, const char* what, const QString& why) const {
    if (std::exchange(reported, true)) return;
    std::fprintf(stderr, "fleetor: settings in %s cannot be %s: %s\n", qPrintable(path), what,
                 qPrintable(why));
  }

  void applyPending() {
    for (const auto& [key, value] : pending) {
      const QString name = QString::fromStdString(key);
      if (value)
        values.insert(name, jsonOf(*value));
      else
        values.remove(name);
    }
  }
};

FileSettings::FileSettings(std::string path)
    : path_(std::move(path)), contents_(std::make_unique<Contents>()) {
  contents_->path = QString::fromStdString(path_);
  load();
}

FileSettings::~FileSettings() {
  if (!contents_->pending.empty()) save();
}

void FileSettings::load() {
  Contents& c = *contents_;
  c.values = {};
  c.isBroken = false;
  QFile file(c.path);
  if (file.exists()) {
    QString why;
    if (!QFileInfo(c.path).isFile()) {
      why = QStringLiteral("not a file");  // opening a pipe would wait for whoever writes to it
    } else if (!file.open(QIODevice::ReadOnly)) {
      why = file.errorString();
    } else {
      QJsonParseError error;
      const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
      if (document.isObject())
        c.values = document.object();
      else
        why = error.error == QJsonParseError::NoError ? QStringLiteral("not a JSON object")
                                                      : error.errorString();
    }
    c.isBroken = !why.isEmpty();
    if (c.isBroken) c.report(c.reportedUnreadable, "read, defaults are used", why);
  }
  c.applyPending();
}

void FileSettings::save() {
  Contents& c = *contents_;
  QDir().mkpath(QFileInfo(c.path).absolutePath());
  // Two clients at the same time take turns; one that dies with the lock holds up the other for half a
  // second.
  QLockFile lock(c.path + ".lock");
  lock.tryLock(500);
  load();
  if (c.isBroken) {
    QFile::remove(c.path + ".broken");
    QFile::rename(c.path, c.path + ".broken");
  }
  QSaveFile file(c.path);
  const QByteArray text = QJsonDocument(c.values).toJson();
  // On a full disk a long text is written in part, a short one waits in a buffer, and `commit` does not
  // notice.
  const bool written = file.open(QIODevice::WriteOnly) &&
                       file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
                       file.write(text) == text.size() && file.flush() && file.commit();
  if (written) {
    c.pending.clear();
    c.isBroken = false;
  } else {
    c.report(c.reportedUnwritable, "written", file.errorString());
  }
}

std::optional<Settings::Value> FileSettings::object(const std::string& key) const {
  const QJsonValue value = contents_->values.value(QString::fromStdString(key));
  if (value.isString()) return value.toString().toStdString();
  if (value.isDouble()) {
    const auto number = value.toInteger();
    if (value == QJsonValue(number)) return static_cast<std::int64_t>(number);
  }
  if (value.isObject()) {
    Texts texts;
    const QJsonObject object = value.toObject();
    for (auto each = object.begin(); each != object.end(); ++each) {
      if (!each.value().isString()) return std::nullopt;
      texts[each.key().toStdString()] = each.value().toString().toStdString();
    }
    return texts;
  }
  return std::nullopt;
}

void FileSettings::setObject(const Value& value, const std::string& key) {
  if (object(key) == value) return;
  contents_->pending[key] = value;
  save();
}

void FileSettings::removeObject(const std::string& key) {
  if (!contents_->values.contains(QString::fromStdString(key))) return;
  contents_->pending[key] = std::nullopt;
  save();
}

void FileSettings::synchronize() {
  if (contents_->pending.empty())
    load();
  else
    save();
}

std::string settingsPath(const std::string& suite) {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
  return (folder + "/" + QString::fromStdString(suite) + ".json").toStdString();
}

}  // namespace fleetor
