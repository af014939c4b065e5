#pragma once

#include <memory>

#include "ui/containers/drag.h"
#include "ui/containers/view_controller.h"

namespace fleetor {

enum class FrontViewPosition { left, right, rightMost };
enum class SWRevealToggleAnimationType { spring, easeOut };

/// Whether a gesture is attached to its view. The container attaches it when it is first asked for it.
class GestureRecognizer : public Component {
 public:
  bool attached() const { return attached_; }
  void setAttached(bool attached) { assign(attached_, attached); }

 private:
  bool attached_ = false;
};

/// The side-menu container: a front screen, and a rear screen at the left that shows when the front one moves
/// to the right. The front screen is always on screen with the container, the rear one while the position is
/// not `left`.
class SWRevealViewController : public ViewController {
 public:
  explicit SWRevealViewController(Environment& environment) : ViewController(environment) {}

  const std::shared_ptr<ViewController>& frontViewController() const { return front_; }
  const std::shared_ptr<ViewController>& rearViewController() const { return rear_; }

  /// Replaces the front screen where it stands; it gets the whole size of the container.
  void setFrontViewControllerAnimated(std::shared_ptr<ViewController> controller, bool animated);

  /// Replaces the front screen and moves it to `left`, in one transition.
  void pushFrontViewControllerAnimated(std::shared_ptr<ViewController> controller, bool animated);
  void setRearViewControllerAnimated(std::shared_ptr<ViewController> controller, bool animated);

  FrontViewPosition frontViewPosition() const { return position_; }
  void setFrontViewPositionAnimated(FrontViewPosition position, bool animated);

  /// From `left` to `right`, from anywhere else to `left`.
  void revealToggleAnimated(bool animated);

  double rearViewRevealWidth() const { return rearViewRevealWidth_; }  ///< points
  void setRearViewRevealWidth(double points);
  double rearViewRevealOverdraw() const {
    return rearViewRevealOverdraw_;
  }  ///< points beyond, at `rightMost`
  void setRearViewRevealOverdraw(double points);

  /// Width in points of the left edge of the front screen in which a drag may start; 0: anywhere.
  double draggableBorderWidth() const { return draggableBorderWidth_; }
  void setDraggableBorderWidth(double points) { assign(draggableBorderWidth_, points); }

  bool bounceBackOnOverdraw() const { return bounceBackOnOverdraw_; }
  void setBounceBackOnOverdraw(bool bounce) { assign(bounceBackOnOverdraw_, bounce); }
  SWRevealToggleAnimationType toggleAnimationType() const { return toggleAnimationType_; }
  void setToggleAnimationType(SWRevealToggleAnimationType type) { assign(toggleAnimationType_, type); }

  /// Attaches and returns it.
  GestureRecognizer& panGestureRecognizer();
  GestureRecognizer& tapGestureRecognizer();

  // The user's gestures. `x` in points from the left edge of the front screen.
  bool panShouldBegin(double x) const;  ///< whether a drag from there moves the front screen
  void beginPan();                      ///< a drag has begun: the rear screen is about to show
  void endPan(const Drag& drag);        ///< the front screen goes on, or back where it stood
  bool tapShouldBegin() const;  ///< whether a tap on the front screen closes the menu instead of operating it
  void tapFront();

  bool handleBack() override;  ///< closes the menu, or goes back in the front screen

  StatusBarStyle preferredStatusBarStyle() const override;

 protected:
  Controllers visibleChildViewControllers() const override;
  void layoutChildren(const Rect& frameBefore) override;

 private:
  double frontX() const;
  void placeFront();
  void placeRear();
  void replaceFront(std::shared_ptr<ViewController> controller, FrontViewPosition position, bool animated);

  std::shared_ptr<ViewController> front_;
  std::shared_ptr<ViewController> rear_;
  FrontViewPosition position_ = FrontViewPosition::left;
  double rearViewRevealWidth_ = 260;
  double rearViewRevealOverdraw_ = 60;
  double draggableBorderWidth_ = 0;
  bool bounceBackOnOverdraw_ = true;
  SWRevealToggleAnimationType toggleAnimationType_ = SWRevealToggleAnimationType::spring;
  GestureRecognizer pan_;
  GestureRecognizer tap_;
};

}  // namespace fleetor
