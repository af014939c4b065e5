#include "map_page_test.h"

namespace fleetor {
namespace {

TEST_F(MapPageTest, ADragMovesTheMapAndFromTheEdgeThePager) {
  page_->draw(upAndDown());
  drag({300, 300}, {200, 250});
  ASSERT_TRUE(waitForRest());
  EXPECT_EQ(pager_->selectedIndex(), 1);
  const ScreenPoint zero = camera().screenPoint(project({0, 0}));
  EXPECT_LT(zero.x, 112) << "100 points, and on as it was thrown";
  EXPECT_LT(zero.y, 260);

  const CameraPosition before = camera().position();
  drag({390, 300}, {150, 300});
  EXPECT_TRUE(QTest::qWaitFor([&] { return pager_->selectedIndex() == 2; }));
  EXPECT_EQ(camera().position(), before);
}

TEST_F(MapPageTest, ZoomsByDoubleTapWheelKeyAndPinch) {
  const auto zoomsTo = [&](double zoom) {
    return QTest::qWaitFor([&] { return !camera().moving() && std::abs(camera().zoom() - zoom) < 0.01; });
  };
  const double zoom = camera().zoom();
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {100, 200});
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {100, 200}, 100);
  EXPECT_TRUE(zoomsTo(zoom + 1));
  QWheelEvent wheel({100, 200}, window_.mapToGlobal(QPointF(100, 200)), {}, {0, 240}, Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&window_, &wheel);
  EXPECT_TRUE(zoomsTo(zoom + 2));
  QTest::keyClick(&window_, Qt::Key_Minus);
  EXPECT_TRUE(zoomsTo(zoom + 1));
  const WorldPoint centre = camera().centre();
  QTest::keyClick(&window_, Qt::Key_Right);
  EXPECT_TRUE(QTest::qWaitFor([&] { return camera().centre().x > centre.x; }));
  EXPECT_TRUE(zoomsTo(zoom + 1));

  const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
  int beside = 50;
  QTest::touchEvent(&window_, screen.get()).press(0, QPoint(150, 300)).press(1, QPoint(250, 300));
  EXPECT_TRUE(QTest::qWaitFor([&] {
    beside = std::min(beside + 5, 190);
    const QPoint left(200 - beside, 300), right(200 + beside, 300);
    QTest::touchEvent(&window_, screen.get()).move(0, left).move(1, right);
    return camera().zoom() > zoom + 2;
  }));
  QTest::touchEvent(&window_, screen.get()).release(0, QPoint(10, 300)).release(1, QPoint(390, 300));
}

TEST_F(MapPageTest, ATapOnAMarkerOpensItsCalloutAndATapOnTheMapClosesIt) {
  const auto stop = std::make_shared<StopMarker>(at(0, 0));
  page_->map.addAnnotation(stop);
  ASSERT_TRUE(colored({189, 300}, QColor("#2f7fc2")));
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {200, 300});
  EXPECT_EQ(page_->map.selectedAnnotation(), stop);
  ASSERT_TRUE(comesToRest(window_));
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {200, 250});  // on the callout itself
  EXPECT_EQ(page_->map.selectedAnnotation(), stop);
  ASSERT_TRUE(comesToRest(window_));
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {200, 450});
  EXPECT_EQ(page_->map.selectedAnnotation(), nullptr);

  // Of the markers of one place, the upper one has their count at its corner.
  const auto second = std::make_shared<StopMarker>(at(1, 1));
  page_->map.addAnnotation(second);
  ASSERT_TRUE(QTest::qWaitFor([&] {
    return adapters_.itemFor<MapMarkerItem>(page_->map.viewForAnnotation(*second).get())->stacked() == 2;
  }));
  EXPECT_TRUE(colored({214, 284}, QColor("#3b4a59")));
  page_->map.removeAnnotations({second});

  // By keyboard, too.
  QTest::keyClick(&window_, Qt::Key_Tab);
  QTest::keyClick(&window_, Qt::Key_Return);
  EXPECT_EQ(page_->map.selectedAnnotation(), stop);
  QTest::keyClick(&window_, Qt::Key_Return);
  EXPECT_EQ(page_->map.selectedAnnotation(), nullptr);
}

TEST_F(MapPageTest, TheTabOrderIsButtonsMapMarkers) {
  for (int i = 0; i < 5; ++i)
    page_->map.addAnnotation(std::make_shared<StopMarker>(at(200.0 * i, 0)));
  const auto marker = [&](std::size_t index) {
    const auto view = page_->map.viewForAnnotation(*page_->map.annotations()[index]);
    return adapters_.itemFor<MapMarkerItem>(view.get());
  };
  const auto focused = [&](const char* property) {
    const QQuickItem* const item = window_.activeFocusItem();
    return item ? item->property(property).value<ComponentItem*>() : nullptr;
  };
  ASSERT_TRUE(QTest::qWaitFor([&] { return marker(4)->nearby(); }));
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {100, 450});
  QTest::keyClick(&window_, Qt::Key_Backtab);
  EXPECT_EQ(focused("button"), adapters_.itemFor(&page_->zoomOut));
  QTest::keyClick(&window_, Qt::Key_Backtab);
  EXPECT_EQ(focused("button"), adapters_.itemFor(&page_->type));
  QTest::keyClick(&window_, Qt::Key_Tab);
  QTest::keyClick(&window_, Qt::Key_Tab);
  EXPECT_EQ(focused("map"), adapters_.itemFor(&page_->map));
  QTest::keyClick(&window_, Qt::Key_Tab);
  EXPECT_EQ(focused("marker"), marker(0));
  for (const auto key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up})
    QTest::keyClick(&window_, key);
  EXPECT_EQ(focused("marker"), marker(2));
  QTest::keyClick(&window_, Qt::Key_Tab);
  EXPECT_EQ(focused("marker"), nullptr);
  QTest::keyClick(&window_, Qt::Key_Backtab);
  EXPECT_EQ(focused("marker"), marker(2)) << "the one that had it last";
}

TEST_F(MapPageTest, ShowsNothingButItsGroundAndTakesNoGestureWhileItIsCovered) {
  ASSERT_TRUE(colored({100, 200}, tileColor));
  page_->map.setCovered(true);
  EXPECT_TRUE(colored({100, 200}, QColor("#eef1ee")));
  const CameraPosition before = camera().position();
  QTest::mouseClick(&window_, Qt::LeftButton, {}, {200, 300});
  QTest::keyClick(&window_, Qt::Key_Right);
  drag({300, 300}, {200, 250});
  EXPECT_EQ(camera().position(), before);
  page_->map.setCovered(false);
  EXPECT_TRUE(colored({100, 200}, tileColor));
}

}  // namespace
}  // namespace fleetor
