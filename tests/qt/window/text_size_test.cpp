#include <QFile>
#include <QFont>
#include <QGuiApplication>
#include <QJSValue>
#include <QJsonDocument>
#include <QJsonObject>

#include "qt/components/user_preferences.h"
#include "window_test.h"

namespace fleetor {
namespace {

struct Reader {
  int perCent;  ///< of the normal size
  const char* language;
};

/// The smallest phone, in one language and with text of one size.
class TextSizeTest : public WindowTest, public testing::WithParamInterface<Reader> {
 protected:
  void SetUp() override {
    QFont font = before_;
    font.setPointSizeF(UserPreferences::normalPoints * GetParam().perCent / 100);
    QGuiApplication::setFont(font);
    WindowTest::SetUp();
  }
  void TearDown() override {
    WindowTest::TearDown();
    QGuiApplication::setFont(before_);
  }

  /// The visible part of the item, in the window.
  QRectF shown(const QQuickItem& item) {
    QRectF place = item.mapRectToScene(item.boundingRect());
    for (const QQuickItem* around = item.parentItem(); around; around = around->parentItem())
      if (around->clip()) place &= around->mapRectToScene(around->boundingRect());
    return place;
  }

  /// The texts in view that are elided, overlap others or reach over the edge of the window.
  std::vector<std::string> cutTexts() {
    rest();
    // Disabled items are below an alert or beside the menu.
    const auto texts = find([](QQuickItem& item) {
      return item.inherits("QQuickText") && item.isEnabled() && !item.property("text").toString().isEmpty();
    });
    EXPECT_FALSE(texts.empty());
    std::vector<std::string> cut;
    std::vector<QRectF> places;
    const QRectF screen(QPointF(), window().size());
    for (const QQuickItem* text : texts) {
      const QRectF place = shown(*text);
      if (!place.intersects(screen)) continue;
      const qreal leading = place.height() / 4;  // lines may be set as close as their letters allow
      const QRectF letters = place.adjusted(0, leading, 0, -leading);
      if (text->property("truncated").toBool() || place.left() < 0 || place.right() > screen.right() ||
          std::ranges::any_of(places, [&](const QRectF& other) { return other.intersects(letters); }))
        cut.push_back(text->property("text").toString().toStdString());
      places.push_back(letters);
    }
    return cut;
  }

  void expectWhole(const char* page) { EXPECT_THAT(cutTexts(), IsEmpty()) << page; }
  void expectWholeAt(const char* label, const char* page) {
    ASSERT_TRUE(waitFor("label", word(label))) << page;
    expectWhole(page);
  }
  void expectWholeAt(int rows, const char* page) {
    ASSERT_TRUE(waitForRows(rows)) << page;
    expectWhole(page);
  }
  void expectWholeAtItsEnd(const char* page) {
    QMetaObject::invokeMethod(list(), "positionViewAtEnd");
    expectWhole(page);
  }

  /// The sizes of the words of all tabs.
  std::set<int> tabSizes() {
    std::set<int> sizes;
    for (const char* tab : {"Info", "Live", "Map", "Trips", "About|vehicle"})
      for (const QQuickItem* text : items("text", word(tab)))
        sizes.insert(
            text->property("fontInfo").value<QJSValue>().property(QStringLiteral("pixelSize")).toInt());
    return sizes;
  }

  /// The translation of that text, or the English text while there is none.
  const char* word(const char* english) {
    QFile table(QStringLiteral(":/languages/%1.json").arg(QLatin1String(GetParam().language)));
    QByteArray& said = said_[english] = QByteArray(english).split('|').front();
    if (!table.open(QIODevice::ReadOnly)) return said.constData();
    const auto words = QJsonDocument::fromJson(table.readAll()).object();
    return (said = words[QLatin1String(english)].toString(QString::fromUtf8(said)).toUtf8()).constData();
  }

 private:
  std::map<std::string, QByteArray> said_;
  QFont before_ = QGuiApplication::font();
};

TEST_P(TextSizeTest, IsNeverCutOff) {
  open(Idiom::phone, {320, 568}, GetParam().language);
  expectWholeAt("I agree", "terms");
  click(word("I agree"));
  expectWholeAt("Sign in", "sign-in");
  enter(word("My Vehicles"));
  expectWholeAt(21, "list of vehicles");
  click(word("Find a vehicle"));
  ASSERT_TRUE(waitFor("label", word("Order")));
  expectWholeAt(45, "search");  // fetched by the search
  click(word("Order"));
  expectWholeAt("By registration", "orders of the search");
  click(word("Close"));
  ASSERT_TRUE(waitForNone("label", word("By registration")));
  type("xyz");
  ASSERT_TRUE(QTest::qWaitFor([&] { return list()->property("count").toInt() == 0; }));
  expectWhole("nothing found");
  click(word("Close"));
  ASSERT_TRUE(waitForNone("label", word("Order")));
  QTest::mouseClick(&window(), Qt::LeftButton, {}, {160, 120});
  ASSERT_TRUE(waitFor("label", word("Trips")));
  expectWholeAt(5, "readings");
  EXPECT_EQ(tabSizes().size(), 1u);
  expectWholeAtItsEnd("end of the readings");
  click(word("Trips"));
  click(word("Choose date"));
  expectWholeAt("Done", "date picker");
  click(word("Cancel"));
  ASSERT_TRUE(waitForNone("label", word("Done"))) << "until then the picker has every tap";
  expectWholeAt(1, "trips");  // there are no more early in the day
  click(word("About|vehicle"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return isChecked(word("About|vehicle")); }));
  expectWholeAt(6, "data of the vehicle");  // the first reading after the page was opened brings them
  expectWholeAtItsEnd("end of the vehicle's data");
  click(word("Back"));

  click(word("Menu"));
  expectWholeAt("Account", "menu");
  click(word("Fleet"));
  ASSERT_TRUE(waitFor("label", word("Follow the vehicle")));
  expectWholeAt(24, "fleet");
  click(word("Menu"));
  click(word("Account"));
  expectWholeAt(5, "account");
  expectWholeAtItsEnd("end of the account");
  click(word("Menu"));
  click(word("About"));
  ASSERT_TRUE(waitFor("title", word("About")));
  expectWhole("about page");
  click(word("Menu"));
  click(word("Log out"));
  expectWholeAt("Cancel", "question before signing out");
}

class TabletTextSizeTest : public TextSizeTest {};

TEST_P(TabletTextSizeTest, IsNotCutOffBetweenTheButtonsOverTheList) {
  open(Idiom::pad, {1024, 768}, GetParam().language);
  signIn(word("I agree"), word("Sign in"), word("My Vehicles"));
  EXPECT_THAT(cutTexts(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Reader, TabletTextSizeTest, testing::Values(Reader{200, "de"}));

// Languages with long words in the date picker and on buttons.
INSTANTIATE_TEST_SUITE_P(Readers, TextSizeTest,
                         testing::Values(Reader{100, "de"}, Reader{200, "fr"}, Reader{200, "de"}),
                         [](const auto& reader) {
                           return reader.param.language + std::to_string(reader.param.perCent);
                         });

}  // namespace
}  // namespace fleetor
