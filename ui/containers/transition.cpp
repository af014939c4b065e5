#include "ui/containers/transition.h"

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
    // Only this slot owns the run: if it is alive, so is the slot, and it is the running one.
    if (!run.expired()) complete();
  });
}

void TransitionSlot::complete() {
  if (const auto run = std::exchange(running_, nullptr)) run->finish();
}

}  // namespace fleetor
