#include "service/network_activity_indicator_manager.h"

#include <utility>

namespace fleetor {

void AFNetworkActivityIndicatorManager::setEnabled(bool enabled) {
  queues_.main([self = shared_from_this(), enabled] {
    self->enabled_ = enabled;
    self->show(enabled && self->running_ > 0);
  });
}

void AFNetworkActivityIndicatorManager::operationStarted() {
  count(+1);
}

void AFNetworkActivityIndicatorManager::operationEnded() {
  count(-1);
}

void AFNetworkActivityIndicatorManager::count(int change) {
  queues_.main([self = shared_from_this(), change] {
    self->running_ += change;
    const unsigned generation = ++self->generation_;
    if (self->running_ > 0) return self->show(self->enabled_);
    if (!self->visible_) return;
    self->queues_.mainAfter(hideDelay, [self, generation] {
      if (generation == self->generation_) self->show(false);
    });
  });
}

void AFNetworkActivityIndicatorManager::show(bool visible) {
  if (visible == visible_) return;
  visible_ = visible;
  indicator_.setVisible(visible);
}

}  // namespace fleetor
