#include "ui/device_class.h"

#include "ui/controls/alert_view.h"
#include "ui/device_class_watch.h"
#include "ui_world.h"

namespace fleetor::test {
namespace {

TEST(DeviceClass, IsDecidedByATouchScreenOrTheWidthInWhichTheWindowOpens) {
  for (const auto& [screen, isTouched, window, expected] :
       {std::tuple<Size, bool, std::optional<Size>, Idiom>{{600, 960}, true, {}, Idiom::pad},
        {{599, 960}, true, {}, Idiom::phone},
        {{1920, 1080}, true, Size{390, 844}, Idiom::phone},
        {{1920, 1080}, false, {}, Idiom::phone},
        {{1920, 1080}, false, Size{899, 700}, Idiom::phone},
        {{1920, 1080}, false, Size{900, 700}, Idiom::pad},
        {{932, 430}, true, Size{932, 430}, Idiom::phone}})  // held sideways
    EXPECT_EQ(deviceClassOf(screen, isTouched, window), expected)
        << screen.width << 'x' << screen.height << ' ' << (window ? window->width : 0);

  EXPECT_EQ(deviceClassAt({600, 960}, deviceClassBorder({960, 600}, true)), Idiom::pad) << "turned upright";
  EXPECT_EQ(deviceClassAt({600, 960}, deviceClassBorder({1920, 1080}, false)), Idiom::phone);
}

class Resized : public testing::Test, public World {
 protected:
  Resized() {
    window.setSize({390, 844});
    show(screen("list"));
  }

  /// The class after the window has had that size for so long.
  Idiom at(const Size& size, double seconds) {
    window.setSize(size);
    queues.advance(Seconds(seconds));
    return device.idiom;
  }

  int changes = 0;
  DeviceClassWatch watch{environment, 720, [this](Idiom idiom) {
                           device.idiom = idiom;
                           ++changes;
                         }};
};

TEST_F(Resized, AWindowChangesItsClassAfterHalfASecondOnTheOtherSide) {
  EXPECT_EQ(at({719, 844}, 10), Idiom::phone);
  EXPECT_EQ(at({720, 844}, 0.4), Idiom::phone);
  EXPECT_EQ(at({700, 844}, 0.4), Idiom::phone);
  EXPECT_EQ(at({1024, 768}, 0.3), Idiom::phone) << "the time begins again";
  EXPECT_EQ(at({1000, 768}, 0.2), Idiom::pad) << "and goes on while the window is resized";
  EXPECT_EQ(at({1024, 400}, 10), Idiom::pad);
  EXPECT_EQ(at({719, 400}, 0.5), Idiom::phone);
  EXPECT_EQ(at({844, 390}, 10), Idiom::phone) << "held sideways";
  EXPECT_EQ(changes, 2);

  window.setSize({1024, 768});
  watch.choose(Idiom::phone);
  EXPECT_EQ(at({1000, 768}, 10), Idiom::phone) << "chosen by hand";
  watch.choose(Idiom::pad);
  EXPECT_EQ(at({390, 768}, 10), Idiom::pad);
}

TEST_F(Resized, TheChangeWaitsForWhoTypesAnswersOrLooksElsewhere) {
  TextField field(environment);
  const auto alert = AlertView::initWithTitle(environment, "Sure?", "", {}, "No", {});
  const auto sheet = screen("sheet");
  using Action = std::function<void()>;
  for (const auto& [what, begin, end] : std::vector<std::tuple<const char*, Action, Action>>{
           {"typing", [&] { field.becomeFirstResponder(); }, [&] { field.resignFirstResponder(); }},
           {"an alert", [&] { alert->show(); }, [&] { alert->tapButton(0); }},
           {"a sheet", [&] { window.rootViewController()->presentViewController(sheet, true); },
            [&] { sheet->dismissViewControllerAnimated(true); }},
           {"the background", [&] { application.didEnterBackground(); },
            [&] { application.willEnterForeground(); }}}) {
    const Idiom before = device.idiom;
    const Size size = before == Idiom::pad ? Size{390, 844} : Size{1024, 768};
    begin();
    EXPECT_EQ(at(size, 10), before) << what;
    end();
    EXPECT_NE(at(size, 1), before) << what;
  }
}

}  // namespace
}  // namespace fleetor::test
