#include "ui_world.h"

namespace fleetor::test {

class Components : public testing::Test, public World {};

TEST_F(Components, ReportAChangeOnlyWhenThereIsOne) {
  auto button = std::make_unique<LoadingButton>();
  int changes = 0;
  int goodbyes = 0;
  const Connection change = button->changed.connect([&] { ++changes; });
  const Connection goodbye = button->destroyed.connect([&] { ++goodbyes; });
  button->setLoading(true);
  button->setLoading(true);
  EXPECT_EQ(changes, 1);

  int taps = 0;
  button->setAction([&](Component&) {
    ++taps;
    button.reset();
  });
  button->setEnabled(false);
  button->tap();
  button->setEnabled(true);
  button->tap();
  EXPECT_EQ(taps, 1);
  EXPECT_EQ(goodbyes, 1) << "an action may destroy its own button";
}

TEST_F(Components, ToastsShowOneAfterTheOther) {
  const auto shown = [&] { return window.toast() ? window.toast()->text() : std::string("-"); };
  window.showToast("first", 3, true);
  window.showToast("second", 1, false);
  EXPECT_EQ(shown(), "first");
  queues.advance(Seconds(3.1));
  EXPECT_EQ(shown(), "first") << "it stays its seconds after it has faded in";
  queues.advance(Seconds(0.15));
  EXPECT_EQ(shown(), "second");
  queues.advance(Seconds(1.2));
  EXPECT_EQ(shown(), "-");

  // What repeats itself, a poll while offline for instance, shows once, for as long as it is repeated.
  for (const char* text : {"offline", "refused", "offline", "refused"})
    window.showToast(text, 3, true);
  queues.advance(Seconds(2));
  window.showToast("offline", 3, true);
  queues.advance(Seconds(3.1));
  EXPECT_EQ(shown(), "offline");
  queues.advance(Seconds(0.2));
  EXPECT_EQ(shown(), "refused");
  queues.advance(Seconds(3.2));
  EXPECT_EQ(shown(), "-");
}

TEST_F(Components, AnAlertClosesBeforeItAnswersAndMayOutliveItsDelegate) {
  struct Asker : AlertViewDelegate {
    Window& window;
    std::string answers;
    explicit Asker(Window& shownIn) : window(shownIn) {}
    void alertViewClickedButtonAtIndex(AlertView& alert, int index) override {
      answers +=
          alert.buttonTitles()[static_cast<std::size_t>(index)] + std::to_string(window.alerts().size());
    }
  };
  auto asker = std::make_shared<Asker>(window);
  const auto alert = AlertView::initWithTitle(environment, "Title", "Message", asker, "No", {"Yes"});
  alert->show();
  alert->show();
  EXPECT_EQ(window.alerts().size(), 1u);
  alert->tapButton(1);
  alert->tapButton(1);
  EXPECT_EQ(asker->answers, "Yes0") << "once, after the alert has closed";

  alert->show();
  asker.reset();
  alert->tapButton(0);
  EXPECT_TRUE(window.alerts().empty());
}

TEST_F(Components, ADatePickerGivesOneAnswer) {
  auto origin = std::make_unique<Button>();
  const auto ask = [&] {
    return ActionSheetDatePicker::showPickerWithTitle(
        environment, "Choose", DatePickerMode::date, queues.now(),
        [&](Date date) { diary.write("done " + queues.day(date)); }, [&] { diary.write("never"); }, *origin);
  };
  const auto replaced = ask();
  const auto picker = ask();
  replaced->done();
  EXPECT_EQ(window.datePicker(), picker);
  origin.reset();
  EXPECT_EQ(picker->origin(), nullptr);
  picker->setSelectedDate(queues.now() + std::chrono::hours(24));
  picker->done();
  picker->cancel();
  EXPECT_EQ(diary.take(), "done 2026-03-11");
  EXPECT_EQ(window.datePicker(), nullptr);
}

TEST_F(Components, TheKeyboardIsUpWhileAFieldHasTheFocus) {
  for (const char* name : {UIKeyboardWillShowNotification, UIKeyboardWillHideNotification})
    center.addObserver(this, name, [&](const Notification& notification) {
      const auto& info = std::any_cast<const KeyboardInfo&>(notification.object);
      diary.write(notification.name + " " + std::to_string(std::lround(info.frameEnd.height)));
    });
  const auto login = show(screen("login"));
  TextField name(environment);
  auto word = std::make_unique<TextField>(environment);
  login->outlet("loginTextField", name);
  window.keyboard().setHeight(260);
  name.becomeFirstResponder();
  word->becomeFirstResponder();
  EXPECT_FALSE(name.isFirstResponder());
  EXPECT_EQ(diary.take(), "UIKeyboardWillShowNotification 260") << "it stays up as the focus moves";
  login->endEditing();
  EXPECT_TRUE(word->isFirstResponder()) << "the focus is not in that screen";
  word.reset();
  EXPECT_FALSE(window.keyboard().visible());
  EXPECT_EQ(diary.take(), "UIKeyboardWillHideNotification 0");

  name.becomeFirstResponder();
  window.keyboard().setHeight(300);
  EXPECT_EQ(diary.take(), "UIKeyboardWillShowNotification 260 UIKeyboardWillShowNotification 300");
  window.setRootViewController(screen("main"));
  EXPECT_EQ(diary.take(), "login:WD UIKeyboardWillHideNotification 0 main:L main:WA login:DD main:DA");
}

}  // namespace fleetor::test
