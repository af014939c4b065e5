#include "window_test.h"

#include <QClipboard>
#include <QElapsedTimer>

#include "qt/components/window_item.h"
#include "service/api_http_client.h"
#include "ui/appearance.h"

namespace fleetor {
namespace {

TEST_F(WindowTest, AUserSignsInScrollsToTheLastVehicleAndComesBackToIt) {
  open(Idiom::phone, {390, 844});
  click("I agree");
  ASSERT_TRUE(waitFor("label", "Sign in"));
  rest();

  // A wrong password: the one message, and both texts stay.
  const char* const refused = "Unable to sign in - please verify your logon credentials and try again";
  QTest::keyClick(&window(), Qt::Key_Tab);
  type("demo");
  QTest::keyClick(&window(), Qt::Key_Return);
  type("wrong");
  QTest::keyClick(&window(), Qt::Key_Return);
  ASSERT_TRUE(waitFor("text", refused));
  ASSERT_TRUE(waitForNone("text", refused));
  EXPECT_EQ(items("typed", "wrong").size(), 1u);
  EXPECT_EQ(items("displayText", "demo").size(), 1u);
  EXPECT_FALSE(shows("displayText", "wrong")) << "a password is not to be read";

  QTest::keyClick(&window(), Qt::Key_A, Qt::ControlModifier);  // the focus is back in the field
  type("demo");
  QTest::keyClick(&window(), Qt::Key_Return);
  ASSERT_TRUE(waitFor("title", "My Vehicles"));

  // Each page is asked for when the list's end comes into sight, so the list grows in steps.
  for (const int count : {21, 41, 45}) {
    ASSERT_TRUE(waitForRows(count));
    rest();
    EXPECT_EQ(list()->property("count").toInt(), count);
    QMetaObject::invokeMethod(list(), "positionViewAtEnd");
  }
  rest();

  const double place = list()->property("contentY").toDouble();
  for (const bool byDrag : {false, true}) {
    QTest::mouseClick(&window(), Qt::LeftButton, {}, {195, 800});
    ASSERT_TRUE(waitFor("text", "Odometer"));
    rest();
    byDrag ? drag({3, 500}, {330, 500}) : click("Back");
    ASSERT_TRUE(waitForNone("text", "Odometer"));
    rest();
    EXPECT_EQ(list()->property("contentY").toDouble(), place);
    EXPECT_EQ(list()->mapToScene({0, 0}).x(), 0);
  }
}

TEST_F(WindowTest, AKeyboardCoversNeitherWhatIsTypedIntoNorTheButton) {
  open(Idiom::phone, {568, 320});
  click("I agree");
  ASSERT_TRUE(waitFor("label", "Sign in"));
  constexpr double keyboard = 170;
  const auto inSight = [](const QQuickItem& item) {
    return QRectF(0, 0, 568, 320 - keyboard).contains(item.mapRectToScene(item.boundingRect()));
  };
  window().property("content").value<WindowItem*>()->setKeyboardHeight(keyboard);
  QTest::keyClick(&window(), Qt::Key_Tab);
  EXPECT_TRUE(QTest::qWaitFor([&] { return inSight(*window().activeFocusItem()); })) << "the name";
  QTest::keyClick(&window(), Qt::Key_Tab);
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return inSight(*window().activeFocusItem()) && inSight(*items("label", "Sign in").front());
  })) << "the password, and the button";
}

TEST_F(WindowTest, OnATabletTheListStaysBesideTheVehicleAndKeepsItsKeys) {
  open(Idiom::pad, {1024, 768});
  EXPECT_GE(window().minimumWidth(), 300 + 320) << "the list, and beside it as much as on a small phone";
  signIn();
  ASSERT_TRUE(waitForRows(21));
  EXPECT_EQ(list()->width(), 300);
  rest();

  // The list has the keys from the start, and again after a sheet, or a question, lay over it.
  EXPECT_EQ(list()->property("currentIndex").toInt(), 0);
  QTest::keyClick(&window(), Qt::Key_Down);
  EXPECT_EQ(list()->property("currentIndex").toInt(), 1);
  click("About");
  ASSERT_TRUE(waitFor("title", "About"));
  click("Cancel");
  ASSERT_TRUE(waitForNone("title", "About"));
  QTest::keyClick(&window(), Qt::Key_Down);
  EXPECT_EQ(list()->property("currentIndex").toInt(), 2);
  for (const bool animations : {false, true}) {
    follow({std::nullopt, 1, animations});
    click("Log out");
    ASSERT_TRUE(waitFor("label", "Cancel"));
    QMetaObject::invokeMethod(&window(), "back");
    EXPECT_EQ(shows("label", "Cancel"), animations) << "it is gone at once, or on its way";
    ASSERT_TRUE(waitForNone("label", "Cancel"));
  }
  QTest::keyClick(&window(), Qt::Key_Down);
  EXPECT_EQ(list()->property("currentIndex").toInt(), 3);

  openVehicle();
  EXPECT_EQ(list()->width(), 724);
  EXPECT_EQ(items("title", "My Vehicles").size(), 1u);
}

