#include "ui/wake_up.h"

#include <algorithm>
#include <utility>

namespace fleetor {

WakeUp::WakeUp(Queues& queues, const Clock& clock, std::function<void()> wake, Seconds apart)
    : queues_(queues), clock_(clock), wake_(std::move(wake)), apart_(apart) {}

// A delayed call cannot be cancelled: the one that is not waited for any more does nothing.
void WakeUp::after(Seconds delay) {
  constexpr Seconds rounding{0.001};
  const Seconds now = clock_.uptime();
  const Seconds at = std::max(now + delay, last_ ? *last_ + apart_ : now) + rounding;
  if (at_ && *at_ <= at) return;
  at_ = at;
  queues_.mainAfter(at - now, [this, at, alive = std::weak_ptr(alive_)] {
    if (alive.expired() || at_ != at) return;
    at_.reset();
    last_ = at;
    wake_();
  });
}

}  // namespace fleetor
