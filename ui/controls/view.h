#pragma once

#include "platform/queues.h"
#include "ui/component.h"
#include "ui/geometry.h"

namespace fleetor {

/// The area of a screen.
class View : public Component {
 public:
  const Rect& frame() const { return frame_; }
  void setFrame(const Rect& frame) {
    const Rect before = frame_;
    if (assign(frame_, frame)) frameChanged.emit(before);
  }

  /// Whether the area and what is inside it take touches.
  bool userInteractionEnabled() const { return userInteractionEnabled_; }
  void setUserInteractionEnabled(bool enabled) { assign(userInteractionEnabled_, enabled); }

  /// Asks the adapter to move everything to where its constraints now put it, over that time.
  void animateLayout(Seconds duration) { layoutAnimated.emit(duration); }

  Signal<const Rect&> frameChanged;  ///< the argument is the previous frame
  Signal<Seconds> layoutAnimated;

 private:
  Rect frame_;
  bool userInteractionEnabled_ = true;
};

/// A distance between two edges that a screen may change while it runs.
class LayoutConstraint : public Component {
 public:
  double constant() const { return constant_; }  ///< points
  void setConstant(double points) { assign(constant_, points); }

 private:
  double constant_ = 0;
};

}  // namespace fleetor
