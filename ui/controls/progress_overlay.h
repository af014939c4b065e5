#pragma once

#include "ui/component.h"

namespace fleetor {

/// The indicator that requests are in flight, drawn over everything. Taps pass through it. Its colours are in
/// the shared Appearance. The window owns it.
class ProgressOverlay : public Component {
 public:
  bool visible() const { return visible_; }
  void setVisible(bool visible) { assign(visible_, visible); }

 private:
  bool visible_ = false;
};

}  // namespace fleetor
