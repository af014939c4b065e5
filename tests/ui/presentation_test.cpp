#include "ui_world.h"

namespace fleetor::test {

class Presentation : public testing::Test, public World {};

TEST_F(Presentation, AFullScreenHidesItsPresenterUntilItIsDismissed) {
  const auto list = screen("list");
  const auto stack = show(stackOf(list));
  const auto about = screen("about");
  const auto sheet = stackOf(about);
  list->presentViewController(sheet, true, [&] { diary.write("presented"); });
  EXPECT_EQ(diary.take(), "list:WD* about:L about:WA*");
  EXPECT_EQ(after(duration::modal), "list:DD* about:DA* presented");
  EXPECT_EQ(stack->presentedViewController(), sheet) << "the root of the presenter's containers presents";

  about->dismissViewControllerAnimated(true, [&] { diary.write("dismissed"); });
  EXPECT_EQ(diary.take(), "about:WD* list:WA*");
  EXPECT_EQ(after(duration::modal), "about:DD* list:DA* dismissed");
  EXPECT_EQ(stack->presentedViewController(), nullptr);
  EXPECT_EQ(sheet->presentingViewController(), nullptr);

  about->dismissViewControllerAnimated(true, [&] { diary.write("never"); });
  EXPECT_EQ(after(Seconds(1)), "");
}

TEST_F(Presentation, AFormSheetLeavesItsPresenterVisibleOnATabletOnly) {
  for (const bool pad : {false, true}) {
    device.idiom = pad ? Idiom::pad : Idiom::phone;
    window.setSize(pad ? Size{1024, 768} : Size{390, 844});
    const auto main = show(screen("main"));
    const auto sheet = screen("sheet");
    sheet->setModalPresentationStyle(ModalPresentationStyle::formSheet);
    main->presentViewController(sheet, false);
    EXPECT_EQ(diary.take(), pad ? "sheet:L sheet:WA sheet:DA" : "main:WD sheet:L sheet:WA main:DD sheet:DA");
    EXPECT_EQ(sheet->view().frame(), (pad ? Rect{242, 74, 540, 620} : Rect{0, 0, 390, 844}));
    main->dismissViewControllerAnimated(false);
    EXPECT_EQ(diary.take(), pad ? "sheet:WD sheet:DD" : "sheet:WD main:WA sheet:DD main:DA");
  }
}

TEST_F(Presentation, ASecondScreenOverOneThatPresentsIsRefused) {
  const auto main = show(screen("main"));
  const auto first = screen("first");
  const auto second = screen("second");
  main->presentViewController(first, true);
  main->presentViewController(second, true, [&] { diary.write("never"); });
  EXPECT_EQ(after(Seconds(1)), "main:WD* first:L first:WA* main:DD* first:DA*");
  EXPECT_EQ(second->presentingViewController(), nullptr);

  main->dismissViewControllerAnimated(true);
  main->presentViewController(second, true);
  EXPECT_EQ(diary.take(), "first:WD* main:WA* first:DD* main:DA* main:WD* second:L second:WA*")
      << "the dismissal that still runs is completed, then the way is free";
  EXPECT_EQ(main->presentedViewController(), second);

  const auto offScreen = screen("offScreen");
  offScreen->presentViewController(first, false);
  EXPECT_EQ(offScreen->presentedViewController(), nullptr);
}

TEST_F(Presentation, ANewRootReleasesTheOldOneWithEverythingOverIt) {
  device.idiom = Idiom::pad;
  std::weak_ptr<ViewController> old;
  std::weak_ptr<ViewController> over;
  {
    const auto main = show(screen("main"));
    const auto sheet = screen("sheet");
    old = main;
    over = sheet;
    sheet->setModalPresentationStyle(ModalPresentationStyle::formSheet);
    main->presentViewController(sheet, true);
    ActionSheetDatePicker::showPickerWithTitle(
        environment, "Day", DatePickerMode::date, queues.now(), [&](Date) { diary.write("never"); },
        [&] { diary.write("never"); }, *main);
    AlertView::initWithTitle(environment, "Sure?", "", {}, "No", {"Yes"})->show();
  }
  window.setRootViewController(screen("login"));
  EXPECT_EQ(diary.take(),
            "sheet:L sheet:WA* sheet:DA* sheet:WD main:WD login:L login:WA sheet:DD main:DD login:DA");
  EXPECT_TRUE(old.expired());
  EXPECT_TRUE(over.expired());
  EXPECT_EQ(window.datePicker(), nullptr);
  EXPECT_TRUE(window.alerts().empty()) << "a question about the old screens would block the new one";
  EXPECT_EQ(after(Seconds(1)), "");
}

TEST_F(Presentation, TheStoryboardMakesScreensAndTransitions) {
  class Asking : public Screen {
   public:
    using Screen::Screen;
    std::string prepared;
    void prepareForSegue(Segue& segue, const std::any& sender) override {
      prepared += segue.identifier + std::to_string(std::any_cast<int>(sender)) + " ";
      EXPECT_EQ(segue.sourceViewController.get(), this);
      EXPECT_FALSE(segue.destinationViewController->isViewLoaded());
    }
  };
  center.addObserver(this, ScreenDidAppearNotification, [this](const Notification& notification) {
    diary.write(std::any_cast<const std::string&>(notification.object));
  });
  const auto asking = std::make_shared<Asking>(environment, diary, "asking");
  asking->setStoryboard(&storyboard, "FirstVC");
  const auto stack = show(stackOf(asking));
  asking->performSegueWithIdentifier("NextSegue", 7);
  EXPECT_EQ(after(duration::navigation), "asking:WD* next:L next:WA* asking:DD* next:DA* NextVC");
  EXPECT_EQ(stack->topViewController()->storyboardIdentifier(), "NextVC");
  stack->popViewControllerAnimated(false);
  asking->performSegueWithIdentifier("AskSegue", 8);
  EXPECT_EQ(asking->prepared, "NextSegue7 AskSegue8 ");
  ASSERT_NE(stack->presentedViewController(), nullptr);
  center.removeObserver(this);

  EXPECT_DEATH(storyboard.instantiateViewControllerWithIdentifier("NoVC"), "has no screen \"NoVC\"");
  EXPECT_DEATH(storyboard.segueWithIdentifier("NextSegue", "NextVC"), "no transition \"NextSegue\"");
  EXPECT_DEATH(storyboard.instantiate<NavigationController>("NextVC"), "another class");
}

}  // namespace fleetor::test
