#include <QDirIterator>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QPalette>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>

#include "support/testing.h"

namespace {

QImage drawn(const QString& name) {
  constexpr int width = 96;
  QImageReader reader(":/images/" + name + ".svg");
  if (reader.size().isEmpty()) return {};
  reader.setScaledSize(reader.size().scaled(width, 10 * width, Qt::KeepAspectRatio));
  return reader.read().convertToFormat(QImage::Format_ARGB32);
}

TEST(Images, OfAllNamesDrawSomethingOnATransparentGround) {
  QDirIterator files(QStringLiteral(":/images"), {QStringLiteral("*.svg")}, QDir::Files,
                     QDirIterator::Subdirectories);
  ASSERT_TRUE(files.hasNext());
  while (files.hasNext()) {
    const QString name = files.next().sliced(9).chopped(4);
    const QImage image = drawn(name);
    QImage empty(image.size(), image.format());
    empty.fill(Qt::transparent);
    EXPECT_TRUE(!image.isNull() && image != empty) << name.toStdString();
  }
}

struct Reading {
  int headings = 0;
  int rows = 0;  // of the tables
  std::vector<std::string> links;
};

Reading readDocument(const QString& name) {
  Reading reading;
  QFile file(":/documents/" + name + ".html");
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
  QTextDocument document;
  document.setHtml(QString::fromUtf8(file.readAll()));
  for (const QTextFrame* frame : document.rootFrame()->childFrames())
    if (const auto* table = qobject_cast<const QTextTable*>(frame)) reading.rows += table->rows();
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    reading.headings += block.blockFormat().headingLevel() > 0;
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const QTextCharFormat format = part.fragment().charFormat();
      const std::string text = part.fragment().text().toStdString();
      EXPECT_EQ(format.background().style(), Qt::NoBrush) << text;
      const QBrush given = format.isAnchor() ? QGuiApplication::palette().link() : QBrush();
      EXPECT_EQ(format.foreground(), given) << text;
      if (!format.isAnchor()) continue;
      EXPECT_THAT(format.anchorHref().toStdString(), testing::StartsWith("https://")) << text;
      reading.links.push_back(format.anchorHref().toStdString());
    }
  }
  return reading;
}

TEST(Documents, AreReadableOnAnyBackgroundAndEqualInEveryLanguage) {
  for (const QString name : {"tos", "about"}) {
    const Reading english = readDocument(name);
    EXPECT_GT(english.headings, 2);
    EXPECT_FALSE(english.links.empty());
    EXPECT_EQ(english.rows > 0, name == "tos");
    for (const QFileInfo& table : QDir(":/languages").entryInfoList()) {
      const QString translation = table.completeBaseName() + "/" + name;
      const Reading reading = readDocument(translation);
      EXPECT_EQ(reading.headings, english.headings) << translation.toStdString();
      EXPECT_EQ(reading.rows, english.rows) << translation.toStdString();
      EXPECT_THAT(reading.links, testing::UnorderedElementsAreArray(english.links))
          << translation.toStdString();
    }
  }
}

}  // namespace
