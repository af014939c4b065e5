#pragma once

#include <memory>

#include "platform/network.h"
#include "platform/queues.h"

namespace fleetor {

/// Counts the operations that are running and shows the platform's activity indicator while there are any,
/// and for another 0.17 seconds, so that it does not flicker between two requests. Every operation may be
/// called from any thread and takes effect on the main thread, in the order of the calls.
class AFNetworkActivityIndicatorManager
    : public std::enable_shared_from_this<AFNetworkActivityIndicatorManager> {
 public:
  static constexpr Seconds hideDelay{0.17};

  /// Makes a new shared manager for this indicator, which outlives the queues.
  static std::shared_ptr<AFNetworkActivityIndicatorManager> install(Queues& queues,
                                                                    NetworkActivityIndicator& indicator);

  /// The manager of the request layer; nothing before `install`.
  static const std::shared_ptr<AFNetworkActivityIndicatorManager>& sharedManager() { return shared_; }

  void setEnabled(bool enabled);
  void operationStarted();
  void operationEnded();

 private:
  AFNetworkActivityIndicatorManager(Queues& queues, NetworkActivityIndicator& indicator)
      : queues_(queues), indicator_(indicator) {}
  void update();

  static inline std::shared_ptr<AFNetworkActivityIndicatorManager> shared_;

  Queues& queues_;
  NetworkActivityIndicator& indicator_;

  // Main thread only.
  int running_ = 0;
  unsigned ended_ = 0;  ///< operations that have ended; the delay counts from the latest
  bool enabled_ = false;
  bool visible_ = false;
};

}  // namespace fleetor
