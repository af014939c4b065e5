#include "window_test.h"

namespace fleetor {
namespace {

class DatePicker : public WindowTest {
 protected:
  std::vector<QQuickItem*> days() {
    return find([](QQuickItem& item) { return item.property("inMonth").toBool() && item.isEnabled(); });
  }

  bool isInSight() {
    auto controls = days();
    for (const char* name : {"Cancel", "Done", "Previous year", "Next month"})
      for (QQuickItem* control : items("label", name))
        controls.push_back(control);
    const QRectF whole(QPointF(), window().size());
    return std::ranges::all_of(controls, [&](const QQuickItem* control) {
      return whole.contains(control->mapRectToScene(control->boundingRect()));
    });
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
  openVehicle();
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

  // However the phone is held, all of it is in the window, and a finger hits every day.
  for (const QSize size : {QSize(568, 320), QSize(844, 390), QSize(320, 568)}) {
    window().resize(size);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window().size() == size && isInSight(); })) << size.width();
    for (const QQuickItem* day : days())
      ASSERT_GE(std::min(day->width(), day->height()), 44) << size.width();
  }
}

TEST_F(DatePicker, IsBesideItsButtonOnATablet) {
  open(Idiom::pad, {1024, 768});
  signIn();
  openVehicle();
  click("Choose date");
  ASSERT_TRUE(QTest::qWaitFor([&] { return !days().empty(); }));
  const QQuickItem* const button = items("label", "Choose date").front();
  for (const QSize size : {QSize(1024, 768), QSize(1200, 600)}) {
    window().resize(size);
    EXPECT_TRUE(QTest::qWaitFor([&] {
      const QRectF at = button->mapRectToScene(button->boundingRect());
      const QQuickItem* const done = items("label", "Done").front();
      const QPointF nearest = done->mapToScene({done->width() / 2, 0});
      return at.right() == size.width() - 4 && nearest.y() > at.bottom() && nearest.y() < at.bottom() + 40 &&
             std::abs(nearest.x() - at.center().x()) < 48 && isInSight();
    })) << size.width();
  }
}

}  // namespace
}  // namespace fleetor
