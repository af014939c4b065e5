#include "shell/base/base_view_controller.h"
#include "support/client.h"

namespace fleetor::test {
namespace {

/// A screen that follows the keyboard, as the root of the window.
class FollowingScreen : public BaseViewController {
 public:
  using BaseViewController::BaseViewController;

  void viewDidLoad() override {
    setScrollViewBottomConstraint(bottom);
    setHandleKeyboard(true);
    BaseViewController::viewDidLoad();
    EXPECT_FALSE(isHandlingKeyboard());
    setHandleKeyboard(true);
    layouts_ = view().layoutAnimated.connect([this](Seconds seconds) { layouts.push_back(seconds.count()); });
  }

  std::shared_ptr<LayoutConstraint> bottom = std::make_shared<LayoutConstraint>();
  std::vector<double> layouts;

 private:
  Connection layouts_;
};

TEST(Keyboard, LiftsTheContentOnceAndLetsItBackToItsRestingPlace) {
  Client client;
  const auto post = [&client](const char* name, double height, double seconds) {
    client.center.postNotificationName(name, KeyboardInfo{{0, 0, 390, height}, seconds});
  };
  const auto screen = std::make_shared<FollowingScreen>(client.environment);
  screen->bottom->setConstant(12);
  client.application.window().setRootViewController(screen);
  post(UIKeyboardWillHideNotification, 0, 0.3);
  EXPECT_EQ(screen->bottom->constant(), 12);
  post(UIKeyboardWillShowNotification, 216, 0);
  post(UIKeyboardWillShowNotification, 300, 0.3);
  EXPECT_EQ(screen->bottom->constant(), 216);
  post(UIKeyboardWillHideNotification, 0, 0.3);
  EXPECT_EQ(screen->bottom->constant(), 12);
  EXPECT_THAT(screen->layouts, ElementsAre(0.25, 0.3));

  client.application.window().setRootViewController(nullptr);
  post(UIKeyboardWillShowNotification, 216, 0);
  EXPECT_EQ(screen->bottom->constant(), 12);
}

}  // namespace
}  // namespace fleetor::test
