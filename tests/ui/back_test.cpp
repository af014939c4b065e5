#include "ui_world.h"

namespace fleetor::test {

/// A side menu beside a stack. Buttons, alerts and pickers record their answers.
class Back : public testing::Test, public World {
 protected:
  Back() {
    setLeftButton(*list, "menu");
    reveal->setFrontViewControllerAnimated(stack, false);
    reveal->setRearViewControllerAnimated(bare(), false);
    reveal->tapGestureRecognizer();
    window.setRootViewController(reveal);
  }

  std::shared_ptr<ViewController> bare() { return std::make_shared<ViewController>(environment); }
  void setLeftButton(ViewController& screen, const std::string& word) {
    screen.navigationItem().setLeftBarButtonItem(
        BarButtonItem::initWithImage("", true, [this, word](Component&) { diary.write(word); }));
  }
  void present(const std::shared_ptr<ViewController>& screen) {
    reveal->presentViewController(screen, false);
  }
  std::shared_ptr<ViewController> push() {
    auto screen = bare();
    stack->pushViewController(screen, false);
    return screen;
  }
  void openMenu() { reveal->setFrontViewPositionAnimated(FrontViewPosition::right, false); }
  void ask() {
    ActionSheetDatePicker::showPickerWithTitle(
        environment, "Day", DatePickerMode::date, queues.now(), {}, [this] { diary.write("no day"); }, *list);
  }
  void alert() { AlertView::initWithTitle(environment, "Sure?", "", answer, "No", {"Yes"})->show(); }

  struct Answer : AlertViewDelegate {
    Diary& diary;
    explicit Answer(Diary& heard) : diary(heard) {}
    void alertViewClickedButtonAtIndex(AlertView& asked, int index) override {
      diary.write(asked.buttonTitles().at(static_cast<std::size_t>(index)));
    }
  };
  std::shared_ptr<Answer> answer = std::make_shared<Answer>(diary);
  std::shared_ptr<ViewController> list = bare();
  std::shared_ptr<NavigationController> stack = stackOf(list);
  std::shared_ptr<SWRevealViewController> reveal = std::make_shared<SWRevealViewController>(environment);
};

TEST_F(Back, UndoesTheLatestStepAndNoOther) {
  struct Case {
    const char* name;
    std::function<void()> arrange;
    const char* expected;  ///< what was answered, the depth of the stack, whether the menu shows
  };
  const Case cases[] = {
      {"the root", [] {}, "nothing 1"},
      {"a pushed screen", [&] { push(); }, "1"},
      {"its own button", [&] { setLeftButton(*push(), "back"); }, "back 2"},
      {"the menu", [&] { push(), openMenu(); }, "2"},
      {"the menu of the root", [&] { openMenu(); }, "1"},
      {"a sheet", [&] { openMenu(), present(bare()); }, "nothing 1 menu"},
      {"a sheet's button", [&] { present(bare()), setLeftButton(*window.topViewController(), "cancel"); },
       "cancel 1"},
      {"a stack's button",
       [&] {
         const auto root = bare();
         present(stackOf(root));
         setLeftButton(*root, "close");
       },
       "close 1"},
      {"a picker", [&] { push(), ask(); }, "no day 2"},
      {"an alert", [&] { push(), ask(), alert(); }, "No 2"}};
  for (const auto& [name, arrange, expected] : cases) {
    arrange();
    std::string seen = window.goBack() ? diary.take() : "nothing";
    queues.advance(Seconds(1));
    seen += (seen.empty() ? "" : " ") + std::to_string(stack->viewControllers().size());
    if (reveal->frontViewPosition() != FrontViewPosition::left) seen += " menu";
    EXPECT_EQ(seen, expected) << name;

    window.setRootViewController(nullptr);
    while (stack->popViewControllerAnimated(false)) {
    }
    reveal->setFrontViewPositionAnimated(FrontViewPosition::left, false);
    window.setRootViewController(reveal);
  }
  window.setRootViewController(nullptr);
  EXPECT_FALSE(window.goBack());
}

}  // namespace fleetor::test
