// A file of arbitrary bytes, and a few changes. What was set is there, now and after a restart; what was not
// touched stays as it was; and a file that is not a JSON object is kept under another name.

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "fuzzing.h"
#include "qt/device/file_settings.h"

namespace {

using namespace fleetor;

/// Keeps what is reported of a broken file from the screen.
struct Quiet {
  std::FILE* const before = std::exchange(stderr, nowhere());
  ~Quiet() { stderr = before; }
  static std::FILE* nowhere() {
    static std::FILE* const file = std::fopen("/dev/null", "w");
    return file;
  }
};

QByteArray contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Keys are the program's own, and ASCII.
std::string name(Bytes& bytes) {
  std::string text = bytes.text();
  for (char& each : text)
    each &= 0x7F;
  return text;
}

/// A byte-order mark at the beginning of a text is lost.
std::string value(Bytes& bytes) {
  std::string text = bytes.text();
  while (text.starts_with("\xEF\xBB\xBF"))
    text.erase(0, 3);
  return text;
}

std::optional<Settings::Value> change(Bytes& bytes) {
  switch (bytes.next() % 4) {
    case 0:
      return std::nullopt;
    case 1:
      return bytes.integer();
    case 2:
      return value(bytes);
    default:
      return Settings::Texts{{name(bytes), value(bytes)}, {name(bytes), value(bytes)}};
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // In memory where there is such a place: every change is carried to the disk.
  static const QString memory = QStringLiteral("/dev/shm");
  static const QTemporaryDir folder((QDir(memory).exists() ? memory : QDir::tempPath()) + "/fleetor-XXXXXX");
  const QString path = folder.filePath(QStringLiteral("s.json")), broken = path + ".broken";
  QFile::remove(broken);

  Bytes bytes(data, size);
  std::map<std::string, std::optional<Settings::Value>> changes;
  for (std::uint32_t count = bytes.next() % 4; count > 0; --count) {
    const std::string key = name(bytes);
    changes[key] = change(bytes);
  }
  const QByteArray before = QByteArray::fromStdString(bytes.rest());
  QFile file(path);
  require(file.open(QIODevice::WriteOnly) && file.write(before) == before.size(),
          "there is room for the file");
  file.close();

  const Quiet quiet;
  const auto requireChanges = [&](const FileSettings& settings) {
    for (const auto& [key, value] : changes)
      require(settings.object(key) == value, "a change holds", key);
  };
  {
    FileSettings settings(path.toStdString());
    for (const auto& [key, value] : changes)
      value ? settings.setObject(*value, key) : settings.removeObject(key);
    requireChanges(settings);
  }
  requireChanges(FileSettings(path.toStdString()));

  const QJsonDocument document = QJsonDocument::fromJson(before);
  const QByteArray after = contents(path);
  if (!document.isObject()) {
    require(after == before || contents(broken) == before, "a broken file is kept", before.toStdString());
    return 0;
  }
  require(!QFile::exists(broken), "a sound file is not set aside", before.toStdString());
  QVariantMap expected = document.object().toVariantMap(),
              kept = QJsonDocument::fromJson(after).object().toVariantMap();
  for (const auto& [key, value] : changes)
    expected.remove(QString::fromStdString(key)), kept.remove(QString::fromStdString(key));
  require(kept == expected, "other values stay", before.toStdString());
  return 0;
}
