#pragma once

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

#include "platform/queues.h"

namespace fleetor {

/// Runs tasks on the global queue, one after the other in their order. Any thread.
class InTurn : public std::enable_shared_from_this<InTurn> {
 public:
  explicit InTurn(Queues& queues) : queues_(queues) {}

  void run(Task task);

  /// Waits for the task that is running and runs the others on this thread. Later ones are dropped, and the
  /// queues are not used any more.
  void finish();

 private:
  void runNext();

  Queues& queues_;
  std::mutex mutex_;  ///< of all below
  std::condition_variable rested_;
  std::deque<Task> tasks_;
  bool isRunning_ = false;
  bool isFinished_ = false;
};

}  // namespace fleetor
