#pragma once

#include "platform/settings.h"
#include "shell/base/base_view_controller.h"
#include "shell/terms_view_controller.h"

namespace fleetor {

/// The first screen: shows the launch image for three seconds, or the terms until the user agrees to them,
/// and then has the application delegate build the top level. The delayed call keeps the screen alive.
class LaunchViewController final : public BaseViewController, public TermsViewControllerDelegate {
 public:
  LaunchViewController(Environment& environment, Settings& standardSettings);

  ImageView& launchImageView() { return launchImageView_; }

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void prepareForSegue(Segue& segue, const std::any& sender) override;
  void termsViewControllerDidAgree(TermsViewController& controller) override;

 private:
  bool termsAccepted() const;

  Settings& standardSettings_;
  ImageView launchImageView_;
  bool showed_ = false;  ///< the terms were presented and not yet agreed to
};

}  // namespace fleetor
