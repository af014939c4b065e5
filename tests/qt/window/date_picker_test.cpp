#include <algorithm>

#include "window_test.h"

namespace fleetor {
namespace {

class DatePicker : public WindowTest {
 protected:
  std::vector<QQuickItem*> days() {
    std::vector<QQuickItem*> found;
    collect(
        window().contentItem(),
        [](QQuickItem& item) { return item.property("inMonth").toBool() && item.isEnabled(); }, found);
    return found;
  }

  /// The day that is marked, as it is read out; empty while none is.
  QString chosen() {
    const auto all = days();
    const auto marked =
        std::ranges::find_if(all, [](QQuickItem* day) { return day->property("checked").toBool(); });
    return marked == all.end() ? QString() : (*marked)->property("label").toString();
  }
};

TEST_F(DatePicker, OpensAtTheChosenDayWhichTheArrowsMove) {
  open(Idiom::phone, {390, 844});
  signIn();
  QTest::qWait(600);
  QTest::mouseClick(&window(), Qt::LeftButton, {}, {195, 100});
  click("Choose date");
  ASSERT_TRUE(QTest::qWaitFor([&] { return !chosen().isEmpty(); }));
  const QString today = chosen();
  click("Previous year");
  click("Previous month");
  const QString other = chosen();
  EXPECT_NE(other, QString());
  EXPECT_NE(other, today);
  click("Done");
  click("Choose date");
  EXPECT_TRUE(QTest::qWaitFor([&] { return chosen() == other; })) << chosen().toStdString();
}

}  // namespace
}  // namespace fleetor
