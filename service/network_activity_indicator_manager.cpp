#include "service/network_activity_indicator_manager.h"

namespace fleetor {

void AFNetworkActivityIndicatorManager::setEnabled(bool enabled) {
  enabled_ = enabled;
  queues_.main([self = shared_from_this()] { self->update(); });
}

void AFNetworkActivityIndicatorManager::operationStarted() {
  ++running_;
  if (enabled_ && !visible_) queues_.main([self = shared_from_this()] { self->update(); });
}

void AFNetworkActivityIndicatorManager::operationEnded() {
  if (--running_ > 0) return;
  const unsigned drop = ++drops_;
  if (!enabled_) return;
  queues_.mainAfter(hideDelay, [self = shared_from_this(), drop] {
    if (drop == self->drops_) self->update();
  });
}

// Looks again after each change: an operation that started meanwhile may have seen the indicator still shown.
void AFNetworkActivityIndicatorManager::update() {
  while (true) {
    const bool visible = enabled_ && running_ > 0;
    if (visible == visible_) return;
    visible_ = visible;
    indicator_.setVisible(visible);
  }
}

}  // namespace fleetor
