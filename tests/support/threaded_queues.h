#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "platform/queues.h"

namespace fleetor::test {

/// Real threads: the global queue is a pool, the main queue runs on the thread that calls `runMainUntil`. For
/// the few tests that look for races.
class ThreadedQueues final : public Queues {
 public:
  explicit ThreadedQueues(int threads = 4) {
    for (int i = 0; i < threads; ++i)
      pool_.emplace_back([this] { work(); });
  }
  ~ThreadedQueues() override {
    {
      const std::lock_guard lock(mutex_);
      stopping_ = true;
    }
    changed_.notify_all();
    for (auto& each : pool_)
      each.join();
  }

  void main(Task task) override { mainAfter(Seconds(0), std::move(task)); }
  void mainAfter(Seconds delay, Task task) override {
    const auto due = Steady::now() + std::chrono::duration_cast<Steady::duration>(delay);
    {
      const std::lock_guard lock(mutex_);
      main_.emplace(due, std::move(task));
    }
    changed_.notify_all();
  }
  void global(Task task) override {
    {
      const std::lock_guard lock(mutex_);
      global_.push_back(std::move(task));
    }
    changed_.notify_all();
  }

  /// Runs main tasks until `done`, which is asked after each of them; false when that took too long.
  bool runMainUntil(const std::function<bool()>& done, Seconds limit = Seconds(60)) {
    const auto end = Steady::now() + std::chrono::duration_cast<Steady::duration>(limit);
    while (!done()) {
      std::unique_lock lock(mutex_);
      const auto due = main_.empty() ? end : std::min(end, main_.begin()->first);
      if (Steady::now() < due) changed_.wait_until(lock, due);
      if (Steady::now() >= end) return false;
      if (main_.empty() || main_.begin()->first > Steady::now()) continue;
      auto next = main_.extract(main_.begin());
      lock.unlock();
      next.mapped()();
    }
    return true;
  }

 private:
  using Steady = std::chrono::steady_clock;

  void work() {
    while (true) {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [this] { return stopping_ || !global_.empty(); });
      if (stopping_) return;
      Task task = std::move(global_.front());
      global_.pop_front();
      lock.unlock();
      task();
    }
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  bool stopping_ = false;
  std::multimap<Steady::time_point, Task> main_;
  std::deque<Task> global_;
  std::vector<std::thread> pool_;
};

}  // namespace fleetor::test
