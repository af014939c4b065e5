#include "kept/in_turn.h"

#include <utility>

namespace fleetor {

void InTurn::run(Task task) {
  const std::lock_guard lock(mutex_);
  if (isFinished_) return;
  tasks_.push_back(std::move(task));
  queues_.global([self = shared_from_this()] { self->runNext(); });
}

// There is one call for each task; one that comes while another task runs leaves its own to that call.
void InTurn::runNext() {
  std::unique_lock lock(mutex_);
  if (isRunning_) return;
  isRunning_ = true;
  while (!tasks_.empty() && !isFinished_) {
    const Task task = std::move(tasks_.front());
    tasks_.pop_front();
    lock.unlock();
    task();
    lock.lock();
  }
  isRunning_ = false;
  rested_.notify_all();
}

void InTurn::finish() {
  std::unique_lock lock(mutex_);
  isFinished_ = true;
  rested_.wait(lock, [this] { return !isRunning_; });
  for (; !tasks_.empty(); tasks_.pop_front())
    tasks_.front()();
}

}  // namespace fleetor
