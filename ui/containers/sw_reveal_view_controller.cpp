#include "ui/containers/sw_reveal_view_controller.h"

#include <utility>

namespace fleetor {

void SWRevealViewController::setFrontViewControllerAnimated(std::shared_ptr<ViewController> controller,
                                                            bool animated) {
  replaceFront(std::move(controller), position_, animated);
}

void SWRevealViewController::pushFrontViewControllerAnimated(std::shared_ptr<ViewController> controller,
                                                             bool animated) {
  replaceFront(std::move(controller), FrontViewPosition::left, animated);
}

void SWRevealViewController::replaceFront(std::shared_ptr<ViewController> controller,
                                          FrontViewPosition position, bool animated) {
  const auto self = shared_from_this();
  if (controller == front_) {
    setFrontViewPositionAnimated(position, animated);
    return;
  }
  completeTransitions();
  const auto old = std::exchange(front_, std::move(controller));
  adopt(front_);
  Controllers outgoing;
  if (old) outgoing.push_back(old);
  if (rear_ && position_ != FrontViewPosition::left && position == FrontViewPosition::left)
    outgoing.push_back(rear_);
  position_ = position;
  place(*front_, {frontX(), 0, frameOf(*this).width, frameOf(*this).height});
  exchange(TransitionKind::exchange, duration::reveal, std::move(outgoing), {front_}, animated, [this, old] {
    if (old) disown(old);
  });
}

void SWRevealViewController::setRearViewControllerAnimated(std::shared_ptr<ViewController> controller,
                                                           bool animated) {
  const auto self = shared_from_this();
  completeTransitions();
  if (controller == rear_) return;
  const auto old = std::exchange(rear_, std::move(controller));
  adopt(rear_);
  placeRear();
  const auto finish = [this, old] {
    if (old) disown(old);
  };
  if (position_ == FrontViewPosition::left)
    exchange(TransitionKind::exchange, duration::reveal, {}, {}, false, finish);
  else
    exchange(TransitionKind::exchange, duration::reveal, old ? Controllers{old} : Controllers{}, {rear_},
             animated, finish);
}

void SWRevealViewController::setFrontViewPositionAnimated(FrontViewPosition position, bool animated) {
  const auto self = shared_from_this();
  completeTransitions();
  if (position == position_) return;
  const bool hadRear = position_ != FrontViewPosition::left;
  const bool hasRear = position != FrontViewPosition::left;
  position_ = position;
  const Controllers rear = rear_ && hadRear != hasRear ? Controllers{rear_} : Controllers{};
  exchange(TransitionKind::reveal, duration::reveal, hadRear ? rear : Controllers{},
           hasRear ? rear : Controllers{}, animated);
  placeFront();  // whoever draws it asks how long it takes
}

void SWRevealViewController::revealToggleAnimated(bool animated) {
  setFrontViewPositionAnimated(
      position_ == FrontViewPosition::left ? FrontViewPosition::right : FrontViewPosition::left, animated);
}

void SWRevealViewController::setRearViewRevealWidth(double points) {
  if (!assign(rearViewRevealWidth_, points)) return;
  placeRear();
  placeFront();
}

void SWRevealViewController::setRearViewRevealOverdraw(double points) {
  if (!assign(rearViewRevealOverdraw_, points)) return;
  placeRear();
  placeFront();
}

GestureRecognizer& SWRevealViewController::panGestureRecognizer() {
  pan_.setAttached(true);
  return pan_;
}

GestureRecognizer& SWRevealViewController::tapGestureRecognizer() {
  tap_.setAttached(true);
  return tap_;
}

bool SWRevealViewController::panShouldBegin(double x) const {
  return pan_.attached() && (draggableBorderWidth_ <= 0 || (x >= 0 && x <= draggableBorderWidth_));
}

void SWRevealViewController::beginPan() {
  if (rear_ && pan_.attached()) rear_->loadViewIfNeeded();
}

void SWRevealViewController::endPan(const Drag& drag) {
  if (!pan_.attached()) return;
  const int direction = drag.direction(rearViewRevealWidth_ / 2);
  if (direction != 0)
    setFrontViewPositionAnimated(direction > 0 ? FrontViewPosition::right : FrontViewPosition::left, true);
}

bool SWRevealViewController::tapShouldBegin() const {
  return tap_.attached() && position_ != FrontViewPosition::left;
}

void SWRevealViewController::tapFront() {
  if (tapShouldBegin()) setFrontViewPositionAnimated(FrontViewPosition::left, true);
}

bool SWRevealViewController::handleBack() {
  if (tapShouldBegin()) {
    tapFront();
    return true;
  }
  const auto front = front_;
  return front && front->handleBack();
}

StatusBarStyle SWRevealViewController::preferredStatusBarStyle() const {
  return front_ ? front_->preferredStatusBarStyle() : ViewController::preferredStatusBarStyle();
}

ViewController::Controllers SWRevealViewController::visibleChildViewControllers() const {
  Controllers visible;
  if (rear_ && position_ != FrontViewPosition::left) visible.push_back(rear_);
  if (front_) visible.push_back(front_);
  return visible;
}

void SWRevealViewController::layoutChildren(const Rect& frameBefore) {
  placeRear();
  if (!front_) return;
  // A front screen that was made narrower keeps its distance from the right edge.
  Rect front = frameOf(*front_);
  front.width += frameOf(*this).width - frameBefore.width;
  front.height = frameOf(*this).height;
  place(*front_, front);
}

double SWRevealViewController::frontX() const {
  switch (position_) {
    case FrontViewPosition::left:
      return 0;
    case FrontViewPosition::right:
      return rearViewRevealWidth_;
    case FrontViewPosition::rightMost:
      return rearViewRevealWidth_ + rearViewRevealOverdraw_;
  }
  return 0;
}

void SWRevealViewController::placeFront() {
  if (!front_) return;
  Rect front = frameOf(*front_);
  front.x = frontX();
  place(*front_, front);
}

void SWRevealViewController::placeRear() {
  if (rear_) place(*rear_, {0, 0, rearViewRevealWidth_ + rearViewRevealOverdraw_, frameOf(*this).height});
}

}  // namespace fleetor
