#pragma once

#include <atomic>
#include <memory>

#include "platform/network.h"
#include "platform/queues.h"

namespace fleetor {

/// Counts the operations that are running and shows the platform's activity indicator while there are any,
/// and for another 0.17 seconds, so that it does not flicker between two requests. Every operation may be
/// called from any thread; the main thread is bothered only when something may have to change.
class AFNetworkActivityIndicatorManager
    : public std::enable_shared_from_this<AFNetworkActivityIndicatorManager> {
 public:
  static constexpr Seconds hideDelay{0.17};

  AFNetworkActivityIndicatorManager(Queues& queues, NetworkActivityIndicator& indicator)
      : queues_(queues), indicator_(indicator) {}

  /// The manager of the request layer; nothing before API::install().
  static const std::shared_ptr<AFNetworkActivityIndicatorManager>& sharedManager();

  void setEnabled(bool enabled);
  void operationStarted();
  void operationEnded();

 private:
  void update();

  Queues& queues_;
  NetworkActivityIndicator& indicator_;
  std::atomic<int> running_ = 0;
  std::atomic<unsigned> drops_ =
      0;  // how often the count has fallen to zero: tells a late hiding from the current one
  std::atomic<bool> enabled_ = false;
  std::atomic<bool> visible_ = false;  // changed on the main thread only
};

}  // namespace fleetor