TEST_F(WindowTest, DragsOpenTheMenuAndTurnThePagesOfAVehicle) {
  open(Idiom::phone, {390, 844});
  signIn();
  ASSERT_TRUE(waitForRows(21));
  rest();
  const auto place = [&] { return list()->mapToScene({0, 0}).x(); };

  drag({60, 500}, {150, 500}, 1200);  // not far enough
  rest();
  EXPECT_EQ(place(), 0);
  drag({60, 500}, {300, 500});
  EXPECT_TRUE(QTest::qWaitFor([&] { return place() == 260; })) << place();
  rest();
  QTest::mouseClick(&window(), Qt::LeftButton, {}, {330, 500});  // closes the menu and opens no vehicle
  EXPECT_TRUE(QTest::qWaitFor([&] { return place() == 0; }));
  EXPECT_TRUE(items("title", "My Vehicles").size() == 1);

  // A row lights up under a finger that rests, and not when one lands to scroll.
  const auto lit = [&] { return shows("lit", "true"); };
  QElapsedTimer resting;
  resting.start();
  QTest::mousePress(&window(), Qt::LeftButton, {}, {195, 300});
  EXPECT_TRUE(QTest::qWaitFor(lit));
  EXPECT_GE(resting.elapsed(), 50);
  QTest::mouseRelease(&window(), Qt::LeftButton, {}, {195, 20});  // elsewhere: no tap
  EXPECT_FALSE(lit());

  // The strip from which the menu is drawn takes nothing away from the list beneath it.
  drag({60, 500}, {64, 300});
  EXPECT_GT(list()->property("contentY").toDouble(), 100);
  rest();
  QTest::mouseClick(&window(), Qt::LeftButton, {}, {60, 500});
  ASSERT_TRUE(waitFor("text", "Odometer"));
  rest();
  drag({3, 400}, {80, 400}, 1200);  // not far enough
  rest();
  EXPECT_EQ(place(), 0);
  EXPECT_TRUE(isChecked("Info"));
  drag({350, 400}, {290, 400}, 1200);  // not far enough
  rest();
  EXPECT_TRUE(isChecked("Info"));
  for (const char* next : {"Live", "Map"}) {
    drag({380, 400}, {300, 400}, 60);  // fast, from the edge: elsewhere a map is moved
    EXPECT_TRUE(showsPage(next)) << next;
  }
  EXPECT_FALSE(shows("text", "Odometer"));
  drag({36, 400}, {350, 400});
  EXPECT_TRUE(showsPage("Live"));
  QTest::mouseClick(&window(), Qt::LeftButton, {}, {10, 28});  // the edge of the way back
  EXPECT_TRUE(waitFor("title", "My Vehicles"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return list() && list()->property("glow") == 1; })) << "the opened row";
  EXPECT_TRUE(QTest::qWaitFor([&] { return list()->property("glow") == 0; }));
}

TEST_F(WindowTest, InArabicTheMenuThePagesAndTheWayBackComeFromTheOtherSide) {
  open(Idiom::phone, {390, 844}, "ar");
  signIn("أوافق", "تسجيل الدخول", "مركباتي");
  ASSERT_TRUE(waitForRows(21));
  rest();
  const auto place = [&] { return list()->mapToScene({0, 0}).x(); };

  EXPECT_GT(labelled("القائمة")->mapToScene({0, 0}).x(), 195);
  drag({330, 500}, {90, 500});
  EXPECT_TRUE(QTest::qWaitFor([&] { return place() == -260; })) << place();
  rest();
  QTest::mouseClick(&window(), Qt::LeftButton, {}, {60, 500});
  EXPECT_TRUE(QTest::qWaitFor([&] { return place() == 0; })) << place();

  openVehicle("عداد المسافات");
  drag({60, 400}, {350, 400});
  EXPECT_TRUE(showsPage("مباشر"));
  drag({387, 400}, {60, 400});
  EXPECT_TRUE(waitFor("title", "مركباتي"));
  EXPECT_TRUE(waitForNone("label", "مباشر"));
}

