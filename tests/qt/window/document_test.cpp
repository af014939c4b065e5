#include <QAccessible>
#include <QTextBlock>
#include <QTextDocument>

#include "../browser.h"
#include "window_test.h"

namespace fleetor {
namespace {

class DocumentTest : public WindowTest {
 protected:
  /// What assistive technology sees of the item with the keyboard focus.
  QAccessibleInterface* focused() {
    return QAccessible::queryAccessibleInterface(window().activeFocusItem());
  }
  bool focusIsOn(QAccessible::Role role) { return focused() && focused()->role() == role; }

  bool waitForDocument() {
    if (!QTest::qWaitFor([&] { return focusIsOn(QAccessible::WebDocument); })) return false;
    rest();
    return true;
  }

  std::vector<std::string> linksOfDocument() {
    QTextDocument document;
    document.setHtml(window().activeFocusItem()->property("document").toString());
    std::vector<std::string> links;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
      for (auto part = block.begin(); !part.atEnd(); ++part)
        if (const QString url = part.fragment().charFormat().anchorHref(); !url.isEmpty())
          links.push_back(url.toStdString());
    return links;
  }

  /// Moves through the links by Tab and opens each one in every possible way; returns what was opened.
  std::vector<std::string> openedOnTheWay() {
    const QQuickItem& page = *window().activeFocusItem();
    const QRectF sight = page.mapRectToScene(page.boundingRect());
    std::vector<std::string> opened;
    QTest::keyClick(&window(), Qt::Key_Tab);
    for (; focusIsOn(QAccessible::Link); QTest::keyClick(&window(), Qt::Key_Tab)) {
      const std::string name = focused()->text(QAccessible::Name).toStdString();
      const QQuickItem& link = *window().activeFocusItem();
      const QRectF place = link.mapRectToScene(link.boundingRect());
      EXPECT_FALSE(name.empty());
      EXPECT_TRUE(sight.contains(place)) << name;
      QTest::keyClick(&window(), Qt::Key_Return);
      QTest::keyClick(&window(), Qt::Key_Space);
      focused()->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
      int rings = 0;  // one on each line
      for (const QQuickItem* ring : link.childItems()) {
        if (!ring->isVisible() || ring->width() == 0) continue;
        ++rings;
        const QPointF middle = ring->mapToScene(ring->boundingRect().center());
        QTest::mouseClick(&window(), Qt::LeftButton, {}, middle.toPoint());
        QTest::keyClick(&window(), Qt::Key_Shift);  // the ring is shown while keys are used
      }
      EXPECT_GT(rings, 0) << name;
      const auto urls = std::exchange(opened_, {});
      EXPECT_EQ(urls.size(), 3u + static_cast<unsigned>(rings)) << name;
      const std::set<std::string> different(urls.begin(), urls.end());
      opened.insert(opened.end(), different.begin(), different.end());
    }
    return opened;
  }

 private:
  std::vector<std::string> opened_;
  Browser browser_{[this](const QUrl& url) { opened_.push_back(url.toString().toStdString()); }};
};

TEST_F(DocumentTest, ItsLinksAreReachedByKeyInReadingOrderAndOpenByKeyTapAndAssistiveTechnology) {
  for (const char* language : {"ar", "en"}) {  // in Arabic some links run against their line
    open(Idiom::phone, {320, 568}, language);
    ASSERT_TRUE(waitForDocument());
    const auto links = linksOfDocument();
    EXPECT_EQ(links.size(), 2u);
    EXPECT_EQ(openedOnTheWay(), links) << language;
    EXPECT_TRUE(focusIsOn(QAccessible::Button)) << "the one that agrees";
    if (language == std::string("ar")) close();
  }

  signIn();
  click("Menu");
  click("About");
  ASSERT_TRUE(waitForDocument());
  const auto links = linksOfDocument();
  EXPECT_GT(links.size(), 5u);
  EXPECT_EQ(openedOnTheWay(), links);

  const QQuickItem* const page = items("label", "About").back();
  const double before = page->property("contentY").toDouble();
  drag({160, 200}, {160, 400});
  EXPECT_LT(page->property("contentY").toDouble(), before - 100);
}

}  // namespace
}  // namespace fleetor
