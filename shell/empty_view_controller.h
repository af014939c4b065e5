#pragma once

#include "shell/base/base_view_controller.h"
#include "shell/launch_image.h"

namespace fleetor {

/// What a tablet shows beside the list until the user opens a vehicle.
class EmptyViewController final : public BaseViewController {
 public:
  explicit EmptyViewController(Environment& environment) : BaseViewController(environment) {
    outlet("launchImageView", launchImageView_);
  }

  ImageView& launchImageView() { return launchImageView_; }

  void viewDidLoad() override {
    BaseViewController::viewDidLoad();
    launchImageView_.setImage(launchImageName(environment().device));
  }

 private:
  ImageView launchImageView_;
};

}  // namespace fleetor
