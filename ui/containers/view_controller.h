#pragma once

#include <any>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ui/component.h"
#include "ui/containers/bar_button_item.h"
#include "ui/containers/transition.h"
#include "ui/controls/view.h"
#include "ui/environment.h"

namespace fleetor {

class NavigationController;
class Storyboard;
class SWRevealViewController;
class ViewController;

enum class ModalPresentationStyle { fullScreen, formSheet };
enum class StatusBarStyle { dark, lightContent };

/// A transition of the storyboard, about to be made.
struct Segue {
  std::string identifier;
  std::shared_ptr<ViewController> sourceViewController;
  std::shared_ptr<ViewController> destinationViewController;
};

/// One screen, or a container of screens. Main thread only. Always held by shared pointers: by the window,
/// the container or the screen that presents it, and by whatever still has to call it (a request in flight, a
/// delayed call). Nothing is called on a screen that is released.
///
/// Appearance: viewWillAppear, viewDidAppear, viewWillDisappear and viewDidDisappear are called in this
/// order, each exactly once a change. An animated change calls the will-operations at once and the
/// did-operations when it is over, one that is not animated calls all of them before it returns. A change
/// that starts while another one still runs completes that one first. Order within a change: outgoing will,
/// incoming will, outgoing did, incoming did; a parent's will comes before its children's, its did after
/// theirs. Nothing is called on children of a container that is not on screen.
class ViewController : public Component, public Outlets, public std::enable_shared_from_this<ViewController> {
 public:
  explicit ViewController(Environment& environment);
  ~ViewController() override;

  /// Calls viewDidLoad the first time. Must not be called from a constructor.
  void loadViewIfNeeded();
  bool isViewLoaded() const { return viewLoaded_; }
  View& view();  ///< loads it

  virtual void viewDidLoad() {}
  virtual void viewWillAppear(bool /*animated*/) {}
  virtual void viewDidAppear(bool /*animated*/) {}
  virtual void viewWillDisappear(bool /*animated*/) {}
  virtual void viewDidDisappear(bool /*animated*/) {}
  virtual StatusBarStyle preferredStatusBarStyle() const { return StatusBarStyle::dark; }

  const std::string& title() const { return title_; }
  void setTitle(std::string title) { assign(title_, std::move(title)); }
  std::string accessibleName() const override {
    return title_.empty() ? Component::accessibleName() : title_;
  }
  NavigationItem& navigationItem() { return navigationItem_; }

  /// The user wants to go back one step: a presented screen taps its left button, a container undoes its last
  /// step. False: there is nothing to go back from.
  virtual bool handleBack();

  /// The user copies a text that this screen shows.
  void copy(const std::string& text);

  /// Closes the keyboard when one of this screen's or its children's text fields (outlets) has the focus.
  void endEditing();

  // The tree. Children do not own their parents. A parent is null once it is destroyed.
  ViewController* parentViewController() const { return parent_; }
  const std::vector<std::shared_ptr<ViewController>>& childViewControllers() const { return children_; }
  NavigationController* navigationController() const;    ///< the nearest above, or null
  SWRevealViewController* revealViewController() const;  ///< the nearest above, or null

  /// Adds the screen as the last child. It appears and disappears together with this one from now on.
  void addChildViewController(const std::shared_ptr<ViewController>& child);

  // The storyboard.
  Storyboard* storyboard() const { return storyboard_; }  ///< the one that made this screen, or null
  const std::string& storyboardIdentifier() const { return storyboardIdentifier_; }
  void setStoryboard(Storyboard* storyboard, std::string identifier);

  /// Makes the destination, calls prepareForSegue, then pushes or presents it, animated. An unknown
  /// transition, or a push from outside a navigation stack, is a programming error.
  void performSegueWithIdentifier(const std::string& identifier, const std::any& sender = {});
  virtual void prepareForSegue(Segue& /*segue*/, const std::any& /*sender*/) {}

  /// The outermost container of this screen presents and owns the controller. Does nothing, without calling
  /// the completion, while that container presents another one or is not on screen.
  void presentViewController(std::shared_ptr<ViewController> controller, bool animated,
                             std::function<void()> completion = {});

  /// Dismisses what the outermost container presents, or else that container itself. With nothing to dismiss
  /// it does nothing and drops the completion. The completion comes after the last viewDidAppear.
  void dismissViewControllerAnimated(bool animated, std::function<void()> completion = {});

  ModalPresentationStyle modalPresentationStyle() const { return modalPresentationStyle_; }
  void setModalPresentationStyle(ModalPresentationStyle style) { modalPresentationStyle_ = style; }
  const std::shared_ptr<ViewController>& presentedViewController() const { return presented_; }
  ViewController* presentingViewController() const { return presenting_; }

  /// Whether a presented screen hides the presenter: always, except for a form sheet on a tablet.
  bool coversPresenter() const;

  // For adapters.
  const Transition* runningTransition() const { return transition_.running(); }  ///< among the children
  const Transition* runningPresentation() const {
    return presentation_.running();
  }  ///< of a screen over this one

  // For containers and the window.
  enum class AppearanceState { disappeared, appearing, appeared, disappearing };
  AppearanceState appearanceState() const { return appearance_; }
  void beginAppearanceTransition(bool appearing, bool animated);
  void endAppearanceTransition();

  /// Ends the transitions that run in this screen and in everything that contains or presents it.
  void completeTransitions();

 protected:
  using Controllers = std::vector<std::shared_ptr<ViewController>>;

  /// The children that are on screen when this one is.
  virtual Controllers visibleChildViewControllers() const { return children_; }

  /// Places the children after the view's frame has changed.
  virtual void layoutChildren(const Rect& frameBefore);

  /// Where a child's view is, without loading it.
  static const Rect& frameOf(const ViewController& child) { return child.view_.frame(); }
  static void place(ViewController& child, const Rect& frame) { child.view_.setFrame(frame); }

  /// Adds or removes a child without calling it. A child with another parent is a programming error.
  void adopt(std::shared_ptr<ViewController> child);
  void disown(const std::shared_ptr<ViewController>& child);

  /// Makes children disappear and appear. Complete the transitions, then change the model, then call this.
  /// Outgoing children stay in the tree until `finish`.
  void exchange(TransitionKind kind, Seconds duration, Controllers outgoing, Controllers incoming,
                bool animated, std::function<void()> finish = {});

  Environment& environment() const { return environment_; }

 private:
  friend class Window;

  ViewController& topAncestor();
  void presentOver(std::shared_ptr<ViewController> controller, bool animated,
                   std::function<void()> completion);
  void resize(const Rect& frame);      ///< this root's, with everything presented over it
  Controllers presentedChain() const;  ///< everything presented over this one, topmost first
  void dismissPresented(bool animated, std::function<void()> completion);
  void releasePresented();

  Environment& environment_;
  View view_;
  Connection frameChanged_;
  bool viewLoaded_ = false;
  std::string title_;
  NavigationItem navigationItem_;
  ViewController* parent_ = nullptr;
  Controllers children_;
  Storyboard* storyboard_ = nullptr;
  std::string storyboardIdentifier_;
  ModalPresentationStyle modalPresentationStyle_ = ModalPresentationStyle::fullScreen;
  std::shared_ptr<ViewController> presented_;
  ViewController* presenting_ = nullptr;
  bool dismissing_ = false;
  AppearanceState appearance_ = AppearanceState::disappeared;
  bool animated_ = false;
  TransitionSlot transition_;
  TransitionSlot presentation_;
};

}  // namespace fleetor
