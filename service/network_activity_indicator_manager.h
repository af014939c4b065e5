#pragma once

#include <memory>

#include "platform/network.h"
#include "platform/queues.h"

namespace fleetor {

/// Counts the operations that are running and shows the platform's activity indicator while there are any,
/// and for another 0.17 seconds, so that it does not flicker between two requests.
class AFNetworkActivityIndicatorManager
    : public std::enable_shared_from_this<AFNetworkActivityIndicatorManager> {
 public:
  static constexpr Seconds hideDelay{0.17};

  AFNetworkActivityIndicatorManager(Queues& queues, NetworkActivityIndicator& indicator)
      : queues_(queues), indicator_(indicator) {}

  /// The manager of the request layer; nothing before API::install().
  static const std::shared_ptr<AFNetworkActivityIndicatorManager>& sharedManager();

  void setEnabled(bool enabled);  ///< any thread, like the two below
  void operationStarted();
  void operationEnded();

 private:
  void count(int change);
  void show(bool visible);

  // Main thread only.
  Queues& queues_;
  NetworkActivityIndicator& indicator_;
  bool enabled_ = false;
  bool visible_ = false;
  int running_ = 0;
  unsigned generation_ = 0;  // tells a late hiding from the current one
};

}  // namespace fleetor
