#include <QColor>
#include <QFile>
#include <QMetaProperty>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTextBlock>
#include <QTextDocument>

#include "qt/components/appearance_item.h"
#include "qt/components/control_items.h"
#include "qt/components/user_preferences.h"
#include "qt/outlined_pictures.h"
#include "support/client.h"

extern void qml_register_types_Fleetor();

namespace fleetor {
namespace {

/// Relative luminance of an sRGB colour, 0 (black) to 1 (white), as WCAG 2 defines it.
double luminance(const QColor& color) {
  const auto linear = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
  const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
  return (light + 0.05) / (dark + 0.05);
}

QColor over(const QColor& top, const QColor& ground) {
  const auto mix = [&](float a, float b) { return a * top.alphaF() + b * (1 - top.alphaF()); };
  return QColor::fromRgbF(mix(top.redF(), ground.redF()), mix(top.greenF(), ground.greenF()),
                          mix(top.blueF(), ground.blueF()));
}

/// The texts of the theme and what they are written on.
const std::map<std::string, std::vector<std::string>> grounds{
    {"text", {"background", "raised", "well", "pressed", "field", "parkingPlate", "mapLabel", "mapGround"}},
    {"secondaryText", {"background", "raised", "well", "pressed", "field", "parkingPlate"}},
    {"driving", {"raised", "well"}},
    {"parking", {"raised", "parkingPlate"}},
    {"alert", {"well"}},
    {"accent", {"background", "raised", "well", "pressed"}},
    {"accentText", {"accent", "accentPressed"}},
    {"tabSelected", {"bar", "tabPlate"}},
    {"barMark", {"bar"}},
    {"brand", {"bar"}},
    {"menuText", {"menu"}},
    {"toastText", {"toast"}},
};

/// What no text is written in or on.
const std::set<std::string> lines{"separator", "barEdge", "fieldBorder", "focusRing", "disc",
                                  "dim",       "shadow",  "mapGrid",     "mapShade"};

/// White on the bars' colour is prescribed: 1.9 to 1.
const std::set<std::string> given{"barButton", "barTitle", "tabTitle"};

/// The theme, light and dark, with the bars as the program sets them.
class Contrast : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override {
    client_.start();
    pager_ = client_.open(0);
    ASSERT_TRUE(pager_) << "the tabs have their colours from then on";
    qml_register_types_Fleetor();
    engine_.addImageProvider(QStringLiteral("outlined"), new OutlinedPictures);
    engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
    holder_ = made("QtObject { property QtObject theme: Theme }");
    ASSERT_TRUE(holder_);
    theme_ = holder_->property("theme").value<QObject*>();
    ASSERT_TRUE(theme_);
    theme_->setProperty("appearance",
                        QVariant::fromValue(adapters_.itemFor<AppearanceItem>(&client_.appearance)));
    theme_->setProperty("forceDark", GetParam());
    ASSERT_EQ(theme_->property("dark").toBool(), GetParam());
  }

  std::unique_ptr<QObject> made(const char* what) {
    QQmlComponent component(&engine_);
    component.setData(QByteArray("import QtQuick\nimport Fleetor\n") + what, {});
    std::unique_ptr<QObject> object(component.create());
    EXPECT_TRUE(object) << component.errorString().toStdString();
    return object;
  }

  QColor color(const std::string& name) const { return theme_->property(name.c_str()).value<QColor>(); }

  /// The controls on a bar, each of which has to show the focus on it.
  int ringsThatShow(const QQuickItem& item) const {
    int rings = 0;
    if (const QVariant ring = item.property("ringColor"); ring.isValid()) {
      EXPECT_GE(contrast(ring.value<QColor>(), color("bar")), 3) << item.metaObject()->className();
      ++rings;
    }
    for (const QQuickItem* child : item.childItems())
      rings += ringsThatShow(*child);
    return rings;
  }

  QObject* theme_ = nullptr;
  QQmlEngine engine_;
  test::Client client_;
  Adapters adapters_{client_.environment};
  VehicleViewController* pager_ = nullptr;

