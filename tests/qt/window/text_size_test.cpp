#include <QFile>
#include <QFont>
#include <QGuiApplication>
#include <QJSValue>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "qt/components/user_preferences.h"
#include "window_test.h"

namespace fleetor {
namespace {

using testing::IsEmpty;

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

  void toTheEnd() { QMetaObject::invokeMethod(list(), "positionViewAtEnd"); }

 private:
  std::map<std::string, QByteArray> said_;
  QFont before_ = QGuiApplication::font();
};

TEST_P(TextSizeTest, IsNeverCutOff) {
  open(Idiom::phone, {320, 568}, GetParam().language);
  ASSERT_TRUE(waitFor("label", word("I agree")));
  EXPECT_THAT(cutTexts(), IsEmpty()) << "terms";
  click(word("I agree"));
  ASSERT_TRUE(waitFor("label", word("Sign in")));
  EXPECT_THAT(cutTexts(), IsEmpty()) << "sign-in";
  enter(word("My Vehicles"));
  ASSERT_TRUE(waitForRows(21));
  EXPECT_THAT(cutTexts(), IsEmpty()) << "list of vehicles";
  click(word("Find a vehicle"));
  ASSERT_TRUE(waitFor("label", word("Order")));
  ASSERT_TRUE(waitForRows(45)) << "fetched by the search";
  EXPECT_THAT(cutTexts(), IsEmpty()) << "search";
  click(word("Order"));
  ASSERT_TRUE(waitFor("label", word("By registration")));
  EXPECT_THAT(cutTexts(), IsEmpty()) << "orders of the search";
  click(word("Close"));
  ASSERT_TRUE(waitForNone("label", word("By registration")));
  type("xyz");
  ASSERT_TRUE(QTest::qWaitFor([&] { return list()->property("count").toInt() == 0; }));
  EXPECT_THAT(cutTexts(), IsEmpty()) << "nothing found";
  click(word("Close"));
  ASSERT_TRUE(waitForNone("label", word("Order")));
  QTest::mouseClick(&window(), Qt::LeftButton, {}, {160, 120});
  ASSERT_TRUE(waitFor("label", word("Trips")));
  ASSERT_TRUE(waitForRows(5));
  EXPECT_THAT(cutTexts(), IsEmpty()) << "readings";
  EXPECT_EQ(tabSizes().size(), 1u);
  toTheEnd();
  EXPECT_THAT(cutTexts(), IsEmpty()) << "end of the readings";
  click(word("Trips"));
  click(word("Choose date"));
  ASSERT_TRUE(waitFor("label", word("Done")));
  EXPECT_THAT(cutTexts(), IsEmpty()) << "date picker";
  click(word("Cancel"));
  ASSERT_TRUE(waitForNone("label", word("Done"))) << "until then the picker has every tap";
  ASSERT_TRUE(waitForRows(1)) << "there are no more early in the day";
  EXPECT_THAT(cutTexts(), IsEmpty()) << "trips";
  click(word("About|vehicle"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return isChecked(word("About|vehicle")); }));
  ASSERT_TRUE(waitForRows(6)) << "the first reading after the page was opened brings them";
  EXPECT_THAT(cutTexts(), IsEmpty()) << "data of the vehicle";
  toTheEnd();
  EXPECT_THAT(cutTexts(), IsEmpty()) << "end of the vehicle's data";
  click(word("Back"));

  click(word("Menu"));
  ASSERT_TRUE(waitFor("label", word("Account")));
  EXPECT_THAT(cutTexts(), IsEmpty()) << "menu";
  click(word("Account"));
  ASSERT_TRUE(waitForRows(5));
  EXPECT_THAT(cutTexts(), IsEmpty()) << "account";
  toTheEnd();
  EXPECT_THAT(cutTexts(), IsEmpty()) << "end of the account";
  click(word("Menu"));
  click(word("About"));
  ASSERT_TRUE(waitFor("title", word("About")));
  EXPECT_THAT(cutTexts(), IsEmpty()) << "about page";
  click(word("Menu"));
  click(word("Log out"));
  ASSERT_TRUE(waitFor("label", word("Cancel")));
  EXPECT_THAT(cutTexts(), IsEmpty()) << "question before signing out";
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
