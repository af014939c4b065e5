#pragma once

#include "support/fake_device.h"
#include "support/testing.h"
#include "support/virtual_queues.h"
#include "ui/appearance.h"
#include "ui/application.h"
#include "ui/containers/navigation_controller.h"
#include "ui/containers/sw_reveal_view_controller.h"
#include "ui/containers/swipe_tab_bar_controller.h"
#include "ui/containers/view_controller.h"
#include "ui/notification_center.h"
#include "ui/storyboard.h"

namespace fleetor::test {

/// What happened, as words in one line: "a:WA" for viewWillAppear of the screen a, WD, DA, DD likewise, "a:L"
/// for viewDidLoad; a star follows when animated.
class Diary {
 public:
  void write(const std::string& word) { text_ += (text_.empty() ? "" : " ") + word; }
  std::string take() { return std::exchange(text_, {}); }

 private:
  std::string text_;
};

/// A screen or container that records its calls.
template <class Base>
class Noted : public Base {
 public:
  Noted(Environment& environment, Diary& diary, std::string name)
      : Base(environment), diary_(diary), name_(std::move(name)) {}

  void viewDidLoad() override { diary_.write(name_ + ":L"); }
  void viewWillAppear(bool animated) override {
    note(":WA", animated);
    if (onWillAppear) std::exchange(onWillAppear, nullptr)();
  }
  void viewDidAppear(bool animated) override {
    note(":DA", animated);
    if (onDidAppear) std::exchange(onDidAppear, nullptr)();
  }
  void viewWillDisappear(bool animated) override { note(":WD", animated); }
  void viewDidDisappear(bool animated) override { note(":DD", animated); }

  std::function<void()> onWillAppear;  ///< once
  std::function<void()> onDidAppear;   ///< once

 private:
  void note(const char* what, bool animated) { diary_.write(name_ + what + (animated ? "*" : "")); }

  Diary& diary_;
  std::string name_;
};

using Screen = Noted<ViewController>;
using Reveal = Noted<SWRevealViewController>;
using Pager = Noted<SwipeTabBarController>;

class World : public ApplicationDelegate {
 public:
  VirtualQueues queues;
  FakeDevice device;
  NotificationCenter center;
  Appearance appearance;
  Environment environment{queues, device, queues, center, appearance};
  Diary diary;
  Storyboard storyboard{environment,
                        "Main",
                        "FirstVC",
                        {{"FirstVC", [this](Environment&) { return screen("first"); }},
                         {"NextVC", [this](Environment&) { return screen("next"); }}},
                        {{"NextSegue", "FirstVC", "NextVC", SegueKind::push},
                         {"AskSegue", "FirstVC", "NextVC", SegueKind::modal}}};
  Application application{environment, storyboard, *this};
  Window& window = application.window();

  bool applicationDidFinishLaunchingWithOptions() override { return true; }
  bool applicationOpenURLSourceApplicationAnnotation(const std::string&, const std::string&) override {
    return false;
  }
  void showMainOrLogin() override {}

  std::shared_ptr<Screen> screen(const std::string& name) {
    return std::make_shared<Screen>(environment, diary, name);
  }
  std::shared_ptr<NavigationController> stackOf(std::shared_ptr<ViewController> root) {
    return NavigationController::initWithRootViewController(environment, std::move(root));
  }

  /// Puts the screen into the window; the diary starts after that.
  template <class Controller>
  std::shared_ptr<Controller> show(std::shared_ptr<Controller> root) {
    window.setRootViewController(root);
    diary.take();
    return root;
  }

  std::string after(Seconds time) {
    queues.advance(time);
    return diary.take();
  }
};

}  // namespace fleetor::test
