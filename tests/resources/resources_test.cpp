#include <gmock/gmock.h>

#include <QColor>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QPalette>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

// Pictures are drawn by a plug-in of the platform, which wants an application.
class DrawingEnvironment : public testing::Environment {
 public:
  void SetUp() override {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    application = std::make_unique<QGuiApplication>(count, arguments);
  }
  void TearDown() override { application.reset(); }

 private:
  int count = 1;
  char name[10] = "resources";
  char* arguments[2] = {name, nullptr};
  std::unique_ptr<QGuiApplication> application;
};

[[maybe_unused]] const auto* const environment = testing::AddGlobalTestEnvironment(new DrawingEnvironment);

QImage drawn(const QString& name, int width = 96) {
  QImageReader reader(":/images/" + name + ".svg");
  if (reader.size().isEmpty()) return {};
  reader.setScaledSize(reader.size().scaled(width, 10 * width, Qt::KeepAspectRatio));
  return reader.read().convertToFormat(QImage::Format_ARGB32);
}

// How many pixels satisfy the condition.
template <class Condition>
int count(const QImage& image, Condition condition) {
  int found = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      found += condition(x, y, image.pixelColor(x, y));
  return found;
}

// Of the pixels that are painted at all, the share that has this colour.
double shareOf(const QColor& colour, const QImage& image) {
  const auto painted = [](int, int, const QColor& pixel) { return pixel.alpha() >= 200; };
  const auto matching = [&](int, int, const QColor& pixel) {
    return pixel.alpha() >= 200 && std::abs(pixel.red() - colour.red()) < 3 &&
           std::abs(pixel.green() - colour.green()) < 3 && std::abs(pixel.blue() - colour.blue()) < 3;
  };
  const int all = count(image, painted);
  return all == 0 ? 0.0 : double(count(image, matching)) / all;
}

// Pixels that differ visibly; rounding at the edges of a shape does not count.
int differences(const QImage& a, const QImage& b) {
  return count(a, [&](int x, int y, const QColor& p) {
    const QColor q = b.pixelColor(x, y);
    return std::max(std::abs(p.red() - q.red()) * p.alpha() / 255, std::abs(p.alpha() - q.alpha())) > 64;
  });
}

TEST(Images, of_the_bars_are_white_and_the_selected_ones_dark) {
  for (const char* name :
       {"NavMenu", "NavBack", "NavDate", "BtnLogout", "BtnAccount", "BtnAbout", "BtnVehicles", "BtnMapType",
        "BtnZoomIn", "BtnZoomOut", "BtnWholeTrack", "TabInfo", "TabLive", "TabMap", "TabRoute", "TabAbout"}) {
    EXPECT_GT(shareOf(Qt::white, drawn(name)), 0.99) << name;
  }
  const QColor selected = QColor::fromRgbF(0.23f, 0.29f, 0.35f);
  for (const char* name : {"BtnMapType", "TabInfo", "TabLive", "TabMap", "TabRoute", "TabAbout"}) {
    EXPECT_GT(shareOf(selected, drawn(QString(name) + "Selected")), 0.7) << name;
  }
}

TEST(Images, of_a_vehicle_come_in_a_pair_that_looks_to_opposite_sides) {
  for (const char* kind : {"car", "van", "truck", "bus", "motorcycle", "trailer", "excavator"}) {
    const QImage left = drawn(kind);
    const QImage right = drawn(QString("p") + kind);
    ASSERT_FALSE(left.isNull() || right.isNull()) << kind;
    EXPECT_LT(differences(left.mirrored(true, false), right), 20) << kind;
    EXPECT_GT(differences(left, right), 200) << kind << " looks the same from both sides";
  }
}

TEST(Images, of_the_marks_and_of_the_application_draw_something) {
  for (const char* name : {"flag", "parking", "fleetor", "NavShadow", "RowDuration", "RowDistance"}) {
    const auto painted = [](int, int, const QColor& pixel) { return pixel.alpha() > 0; };
    EXPECT_GT(count(drawn(name), painted), 0) << name;
  }
}

TEST(Images, of_a_flag_has_its_foot_in_the_middle_of_its_lower_edge) {
  const QImage flag = drawn("flag");
  const auto isFoot = [&](int x, int y, const QColor& pixel) {
    return y >= flag.height() - 4 && std::abs(2 * x - flag.width()) < 8 && pixel.alpha() > 128;
  };
  EXPECT_GE(count(flag, isFoot), 6);
}

TEST(Images, of_the_launch_fill_the_screen_and_keep_the_logo_when_they_are_cut_to_it) {
  struct Screen {
    const char* name;
    double narrowest;  // width by height of the screens that show it, either way up
    double widest;
  };
  for (const auto& [name, narrowest, widest] :
       {Screen{"640x960", 0.66, 1.5}, Screen{"640x1136", 0.56, 1.78}, Screen{"750x1334", 0.56, 1.78},
        Screen{"1242x2208", 0.46, 2.17}, Screen{"1024x768", 0.7, 1.34}, Screen{"2048x1536", 0.7, 1.34}}) {
    const QImage image = drawn(name, 400);
    ASSERT_FALSE(image.isNull()) << name;
    for (const QPoint corner : {image.rect().topLeft(), image.rect().topRight(), image.rect().bottomLeft(),
                                image.rect().bottomRight()}) {
      EXPECT_EQ(qAlpha(image.pixel(corner)), 255) << name;
    }
    // The word and the road of the logo are the only slate in the picture.
    QRect logo;
    count(image, [&](int x, int y, const QColor& pixel) {
      const bool slate = pixel.red() < 80 && pixel.blue() < 110;
      if (slate) logo |= QRect(x, y, 1, 1);
      return slate;
    });
    ASSERT_GT(logo.width(), 60) << name;
    for (const double aspect : {narrowest, widest}) {
      QRect shown({}, QSizeF(aspect, 1).scaled(image.size(), Qt::KeepAspectRatio).toSize());
      shown.moveCenter(image.rect().center());
      EXPECT_TRUE(shown.contains(logo)) << name << " at " << aspect;
    }

    // In the dark the word is the bright thing, at the same place.
    const QImage dark = drawn(QString("dark/") + name, 400);
    ASSERT_EQ(dark.size(), image.size()) << name;
    const auto bright = [](int, int, const QColor& pixel) { return pixel.red() > 180; };
    const QRect word(logo.left(), logo.center().y(), logo.width(), logo.height() / 2 + 1);
    EXPECT_GT(count(dark.copy(word), bright), 200) << name;
    EXPECT_EQ(count(dark, bright), count(dark.copy(logo.adjusted(-60, -60, 60, 60)), bright)) << name;
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
    EXPECT_EQ(block.blockFormat().background().style(), Qt::NoBrush) << name.toStdString();
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

TEST(Documents, read_on_any_background_and_say_the_same_in_every_language) {
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
