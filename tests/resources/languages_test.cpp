#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QRegularExpression>

#include "platform/number_text.h"
#include "support/testing.h"

namespace {

QString contentOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return QString::fromUtf8(file.readAll());
}

// English text to translation, of every language.
std::map<QString, QJsonObject> tables() {
  std::map<QString, QJsonObject> found;
  for (const QFileInfo& file : QDir(":/languages").entryInfoList()) {
    QJsonParseError error;
    found[file.baseName()] = QJsonDocument::fromJson(contentOf(file.filePath()).toUtf8(), &error).object();
    EXPECT_EQ(error.error, QJsonParseError::NoError) << file.filePath().toStdString();
  }
  return found;
}

// Texts that wait for translations.
QJsonArray untranslated() {
  QJsonParseError error;
  const QByteArray list = contentOf(QStringLiteral(SOURCES "/resources/untranslated.json")).toUtf8();
  QJsonArray texts = QJsonDocument::fromJson(list, &error).array();
  EXPECT_EQ(error.error, QJsonParseError::NoError) << "resources/untranslated.json";
  return texts;
}

// The code that shows texts to people, without its comments.
QString shownCode(const QStringList& kinds) {
  QString code;
  for (const char* room :
       {"app", "board", "exports", "model", "qt", "service", "shell", "ui", "vehicle", "widget"}) {
    QDirIterator files(QStringLiteral(SOURCES "/") + room, kinds, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
      code += contentOf(files.next());
  }
  return code.remove(QRegularExpression("(?<![:\"])//[^\n]*"));
}

std::vector<std::string> matches(const QString& code, const char* pattern) {
  std::vector<std::string> found;
  const QRegularExpression expression(pattern);
  for (auto match = expression.globalMatch(code); match.hasNext();)
    found.push_back(match.next().captured(1).toStdString());
  return found;
}

// A text may be missing from tables while it is listed, and is listed only while it is missing.
TEST(Languages, HaveTheSameTextsWithTheirPlaceholdersButForTheListedOnes) {
  const auto all = tables();
  ASSERT_GE(all.size(), 11u);
  const QJsonArray listed = untranslated();
  std::map<QString, std::size_t> keys;
  for (const auto& key : listed)
    keys[key.toString()] = 0;
  for (const auto& [language, table] : all)
    for (const QString& key : table.keys())
      ++keys[key];
  for (const auto& [key, translations] : keys)
    EXPECT_EQ(translations < all.size(), listed.contains(key))
        << key.toStdString() << " has " << translations << " of " << all.size() << " translations";
  for (const auto& [language, table] : all) {
    for (const QString& key : table.keys()) {
      const QString text = table[key].toString();
      const std::string where = language.toStdString() + ": " + key.toStdString();
      EXPECT_TRUE(!text.isEmpty() && text == text.trimmed() && !text.contains('|')) << where;
      const char* const placeholder = "(%[@A-Za-z0-9]+|\\{[A-Za-z]*\\})";
      EXPECT_THAT(matches(text, placeholder), testing::UnorderedElementsAreArray(matches(key, placeholder)))
          << where;
    }
  }
}

// Keys that are not literals are covered by the tests of the screens: their device records every unknown one.
TEST(Languages, HaveEveryTextThatIsLookedUpAndNoOther) {
  const QString code = shownCode({"*.h", "*.cpp", "*.qml", "CMakeLists.txt"});
  const QJsonObject german = tables()["de"];
  const QJsonArray listed = untranslated();
  const auto asked = matches(code, "\\b(?:localized|localizedString|word)\\(\\s*\"([^\"]*)\"");
  ASSERT_GT(asked.size(), 40u);
  for (const std::string& key : asked)
    EXPECT_TRUE(german.contains(QString::fromStdString(key)) || listed.contains(QString::fromStdString(key)))
        << "in no table: " << key;
  for (const QString& key : german.keys())
    EXPECT_TRUE(code.contains('"' + key + '"')) << "on no screen: " << key.toStdString();
}

TEST(Languages, AreAskedForEverythingThatIsShown) {
  const char* const literalInCode =
      "\\bset(?:Title|Text|Placeholder|AccessibleName)\\(\\s*\"([^\"]*[A-Za-z]{2}[^\"]*)\"";
  EXPECT_THAT(matches(shownCode({"*.h", "*.cpp"}), literalInCode), testing::IsEmpty());
  std::vector<std::string> bare;
  const QString looks =
      shownCode({"*.qml"}).remove(QRegularExpression("word\\(\"[^\"]*\"\\)|\"Fleetor\"|\\$\\{[^}]*\\}"));
  const QRegularExpression word("[A-Za-z]{2}");
  for (const std::string& line :
       matches(looks, "\\b(?:text|label|title|spoken|Accessible\\.(?:name|description)):([^\n]*)"))
    for (const std::string& literal : matches(QString::fromStdString(line), "[\"`]([^\"`]*)[\"`]"))
      if (QString::fromStdString(literal).contains(word)) bare.push_back(literal);
  EXPECT_THAT(bare, testing::IsEmpty());
}

TEST(Languages, WriteDecimalsAsTheirReadersDo) {
  for (const auto& [language, table] : tables()) {
    const QLocale locale(language);
    if (locale.zeroDigit() != u"0") continue;  // the client writes ASCII digits, with a point
    EXPECT_EQ(fleetor::inLanguage(language.toStdString(), "11.3"),
              locale.toString(11.3, 'f', 1).toStdString())
        << language.toStdString();
  }
}

TEST(Languages, AreInTheMetadataToo) {
  struct Spoken {
    const char* file;
    std::vector<const char*> texts;
    int times = 1;
  };
  const Spoken spoken[] = {
      {"org.fleetor.fleetor.desktop", {"GenericName[%1]=", "Comment[%1]=", "Keywords[%1]="}},
      {"org.fleetor.fleetor.desktop", {"\nName[%1]="}, 2},  // of the actions
      {"fleetor-widget.desktop", {"Name[%1]=", "Comment[%1]=", "Keywords[%1]="}},
      {"org.fleetor.fleetor.metainfo.xml.in", {"<summary xml:lang=\"%1\">"}}};
  for (const auto& [file, texts, times] : spoken) {
    const QString content = contentOf(QStringLiteral(SOURCES "/packaging/") + file);
    for (const auto& [language, table] : tables())
      for (const QString text : texts)
        EXPECT_EQ(content.count(text.arg(language)), times)
            << file << ": " << text.arg(language).toStdString();
  }
}

}  // namespace