TEST_F(WindowTest, TheMenuTakesKeys) {
  open(Idiom::phone, {390, 844});
  signIn();
  click("Menu");
  ASSERT_NE(labelled("About"), nullptr);
  for (int i = 0; i < 4 && window().activeFocusItem()->property("label") != QStringLiteral("About"); ++i)
    QTest::keyClick(&window(), Qt::Key_Down);
  QTest::keyClick(&window(), Qt::Key_Return);
  EXPECT_TRUE(waitFor("title", "About"));
}

TEST_F(WindowTest, AScreenUnderTheChooserIsNotDrawnUntilTheChooserLeaves) {
  open(Idiom::phone, {390, 844});
  signIn();
  receive("fleetor:vehicles");
  ASSERT_TRUE(waitFor("title", "Choose vehicle"));
  EXPECT_TRUE(shows("title", "My Vehicles")) << "while the chooser slides in";
  EXPECT_TRUE(waitForNone("title", "My Vehicles"));
  QTest::keyClick(&window(), Qt::Key_Escape);
  EXPECT_TRUE(waitFor("title", "My Vehicles") && shows("title", "Choose vehicle")) << "it slides out";
  ASSERT_TRUE(waitForNone("title", "Choose vehicle"));
  QTest::keyClick(&window(), Qt::Key_Down);
  EXPECT_TRUE(QTest::qWaitFor([this] { return list()->property("currentIndex").toInt() > 0; }));
}

