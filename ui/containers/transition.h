#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/queues.h"

namespace fleetor {

class ViewController;

enum class TransitionKind { push, pop, reveal, exchange, present, dismiss };

/// How long an animated change takes.
namespace duration {
inline constexpr Seconds navigation{0.35};
inline constexpr Seconds modal{0.4};
inline constexpr Seconds reveal{0.3};
inline constexpr Seconds page{0.3};
inline constexpr Seconds keyboard{0.25};
inline constexpr Seconds toastFadeIn{0.2};
}  // namespace duration

/// An animated change of what is on screen, for adapters. A presentation names only the presented screens.
struct Transition {
  TransitionKind kind = TransitionKind::push;
  Seconds duration{0};
  std::vector<std::shared_ptr<ViewController>> outgoing;
  std::vector<std::shared_ptr<ViewController>> incoming;
};

/// Runs one transition at a time. Main thread only. When the slot is destroyed, the `finish` of a running
/// transition is not called.
class TransitionSlot {
 public:
  /// Runs the transition and calls `finish` at its end, or before this returns when not animated. No other
  /// transition may be running.
  void run(Queues& queues, Transition transition, bool animated, std::function<void()> finish);

  /// Ends a running transition now.
  void complete();

  const Transition* running() const { return running_ ? &running_->transition : nullptr; }

 private:
  struct Run {
    Transition transition;
    std::function<void()> finish;
  };
  std::shared_ptr<Run> running_;
};

}  // namespace fleetor
