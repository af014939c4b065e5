#include "ui/wake_up.h"

#include <utility>

namespace fleetor {

WakeUp::WakeUp(Queues& queues, const Clock& clock, std::function<void()> wake)
    : queues_(queues), clock_(clock), wake_(std::move(wake)) {}

// A delayed call cannot be cancelled: the one that is not waited for any more does nothing.
void WakeUp::after(Seconds delay) {
  constexpr Seconds rounding{0.001};
  const Seconds at = clock_.uptime() + delay + rounding;
  if (at_ && *at_ <= at) return;
  at_ = at;
  queues_.mainAfter(delay + rounding, [this, at, alive = std::weak_ptr(alive_)] {
    if (alive.expired() || at_ != at) return;
    at_.reset();
    wake_();
  });
}

}  // namespace fleetor
