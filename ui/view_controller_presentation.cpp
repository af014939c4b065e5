#include <algorithm>
#include <utility>

#include "ui/fault.h"
#include "ui/navigation_controller.h"
#include "ui/storyboard.h"
#include "ui/view_controller.h"

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

void ViewController::performSegueWithIdentifier(const std::string& identifier, const std::any& sender) {
  if (!storyboard_)
    programmingFault("transition \"" + identifier + "\" from a screen outside any storyboard");
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
    programmingFault("transition \"" + identifier + "\" pushes from outside a navigation stack");
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
    programmingFault("a screen is presented that shows elsewhere");

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
  // What a form sheet left visible hears nothing: it has appeared already.
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
