#include "shell/launch_view_controller.h"

#include <string>

#include "shell/launch_image.h"

namespace fleetor {

namespace {
constexpr Seconds launchWait{3.0};
constexpr const char* termsAcceptedKey = "TermsAccepted";  // also the value
}  // namespace

LaunchViewController::LaunchViewController(Environment& environment, Settings& standardSettings)
    : BaseViewController(environment), standardSettings_(standardSettings) {
  outlet("launchImageView", launchImageView_);
}

void LaunchViewController::viewDidLoad() {
  BaseViewController::viewDidLoad();
  launchImageView_.setImage(launchImageName(environment().device));
  showed_ = false;
}

bool LaunchViewController::termsAccepted() const {
  const auto stored = standardSettings_.object(termsAcceptedKey);
  const auto* text = stored ? std::get_if<std::string>(&*stored) : nullptr;
  return text && *text == termsAcceptedKey;
}

void LaunchViewController::viewDidAppear(bool animated) {
  BaseViewController::viewDidAppear(animated);
  if (termsAccepted()) {
    runInBackground([self = sharedFrom(this)]() mutable {
      Queues& queues = self->environment().queues;
      queues.mainAfter(launchWait, [self = std::move(self)] { self->appDelegate().showMainOrLogin(); });
    });
  } else if (!showed_) {
    showed_ = true;
    performSegueWithIdentifier("TermsSegue");
  }
}

void LaunchViewController::prepareForSegue(Segue& segue, const std::any&) {
  const auto terms = std::dynamic_pointer_cast<TermsViewController>(segue.destinationViewController);
  if (!terms) return;
  if (environment().device.isPad()) terms->setModalPresentationStyle(ModalPresentationStyle::formSheet);
  terms->setDelegate(sharedFrom(this));
}

void LaunchViewController::termsViewControllerDidAgree(TermsViewController&) {
  // Captures no shared pointer to itself: the screen owns the completion, and both would leak if the program
  // ended first.
  dismissViewControllerAnimated(true, [this] {
    standardSettings_.setObject(std::string(termsAcceptedKey), termsAcceptedKey);
    standardSettings_.synchronize();
    appDelegate().showMainOrLogin();
    showed_ = false;
  });
}

}  // namespace fleetor
