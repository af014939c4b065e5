#pragma once

#include "ui/component.h"

namespace fleetor {

/// The sign over everything that data is on its way. It lets every tap through; its colours are the shared
/// ones (Appearance). The window owns it.
class ProgressOverlay : public Component {
 public:
  bool visible() const { return visible_; }
  void setVisible(bool visible) { assign(visible_, visible); }

 private:
  bool visible_ = false;
};

}  // namespace fleetor
