#include "service/network_activity_indicator_manager.h"

namespace fleetor {

std::shared_ptr<AFNetworkActivityIndicatorManager> AFNetworkActivityIndicatorManager::install(
    Queues& queues, NetworkActivityIndicator& indicator) {
  shared_.reset(new AFNetworkActivityIndicatorManager(queues, indicator));
  return shared_;
}

void AFNetworkActivityIndicatorManager::setEnabled(bool enabled) {
  queues_.main([self = shared_from_this(), enabled] {
    self->enabled_ = enabled;
    self->update();
  });
}

void AFNetworkActivityIndicatorManager::operationStarted() {
  queues_.main([self = shared_from_this()] {
    ++self->running_;
    self->update();
  });
}

void AFNetworkActivityIndicatorManager::operationEnded() {
  queues_.main([self = shared_from_this()] {
    --self->running_;
    self->queues_.mainAfter(hideDelay, [self, end = ++self->ended_] {
      if (end == self->ended_) self->update();
    });
  });
}

void AFNetworkActivityIndicatorManager::update() {
  const bool visible = enabled_ && running_ > 0;
  if (visible == visible_) return;
  visible_ = visible;
  indicator_.setVisible(visible);
}

}  // namespace fleetor
