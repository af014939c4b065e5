#pragma once

#include <atomic>

#include "platform/network.h"

namespace fleetor {

/// Whether an interface of this machine, the loopback apart, is up and has an address that is valid beyond
/// its own link. Any thread; takes a fraction of a millisecond.
bool hasNetworkInterface();

/// Reads the interfaces at every call, so it needs no thread and no event to be up to date.
class SystemReachability final : public ReachabilityMonitor {
 public:
  void startMonitoring() override { started_ = true; }
  bool isReachable() const override { return started_ && hasNetworkInterface(); }

 private:
  std::atomic<bool> started_ = false;
};

}  // namespace fleetor
