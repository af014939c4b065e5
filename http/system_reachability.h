#pragma once

#include <atomic>

#include "platform/network.h"

namespace fleetor {

/// Whether this machine has a way to the internet: an interface that is up, the loopback apart, with an
/// address that is valid beyond its own link, and a default route. The bridges of containers and virtual
/// machines alone do not count. Sends nothing. Any thread; takes a fraction of a millisecond.
bool hasInternetRoute();

/// Reads interfaces and routes at every call, so it needs no thread and no event to be up to date.
class SystemReachability final : public ReachabilityMonitor {
 public:
  void startMonitoring() override { started_ = true; }
  bool isReachable() const override { return started_ && hasInternetRoute(); }

 private:
  std::atomic<bool> started_ = false;
};

}  // namespace fleetor
