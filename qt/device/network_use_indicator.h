#pragma once

#include <functional>

#include "platform/network.h"

namespace fleetor {

/// Passes the network indicator on to whoever draws it. Main thread only.
class NetworkUseIndicator final : public NetworkActivityIndicator {
 public:
  void setVisible(bool visible) override {
    if (visible == visible_) return;
    visible_ = visible;
    if (onChange) onChange(visible);
  }
  bool isVisible() const { return visible_; }

  std::function<void(bool visible)> onChange;

 private:
  bool visible_ = false;
};

}  // namespace fleetor
