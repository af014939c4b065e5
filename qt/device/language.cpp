#include "qt/device/language.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <algorithm>

namespace fleetor {
namespace {

constexpr const char* english = "en";  // the keys are its texts, so it has no table

std::string withoutRegion(const std::string& name) {
  return name.substr(0, name.find_first_of("-_"));
}

}  // namespace

std::vector<std::string> Language::known() {
  std::vector<std::string> codes{english};
  for (const QFileInfo& table : QDir(QStringLiteral(":/languages")).entryInfoList())
    codes.push_back(table.completeBaseName().toStdString());
  std::sort(codes.begin(), codes.end());
  return codes;
}

std::string Language::ofSystem() {
  const std::vector<std::string> codes = known();
  for (const QString& language : QLocale::system().uiLanguages()) {
    std::string name = language.toStdString();
    if (std::binary_search(codes.begin(), codes.end(), withoutRegion(name))) return name;
  }
  return english;
}

Language::Language(const std::string& name) : code_(withoutRegion(name)) {
  QFile table(QStringLiteral(":/languages/%1.json").arg(QString::fromStdString(code_)));
  if (!table.open(QIODevice::ReadOnly)) return;
  const QJsonObject texts = QJsonDocument::fromJson(table.readAll()).object();
  for (auto text = texts.begin(); text != texts.end(); ++text)
    texts_.emplace(text.key().toStdString(), text.value().toString().toStdString());
}

std::string Language::text(const std::string& key) const {
  const auto found = texts_.find(key);
  return found == texts_.end() ? key : found->second;
}

}  // namespace fleetor
