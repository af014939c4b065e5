#pragma once

namespace fleetor {

/// Whether the internet can be reached at all; a hint that explains a failure, never a gate for a request.
/// `isReachable` may be called from any thread, takes a fraction of a millisecond and returns the state at
/// that moment. It is false before `startMonitoring`.
class ReachabilityMonitor {
 public:
  virtual ~ReachabilityMonitor() = default;
  virtual void startMonitoring() = 0;
  virtual bool isReachable() const = 0;
};

/// The platform's small indicator that the network is in use. Main thread only.
class NetworkActivityIndicator {
 public:
  virtual ~NetworkActivityIndicator() = default;
  virtual void setVisible(bool visible) = 0;
};

}  // namespace fleetor
