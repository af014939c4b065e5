#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/network.h"
#include "platform/queues.h"

namespace fleetor {

/// Passes the network indicator on to whoever draws it, once it has been on for `patience`: whoever waits no
/// longer than that needs none, and each one costs dozens of frames. It goes off at once. Main thread only.
class NetworkUseIndicator final : public NetworkActivityIndicator {
 public:
  static constexpr Seconds patience{0.4};

  explicit NetworkUseIndicator(Queues& queues) : queues_(queues) {}

  void setVisible(bool visible) override {
    if (visible == (wait_ != nullptr)) return;
    if (!visible) {
      wait_.reset();
      show(false);
      return;
    }
    wait_ = std::make_shared<bool>();
    queues_.mainAfter(patience, [this, wait = std::weak_ptr(wait_)] {
      if (!wait.expired()) show(true);
    });
  }

  std::function<void(bool visible)> onChange;

 private:
  void show(bool visible) {
    if (std::exchange(shown_, visible) != visible && onChange) onChange(visible);
  }

  Queues& queues_;
  std::shared_ptr<bool> wait_;  ///< while it is on
  bool shown_ = false;
};

}  // namespace fleetor
