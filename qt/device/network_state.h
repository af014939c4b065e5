#pragma once

#include <atomic>
#include <functional>
#include <memory>

#include "platform/network.h"

namespace fleetor {

/// What the system says about the network, or, where it says nothing, whether an interface other than the
/// loopback is up. Made, started and destroyed on the main thread.
class SystemReachability final : public ReachabilityMonitor {
 public:
  SystemReachability();
  ~SystemReachability() override;

  SystemReachability(const SystemReachability&) = delete;
  SystemReachability& operator=(const SystemReachability&) = delete;

  void startMonitoring() override;
  bool isReachable() const override { return reachable_; }

 private:
  struct Watch;

  std::atomic<bool> reachable_ = false;
  std::unique_ptr<Watch> watch_;
};

/// Hands the sign for network use to whoever draws it. Main thread only.
class NetworkUseSign final : public NetworkActivityIndicator {
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