 private:
  std::unique_ptr<QObject> holder_;
};

TEST_P(Contrast, IsAtLeastFourAndAHalfToOneForEveryText) {
  std::set<std::string> known = lines;
  known.insert(given.begin(), given.end());
  for (const auto& [text, under] : grounds) {
    known.insert(text);
    for (const auto& ground : under) {
      known.insert(ground);
      ASSERT_TRUE(color(text).isValid() && color(ground).isValid()) << text << " on " << ground;
      // What lets something through has to do over anything.
      for (const QColor behind : {QColor(Qt::black), QColor(Qt::white)})
        EXPECT_GE(contrast(color(text), over(color(ground), behind)), 4.5) << text << " on " << ground;
    }
  }

  const QMetaObject& theme = *theme_->metaObject();
  for (int i = 0; i < theme.propertyCount(); ++i) {
    const QMetaProperty property = theme.property(i);
    if (property.metaType() != QMetaType::fromType<QColor>()) continue;
    EXPECT_TRUE(known.contains(property.name())) << property.name() << " is not checked";
  }
}

TEST_P(Contrast, IsAtLeastThreeToOneForFocusProgressAndPicturesOnABar) {
  const auto bars =
      made("Item { BarButton {} NavigationBar { backButton: true } TabStrip {} ProgressLine {} }");
  ASSERT_TRUE(bars);
  for (QObject* part : bars->children())
    part->setProperty("tabBar",
                      QVariant::fromValue(adapters_.itemFor<TabBarAdapter>(&pager_->pagesTabBar())));
  int rings = 0;
  for (const QQuickItem* part : static_cast<QQuickItem*>(bars.get())->childItems())
    rings += ringsThatShow(*part);
  EXPECT_EQ(rings, 1 + 1 + 5) << "a button, the way back and the tabs";
  const auto* const progress = bars->findChild<QObject*>("progressEdge");
  ASSERT_TRUE(progress);
  EXPECT_GE(contrast(progress->property("color").value<QColor>(), color("bar")), 3);

  QSize size;
  const QImage picture = OutlinedPictures().requestImage(QStringLiteral("bar/NavMenu.svg"), &size, {28, 28});
  double most = 0;
  for (int y = 0; y < picture.height(); ++y)
    most = std::max(most, contrast(Qt::white, over(picture.pixelColor(14, y), color("bar"))));
  EXPECT_GE(most, 3) << "between a white picture and its edge";
}

TEST_P(Contrast, IsAtLeastThreeToOneForTheEdgeOfAPictureOnItsGround) {
  const QString on = GetParam() ? QStringLiteral("dark/") : QStringLiteral("light/");
  for (const char* name : {"bus", "car", "excavator", "motorcycle", "trailer", "truck", "van"}) {
    QSize size;
    const QImage picture =
        OutlinedPictures().requestImage(on + QLatin1String(name) + QStringLiteral(".svg"), &size, {40, 40});
    ASSERT_EQ(picture.size(), QSize(40, 40)) << name;
    for (int y = 0; y < 40; ++y) {
      int x = 0;
      while (x < 40 && picture.pixelColor(x, y).alphaF() < 0.5F)
        ++x;
      if (x == 40) continue;
      ASSERT_GT(x, 0) << name << " is cut";
      for (const char* ground : {"mapGround", "disc", "well", "raised"})
        ASSERT_GE(contrast(picture.pixelColor(x, y), color(ground)), 3)
            << name << " on " << ground << " in line " << y;
    }
  }
}

TEST_P(Contrast, OfTheBarsIsThatOfOtherTextsForWhoeverWantsMore) {
  engine_.singletonInstance<UserPreferences*>(qmlTypeId("Fleetor", 1, 0, "UserPreferences"))
      ->followDesktop({{}, 1, true, true});
  for (const char* text : {"barButton", "barTitle", "tabTitle", "barMark"})
    EXPECT_GE(contrast(color(text), color("bar")), 4.5) << text;
}

TEST_P(Contrast, IsAtLeastFourAndAHalfToOneForTheLinksOfADocument) {
  const auto document = made("DocumentView {}");
  ASSERT_TRUE(document);
  for (const QString name : {":/documents/tos.html", ":/documents/about.html"}) {
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    document->setProperty("document", QString::fromUtf8(file.readAll()));
    int links = 0;
    for (const QObject* part : document->findChildren<QObject*>()) {
      QTextDocument shown;
      shown.setHtml(part->property("text").toString());
      for (QTextBlock block = shown.begin(); block.isValid(); block = block.next())
        for (auto text = block.begin(); !text.atEnd(); ++text) {
          const QTextCharFormat format = text.fragment().charFormat();
          if (!format.isAnchor()) continue;
          ++links;
          EXPECT_GE(contrast(format.foreground().color(), color("background")), 4.5)
              << text.fragment().text().toStdString();
        }
    }
    EXPECT_GT(links, 0) << name.toStdString();
  }
}

INSTANTIATE_TEST_SUITE_P(Appearance, Contrast, testing::Bool(),
                         [](const auto& one) { return one.param ? "dark" : "light"; });

}  // namespace
}  // namespace fleetor