TEST_F(WindowTest, AMinimisedWindowIsInTheBackgroundAndComesBackWithFreshReadings) {
  open(Idiom::phone, {390, 844});
  signIn();
  openVehicle();
  const auto updated = [&] {
    const auto rows = find([](QQuickItem& item) {
      return item.property("spoken").toString().startsWith(QStringLiteral("Update time: 2"));
    });
    return rows.empty() ? QString() : rows.front()->property("spoken").toString();
  };
  ASSERT_TRUE(QTest::qWaitFor([&] { return !updated().isEmpty(); }));
  const QString before = updated();
  // So long that the service has a newer reading, and the next poll is still to come.
  EXPECT_FALSE(QTest::qWaitFor([&] { return updated() != before; }, 3'000));
  window().showMinimized();
  EXPECT_TRUE(QTest::qWaitFor([&] { return window().visibility() == QWindow::Minimized; }));
  EXPECT_FALSE(window().contentItem()->isVisible()) << "spinners turn";
  window().showNormal();
  EXPECT_TRUE(QTest::qWaitFor([&] { return updated() != before; }, 5'000));
}

TEST_F(WindowTest, ReportsASignInThatIsNotKeptAndGoesOnWithOneThatCanBeReadLate) {
  open(Idiom::phone, {390, 844});
  signIn();
  keyStore().listener(KeyStoreEvent::notKept);
  EXPECT_TRUE(waitFor("text", "Your sign-in could not be stored, you will have to sign in again next time"));
  const auto stored = keyStore().items();
  close();

  for (const bool isLaunched : {false, true}) {
    open(Idiom::phone, {390, 844});
    ASSERT_TRUE(!isLaunched || waitFor("label", "Sign in"));
    keyStore().items() = stored;
    keyStore().listener(KeyStoreEvent::readable);
    ASSERT_TRUE(waitFor("title", "My Vehicles"));
    EXPECT_TRUE(waitForRows(21));
    close();
  }
}

TEST_F(WindowTest, LooksAsTheDesktopAsksForFromThenOnUnlessItIsDarkByHand) {
  open(Idiom::phone, {390, 844});
  const auto looksDark = [this] { return window().color().lightnessF() < 0.5; };
  const bool byPalette = looksDark();
  ASSERT_TRUE(waitFor("label", "I agree"));
  const auto textSize = [this] {
    const auto found = items("text", "I agree");
    return found.empty() ? 0 : found.front()->property("font").value<QFont>().pixelSize();
  };
  const int normal = textSize();
  ASSERT_GT(normal, 0);

  follow({true, 1.5});
  EXPECT_TRUE(looksDark());
  EXPECT_NEAR(textSize(), 1.5 * normal, 1);
  follow({false, 40});
  EXPECT_FALSE(looksDark());
  EXPECT_GT(textSize(), 1.5 * normal + 1);
  EXPECT_LE(textSize(), 2 * normal) << "no larger than there is room for";
  follow({});
  EXPECT_EQ(looksDark(), byPalette);
  EXPECT_EQ(textSize(), normal);

  close();
  open(Idiom::phone, {390, 844}, "en", true);
  follow({false, 1});
  EXPECT_TRUE(looksDark());
}

TEST_F(WindowTest, CopiesWhatIsNoRowByThePointerAndByKeys) {
  open(Idiom::phone, {390, 844});
  signIn();
  openVehicle();
  click("Trips");
  ASSERT_TRUE(waitFor("text", "Driving time"));
  rest();
  QQuickItem* const caption = items("text", "Driving time").back();
  const QString value = caption->parentItem()->childItems().front()->property("text").toString();
  const auto copied = [] { return QGuiApplication::clipboard()->text(); };
  QTest::mouseClick(&window(), Qt::RightButton, {}, caption->mapToScene({5, 5}).toPoint());
  EXPECT_TRUE(QTest::qWaitFor([&] { return copied() == value && !value.isEmpty(); }))
      << copied().toStdString();

  QQuickItem* all = caption;
  while (all && !all->property("holdable").isValid())
    all = all->parentItem();
  ASSERT_NE(all, nullptr);
  all->forceActiveFocus(Qt::TabFocusReason);
  QTest::keyClick(&window(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return copied().contains("Driving time: " + value + '\n'); }))
      << copied().toStdString();
}

TEST_F(WindowTest, DrawsTheBarsAsTheProgramSetsThem) {
  open(Idiom::phone, {390, 844}, "en", true);
  signIn();
  openVehicle();
  constexpr QPoint navigationBar(80, 50), tabBar(2, 842);
  const auto colourAt = [&](QPoint at) { return window().grabWindow().pixelColor(at).name().toStdString(); };
  EXPECT_EQ(colourAt(navigationBar), "#abc2cc");
  EXPECT_EQ(colourAt(tabBar), "#abc2cc");
  const auto colourOf = [&](const char* text) {
    return items("text", text).back()->property("color").value<QColor>().name().toStdString();
  };

  auto& content = *window().property("content").value<WindowItem*>();
  auto& appearance = *content.appearance()->as<Appearance>();
  NavigationBarAppearance bar = appearance.navigationBar();
  bar.backgroundImageColor = Color{1, 0, 0};
  appearance.setNavigationBar(bar);
  appearance.setTabBarItem({Color{0, 1, 0}, Color{1, 0, 1}});
  EXPECT_EQ(colourAt(navigationBar), "#ff0000");
  EXPECT_EQ(colourOf("Live"), "#00ff00");
  EXPECT_EQ(colourOf("Info"), "#ff00ff");
}

TEST_F(WindowTest, ReportsWhatIsWrongWithTheServiceAndGoesOn) {
  const char* const unexpected = "An unexpected error occurred, please try again";
  const std::pair<const char*, const char*> cases[] = {
      {"hang", "The call ended with an error, please check the status of your Internet connection"},
      {"html", unexpected},
      {"charset-lie:utf-16", "The data returned by the server is incorrect, please try again"},
      {"cut", unexpected},
      {"401", "Your session has expired, you will be logged out"}};
  open(Idiom::phone, {390, 844});
  APIHTTPClient::setTimeoutInSeconds(3);
  for (const auto& [fault, message] : cases) {
    spoil(std::string("vehicles=") + fault + "*1");
    fault == cases[0].first ? signIn() : click("Load again");
    EXPECT_TRUE(waitFor("text", message)) << fault;
  }
  ASSERT_TRUE(waitFor("label", "Sign in"));
  rest();
  enter();
  EXPECT_TRUE(waitForRows(21));
}

TEST_F(WindowTest, ClosingWithRequestsUnderWayIsClean) {
  open(Idiom::phone, {320, 568});
  signIn();
  close();  // the first page is still on its way
  EXPECT_TRUE(QTest::qWaitFor([] { return QGuiApplication::allWindows().isEmpty(); }));
}

}  // namespace
}  // namespace fleetor
