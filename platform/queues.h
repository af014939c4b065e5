#pragma once

#include <chrono>
#include <functional>

namespace fleetor {

using Task = std::function<void()>;
using Seconds = std::chrono::duration<double>;

/// The two places where code runs. Every operation may be called from any thread, returns at once and never
/// runs the task inline. A task runs exactly once, unless the queues are destroyed first: then it is dropped
/// without running. Tasks must not throw.
class Queues {
 public:
  virtual ~Queues() = default;

  /// Runs the task on the main thread, after all main tasks queued before it.
  virtual void main(Task task) = 0;

  /// Runs the task on the main thread, no sooner than `delay` from now. It cannot be cancelled.
  virtual void mainAfter(Seconds delay, Task task) = 0;

  /// Runs the task on some thread of the global concurrent queue; tasks may overtake each other.
  virtual void global(Task task) = 0;
};

}  // namespace fleetor
