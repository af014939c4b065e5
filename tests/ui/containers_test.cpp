#include "ui_world.h"

namespace fleetor::test {

class Containers : public testing::Test, public World {};

TEST_F(Containers, AStackCallsItsScreensInOrder) {
  const auto stack = show(stackOf(screen("a")));
  stack->pushViewController(screen("b"), true);
  EXPECT_EQ(diary.take(), "a:WD* b:L b:WA*");
  EXPECT_NE(stack->runningTransition(), nullptr);
  EXPECT_EQ(after(Seconds(0.34)), "");
  EXPECT_EQ(after(Seconds(0.02)), "a:DD* b:DA*");
  EXPECT_EQ(stack->runningTransition(), nullptr);

  stack->popViewControllerAnimated(false);
  EXPECT_EQ(diary.take(), "b:WD a:WA b:DD a:DA");
  EXPECT_EQ(stack->popViewControllerAnimated(true), nullptr) << "the root stays";
  EXPECT_EQ(diary.take(), "");
  EXPECT_EQ(stack->childViewControllers().size(), 1u);
}

TEST_F(Containers, AChangeCompletesTheOneThatStillRuns) {
  const auto stack = show(stackOf(screen("a")));
  stack->pushViewController(screen("b"), true);
  diary.take();
  stack->popViewControllerAnimated(true);
  EXPECT_EQ(diary.take(), "a:DD* b:DA* b:WD* a:WA*");
  EXPECT_EQ(after(Seconds(0.2)), "") << "the overtaken change's own end no longer counts";
  EXPECT_EQ(after(Seconds(0.2)), "b:DD* a:DA*");
}

TEST_F(Containers, AScreenThatOutlivesItsContainersStandsAlone) {
  const auto top = screen("top");
  show(stackOf(screen("a")))->pushViewController(top, false);
  window.setRootViewController(screen("login"));
  EXPECT_EQ(top->navigationController(), nullptr);
  EXPECT_EQ(top->revealViewController(), nullptr);
  top->dismissViewControllerAnimated(true);
}

TEST_F(Containers, NothingReachesTheChildrenOfAContainerThatIsNotOnScreen) {
  const auto stack = stackOf(screen("a"));
  stack->pushViewController(screen("b"), true);
  const auto reveal = std::make_shared<Reveal>(environment, diary, "r");
  reveal->setRearViewControllerAnimated(screen("menu"), true);
  reveal->setFrontViewControllerAnimated(stack, true);
  reveal->revealToggleAnimated(true);
  EXPECT_EQ(after(Seconds(1)), "");
  window.setRootViewController(reveal);
  EXPECT_EQ(diary.take(), "r:L r:WA menu:L menu:WA b:L b:WA menu:DA b:DA r:DA");
}

TEST_F(Containers, TheSideMenuAppearsAsItIsRevealed) {
  const auto reveal = std::make_shared<Reveal>(environment, diary, "r");
  reveal->setRearViewControllerAnimated(screen("menu"), false);
  reveal->setFrontViewControllerAnimated(stackOf(screen("list")), false);
  show(reveal);

  bool slides = false;
  const Connection moves = reveal->frontViewController()->view().changed.connect(
      [&] { slides = reveal->runningTransition() != nullptr; });
  reveal->revealToggleAnimated(true);
  EXPECT_TRUE(slides) << "as it moves, it is known how long that takes";
  EXPECT_EQ(diary.take(), "menu:L menu:WA*");
  EXPECT_EQ(after(duration::reveal), "menu:DA*");
  EXPECT_EQ(reveal->frontViewPosition(), FrontViewPosition::right);
  EXPECT_EQ(reveal->frontViewController()->view().frame(), (Rect{260, 0, 390, 844}));

  const std::weak_ptr<ViewController> old = reveal->frontViewController();
  reveal->pushFrontViewControllerAnimated(stackOf(screen("account")), true);
  EXPECT_EQ(diary.take(), "list:WD* menu:WD* account:L account:WA*");
  EXPECT_EQ(after(duration::reveal), "list:DD* menu:DD* account:DA*");
  EXPECT_TRUE(old.expired());
  EXPECT_EQ(reveal->frontViewController()->view().frame(), (Rect{0, 0, 390, 844}));

  reveal->endPan({.moved = 200});
  EXPECT_EQ(reveal->frontViewPosition(), FrontViewPosition::left) << "the gesture is not attached";
  EXPECT_FALSE(reveal->panShouldBegin(10));
  reveal->panGestureRecognizer();
  reveal->tapGestureRecognizer();
  reveal->setDraggableBorderWidth(120);
  EXPECT_TRUE(reveal->panShouldBegin(120));
  EXPECT_FALSE(reveal->panShouldBegin(121));
  EXPECT_FALSE(reveal->tapShouldBegin()) << "there is no menu to close";
  reveal->endPan({.moved = 130});
  EXPECT_EQ(reveal->frontViewPosition(), FrontViewPosition::left) << "half of the menu's width";
  reveal->endPan({.moved = 131});
  reveal->tapFront();
  EXPECT_EQ(after(duration::reveal), "menu:WA* menu:DA* menu:WD* menu:DD*");
}

TEST_F(Containers, ThePagerShowsOnePageAndReportsTheUsersSwipes) {
  struct Swipes : SwipeTabBarControllerDelegate {
    std::string heard;
    void swipeTabBarControllerDidScrollToIndexFromIndex(SwipeTabBarController&, int index,
                                                        int from) override {
      heard += std::to_string(from) + ">" + std::to_string(index) + " ";
    }
  } swipes;
  const auto pager = std::make_shared<Pager>(environment, diary, "p");
  pager->setDelegate(&swipes);
  pager->setViewControllers({screen("a"), screen("b"), screen("c")});
  EXPECT_EQ(diary.take(), "a:L b:L c:L") << "pages load as they are installed";
  window.setRootViewController(pager);
  EXPECT_EQ(diary.take(), "p:L p:WA a:WA a:DA p:DA");

  pager->scrollToIndex(1);
  EXPECT_EQ(diary.take(), "a:WD b:WA a:DD b:DA");
  pager->scrollToIndex(1);
  pager->setSelectedIndexAnimated(2, false);
  EXPECT_EQ(diary.take(), "b:WD c:WA b:DD c:DA");
  pager->scrollToIndex(3);
  pager->setSelectedIndexAnimated(-1, false);
  EXPECT_EQ(diary.take(), "");
  EXPECT_EQ(swipes.heard, "0>1 1>1 ");
}

TEST_F(Containers, AFastFingerDecidesByItsDirectionAndASlowOneByItsWay) {
  const auto pager = std::make_shared<Pager>(environment, diary, "p");
  pager->setViewControllers({screen("a"), screen("b"), screen("c")});
  window.setRootViewController(pager);
  for (const auto& [drag, page] : {std::pair<Drag, int>{{.moved = -100}, 1},
                                   {{.moved = -101}, 2},
                                   {{.moved = 101}, 0},
                                   {{-20, -300}, 2},
                                   {{-20, -299}, 1},
                                   {{-200, 300}, 1},
                                   {{20, 400}, 0}}) {
    pager->setSelectedIndexAnimated(1, false);
    pager->endDrag(drag, 400);
    EXPECT_EQ(pager->selectedIndex(), page) << drag.moved << " points at " << drag.speed;
  }
  pager->endDrag({.moved = 300}, 400);
  EXPECT_EQ(pager->selectedIndex(), 0) << "nothing lies before the first";

  const auto stack = stackOf(screen("list"));
  stack->pushViewController(screen("v"), false);
  EXPECT_FALSE(stack->endDrag({-200, -900}, 300));
  EXPECT_FALSE(stack->endDrag({200, -900}, 300)) << "it was thrown back";
  EXPECT_TRUE(stack->endDrag({40, 900}, 300));
  EXPECT_FALSE(stack->endDrag({200, 900}, 300)) << "the root stays";
}

TEST_F(Containers, APageDeepInsideIsCalledOnceAChange) {
  const auto pager = std::make_shared<Pager>(environment, diary, "p");
  pager->setViewControllers({screen("a"), screen("b")});
  const auto vehicle = screen("v");
  vehicle->addChildViewController(pager);
  const auto stack = stackOf(screen("list"));
  const auto reveal = std::make_shared<Reveal>(environment, diary, "r");
  reveal->setFrontViewControllerAnimated(stack, false);
  reveal->setRearViewControllerAnimated(screen("menu"), false);
  show(reveal);

  stack->pushViewController(vehicle, true);
  EXPECT_EQ(diary.take(), "list:WD* v:L v:WA* p:L p:WA* a:WA*");
  pager->scrollToIndex(1);
  EXPECT_EQ(diary.take(), "list:DD* a:DA* p:DA* v:DA* a:WD b:WA a:DD b:DA")
      << "a change inside completes the one around it";
  reveal->revealToggleAnimated(false);
  EXPECT_EQ(diary.take(), "menu:L menu:WA menu:DA");
  reveal->presentViewController(screen("m"), false);
  EXPECT_EQ(diary.take(), "r:WD menu:WD v:WD p:WD b:WD m:L m:WA menu:DD b:DD p:DD v:DD r:DD m:DA");
  pager->scrollToIndex(0);
  stack->popViewControllerAnimated(true);
  EXPECT_EQ(after(Seconds(1)), "") << "all of it lies behind the presented screen";
  reveal->dismissViewControllerAnimated(false);
  EXPECT_EQ(diary.take(), "m:WD r:WA menu:WA list:WA m:DD menu:DA list:DA r:DA");
}

TEST_F(Containers, AScreenMayChangeItsContainerWhileItAppears) {
  const auto first = screen("first");
  const auto stack = stackOf(first);
  first->onWillAppear = [&] { stack->pushViewController(screen("second"), true); };
  window.setRootViewController(stack);
  EXPECT_EQ(diary.take(), "first:L first:WA first:WD second:L second:WA first:DD second:DA");

  const auto login = screen("login");
  const auto next = screen("next");
  login->onDidAppear = [&] { window.setRootViewController(next); };
  window.setRootViewController(login);
  EXPECT_EQ(window.rootViewController(), next);
  EXPECT_EQ(diary.take(),
            "second:WD login:L login:WA second:DD login:DA login:WD next:L next:WA login:DD next:DA");
}

}  // namespace fleetor::test
