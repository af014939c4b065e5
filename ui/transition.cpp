#include "ui/transition.h"

#include <utility>

namespace fleetor {

void TransitionSlot::run(Queues& queues, Transition transition, bool animated, std::function<void()> finish) {
  if (!animated) {
    finish();
    return;
  }
  const Seconds length = transition.duration;
  running_ = std::make_shared<Run>(Run{std::move(transition), std::move(finish)});
  queues.mainAfter(length, [this, run = std::weak_ptr(running_)] {
    // The run belongs to this slot alone: while it is alive and still the running one, so is the slot.
    const auto alive = run.lock();
    if (alive && alive == running_) complete();
  });
}

void TransitionSlot::complete() {
  if (const auto run = std::exchange(running_, nullptr)) run->finish();
}

}  // namespace fleetor
