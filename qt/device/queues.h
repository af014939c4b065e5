#pragma once

#include <memory>

#include "platform/queues.h"

namespace fleetor {

/// The queues on the event loop of the thread that makes this object (the main thread, where a
/// QCoreApplication lives) and a private thread pool. Tasks are taken from any thread until the destructor
/// begins.
///
/// The destructor runs on the main thread. It waits for the global tasks that are running, drops every other
/// task without running it, and drops whatever those running tasks still post. What a dropped main task holds
/// is released on the main thread.
class QtQueues final : public Queues {
 public:
  QtQueues();
  ~QtQueues() override;

  QtQueues(const QtQueues&) = delete;
  QtQueues& operator=(const QtQueues&) = delete;

  void main(Task task) override;
  void mainAfter(Seconds delay, Task task) override;
  void global(Task task) override;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace fleetor
