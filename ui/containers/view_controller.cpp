#include "ui/containers/view_controller.h"

#include <algorithm>
#include <utility>

#include "ui/clipboard.h"
#include "ui/containers/navigation_controller.h"
#include "ui/containers/sw_reveal_view_controller.h"
#include "ui/containers/window.h"
#include "ui/notification_center.h"
#include "ui/programming_error.h"
#include "ui/storyboard.h"

namespace fleetor {

namespace {

constexpr Size formSheetSize{540, 620};

Rect presentedFrame(const Rect& presenter, bool covers) {
  if (covers) return presenter;
  const double width = std::min(formSheetSize.width, presenter.width);
  const double height = std::min(formSheetSize.height, presenter.height);
  return {(presenter.width - width) / 2, (presenter.height - height) / 2, width, height};
}

}  // namespace

ViewController::ViewController(Environment& environment) : environment_(environment) {
  view_.setFrame({0, 0, environment.device.screenWidth(), environment.device.screenHeight()});
  frameChanged_ = view_.frameChanged.connect([this](const Rect& before) { layoutChildren(before); });
}

ViewController::~ViewController() {
  for (const auto& child : children_)
    child->parent_ = nullptr;
  if (presented_) presented_->presenting_ = nullptr;
}

void ViewController::loadViewIfNeeded() {
  if (viewLoaded_) return;
  viewLoaded_ = true;
  viewDidLoad();
}

View& ViewController::view() {
  loadViewIfNeeded();
  return view_;
}

void ViewController::copy(const std::string& text) {
  if (!text.empty()) copyToClipboard(environment_, text);
}

bool ViewController::handleBack() {
  return presenting_ && navigationItem_.tapLeftButton();
}

void ViewController::endEditing() {
  if (!environment_.window) return;
  Keyboard& keyboard = environment_.window->keyboard();
  const std::function<bool(const ViewController&)> holdsFocus = [&](const ViewController& screen) {
    return std::ranges::any_of(
               screen.outlets(),
               [&](const auto& named) { return named.second == keyboard.firstResponder(); }) ||
           std::ranges::any_of(screen.children_, [&](const auto& child) { return holdsFocus(*child); });
  };
  if (keyboard.firstResponder() && holdsFocus(*this)) keyboard.setFirstResponder(nullptr);
}

NavigationController* ViewController::navigationController() const {
  for (ViewController* above = parent_; above; above = above->parent_)
    if (auto* found = dynamic_cast<NavigationController*>(above)) return found;
  return nullptr;
}

SWRevealViewController* ViewController::revealViewController() const {
  for (ViewController* above = parent_; above; above = above->parent_)
    if (auto* found = dynamic_cast<SWRevealViewController*>(above)) return found;
  return nullptr;
}

void ViewController::addChildViewController(const std::shared_ptr<ViewController>& child) {
  adopt(child);
  if (appearance_ != AppearanceState::appearing && appearance_ != AppearanceState::appeared) return;
  child->beginAppearanceTransition(true, false);
  if (appearance_ == AppearanceState::appeared) child->endAppearanceTransition();
}

void ViewController::setStoryboard(Storyboard* storyboard, std::string identifier) {
  storyboard_ = storyboard;
  storyboardIdentifier_ = std::move(identifier);
}

void ViewController::layoutChildren(const Rect& /*frameBefore*/) {
  for (const auto& child : children_)
    place(*child, {0, 0, view_.frame().width, view_.frame().height});
}

void ViewController::adopt(std::shared_ptr<ViewController> child) {
  if (child->parent_ || child->presenting_) programmingError("a screen is added to a second container");
  child->parent_ = this;
  place(*child, {0, 0, view_.frame().width, view_.frame().height});
  children_.push_back(std::move(child));
}

void ViewController::disown(const std::shared_ptr<ViewController>& child) {
  child->parent_ = nullptr;
  std::erase(children_, child);
}

void ViewController::beginAppearanceTransition(bool appearing, bool animated) {
  const auto self = shared_from_this();
  const auto forward = [&](AppearanceState expected) {
    if (appearance_ != expected) return;  // the screen has started another change
    for (const auto& child : visibleChildViewControllers())
      child->beginAppearanceTransition(appearing, animated);
  };
  if (appearing) {
    if (appearance_ == AppearanceState::appearing || appearance_ == AppearanceState::appeared) return;
    loadViewIfNeeded();
    appearance_ = AppearanceState::appearing;
    animated_ = animated;
    viewWillAppear(animated);
    forward(AppearanceState::appearing);
  } else {
    if (appearance_ == AppearanceState::disappearing || appearance_ == AppearanceState::disappeared) return;
    transition_.complete();
    if (appearance_ == AppearanceState::disappearing || appearance_ == AppearanceState::disappeared) return;
    appearance_ = AppearanceState::disappearing;
    animated_ = animated;
    viewWillDisappear(animated);
    endEditing();
    forward(AppearanceState::disappearing);
  }
}

void ViewController::endAppearanceTransition() {
  using enum AppearanceState;
  const auto self = shared_from_this();
  if (appearance_ == appeared || appearance_ == disappeared) return;
  const AppearanceState reached = appearance_ == appearing ? appeared : disappeared;
  appearance_ = reached;
  for (const auto& child : visibleChildViewControllers())
    child->endAppearanceTransition();
  if (appearance_ != reached) return;
  if (reached == disappeared) return viewDidDisappear(animated_);
  viewDidAppear(animated_);
  if (!storyboardIdentifier_.empty())
    environment_.notificationCenter.postNotificationName(ScreenDidAppearNotification, storyboardIdentifier_);
}

void ViewController::completeTransitions() {
  const auto self = shared_from_this();
  if (ViewController* above = parent_ ? parent_ : presenting_) above->completeTransitions();
  presentation_.complete();
  transition_.complete();
}

void ViewController::exchange(TransitionKind kind, Seconds duration, Controllers outgoing,
                              Controllers incoming, bool animated, std::function<void()> finish) {
  using enum AppearanceState;
  const auto self = shared_from_this();
  animated = animated && appearance_ == appeared;
  if (appearance_ == appeared || appearance_ == appearing) {
    for (const auto& controller : outgoing)
      controller->beginAppearanceTransition(false, animated);
    for (const auto& controller : incoming)
      if (appearance_ == appeared || appearance_ == appearing)
        controller->beginAppearanceTransition(true, animated);
  }
  Transition transition{kind, duration, outgoing, incoming};
  transition_.run(
      environment_.queues, std::move(transition), animated && appearance_ == appeared,
      [this, outgoing = std::move(outgoing), incoming = std::move(incoming), finish = std::move(finish)] {
        const auto alive = shared_from_this();
        for (const auto& controller : outgoing)
          controller->endAppearanceTransition();
        // While this one is still appearing, its children's did-operations come with its own.
        if (appearance_ == appeared)
          for (const auto& controller : incoming)
            controller->endAppearanceTransition();
        if (finish) finish();
        changed.emit();
      });
  changed.emit();
}

void ViewController::performSegueWithIdentifier(const std::string& identifier, const std::any& sender) {
  if (!storyboard_)
    programmingError("transition \"" + identifier + "\" from a screen outside any storyboard");
  const StoryboardSegue& entry = storyboard_->segueWithIdentifier(identifier, storyboardIdentifier_);
  Segue segue{identifier, shared_from_this(),
              storyboard_->instantiateViewControllerWithIdentifier(entry.destination)};
  prepareForSegue(segue, sender);
  if (entry.kind == SegueKind::modal) {
    presentViewController(segue.destinationViewController, true);
    return;
  }
  NavigationController* navigation = navigationController();
  if (!navigation)
    programmingError("transition \"" + identifier + "\" pushes from outside a navigation stack");
  navigation->pushViewController(segue.destinationViewController, true);
}

ViewController& ViewController::topAncestor() {
  ViewController* top = this;
  while (top->parent_)
    top = top->parent_;
  return *top;
}

bool ViewController::coversPresenter() const {
  return modalPresentationStyle_ == ModalPresentationStyle::fullScreen || !environment_.device.isPad();
}

void ViewController::presentViewController(std::shared_ptr<ViewController> controller, bool animated,
                                           std::function<void()> completion) {
  topAncestor().presentOver(std::move(controller), animated, std::move(completion));
}

void ViewController::presentOver(std::shared_ptr<ViewController> controller, bool animated,
                                 std::function<void()> completion) {
  const auto self = shared_from_this();
  if (presented_ && !dismissing_) return;
  completeTransitions();
  if (presented_ || appearance_ != AppearanceState::appeared) return;
  if (controller->parent_ || controller->presenting_)
    programmingError("a screen is presented that is part of another container");

  presented_ = controller;
  controller->presenting_ = this;
  const bool covers = controller->coversPresenter();
  place(*controller, presentedFrame(view_.frame(), covers));
  if (covers) beginAppearanceTransition(false, animated);
  if (presented_ == controller) controller->beginAppearanceTransition(true, animated);
  if (presented_ != controller) return;  // a new root screen took its place meanwhile

  Transition transition{TransitionKind::present, duration::modal, {}, {controller}};
  presentation_.run(environment_.queues, std::move(transition), animated,
                    [this, covers, controller, completion = std::move(completion)] {
                      const auto alive = shared_from_this();
                      if (covers) endAppearanceTransition();
                      controller->endAppearanceTransition();
                      changed.emit();
                      if (completion) completion();
                    });
  changed.emit();
}

void ViewController::dismissViewControllerAnimated(bool animated, std::function<void()> completion) {
  ViewController& top = topAncestor();
  if (top.presented_)
    top.dismissPresented(animated, std::move(completion));
  else if (top.presenting_)
    top.presenting_->dismissPresented(animated, std::move(completion));
}

void ViewController::dismissPresented(bool animated, std::function<void()> completion) {
  const auto self = shared_from_this();
  if (const auto presented = presented_) presented->completeTransitions();
  if (!presented_) return;

  Controllers above = presentedChain();
  dismissing_ = true;
  // No effect on a presenter that a form sheet left visible: it has appeared already.
  for (const auto& controller : above)
    controller->beginAppearanceTransition(false, animated);
  if (presented_ != above.back()) return;
  beginAppearanceTransition(true, animated);
  if (presented_ != above.back()) return;

  Transition transition{TransitionKind::dismiss, duration::modal, above, {}};
  presentation_.run(environment_.queues, std::move(transition), animated,
                    [this, above = std::move(above), completion = std::move(completion)] {
                      const auto alive = shared_from_this();
                      releasePresented();
                      for (const auto& controller : above)
                        controller->endAppearanceTransition();
                      endAppearanceTransition();
                      changed.emit();
                      if (completion) completion();
                    });
  changed.emit();
}

ViewController::Controllers ViewController::presentedChain() const {
  Controllers chain;
  for (auto above = presented_; above; above = above->presented_)
    chain.push_back(above);
  std::ranges::reverse(chain);
  return chain;
}

void ViewController::resize(const Rect& frame) {
  view_.setFrame(frame);
  if (presented_) presented_->resize(presentedFrame(frame, presented_->coversPresenter()));
}

void ViewController::releasePresented() {
  if (!presented_) return;
  const auto presented = std::exchange(presented_, nullptr);
  presented->presenting_ = nullptr;
  dismissing_ = false;
  presented->releasePresented();
}

}  // namespace fleetor
