#pragma once

#include <chrono>
#include <cstdint>
#include <ctime>
#include <queue>
#include <string>
#include <utility>

#include "platform/clock.h"
#include "platform/queues.h"

namespace fleetor::test {

/// Both queues and the clock on one thread under virtual time: a heap of tasks by (due time, sequence).
/// Tasks run and time passes only when the test asks for it. The time zone is UTC.
class VirtualQueues final : public Queues, public Clock {
 public:
  using Duration = std::chrono::nanoseconds;

  /// Tuesday 10 March 2026, 08:00 UTC, unless the test wants another morning.
  explicit VirtualQueues(Date start = std::chrono::sys_days{std::chrono::year{2026} / 3 / 10} +
                                      std::chrono::hours{8})
      : start_(start) {}

  void main(Task task) override { push(elapsed_, std::move(task)); }
  void global(Task task) override { push(elapsed_, std::move(task)); }
  void mainAfter(Seconds delay, Task task) override {
    push(elapsed_ + std::chrono::duration_cast<Duration>(delay), std::move(task));
  }

  /// Runs everything that is due now, and what that queues in turn. Time stands still.
  void runUntilIdle() { runUntil(elapsed_); }

  /// Lets time pass, running each task at its own moment.
  void advance(Seconds time) { runUntil(elapsed_ + std::chrono::duration_cast<Duration>(time)); }

  Date now() const override { return start_ + std::chrono::duration_cast<Date::duration>(elapsed_); }

  std::chrono::duration<double> uptime() const override { return elapsed_; }

  std::string day(Date moment) const override { return written(moment, "%Y-%m-%d"); }
  std::string timeOfDay(Date moment) const override { return written(moment, "%H:%M"); }

  std::string today() const { return day(now()); }
  Seconds elapsed() const { return elapsed_; }

  /// Tasks that wait for a later moment or for runUntilIdle().
  std::size_t waiting() const { return tasks_.size(); }

 private:
  static std::string written(Date moment, const char* format) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(moment);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    char text[32];
    return {text, std::strftime(text, sizeof text, format, &parts)};
  }

  struct Entry {
    Duration due;
    std::uint64_t sequence;
    Task task;
    bool operator<(const Entry& other) const {
      return std::pair(other.due, other.sequence) <
             std::pair(due, sequence);  // the heap's top is the earliest
    }
  };

  void push(Duration due, Task task) { tasks_.push({due, sequence_++, std::move(task)}); }

  void runUntil(Duration end) {
    while (!tasks_.empty() && tasks_.top().due <= end) {
      Entry next = tasks_.top();
      tasks_.pop();
      if (next.due > elapsed_) elapsed_ = next.due;
      next.task();
    }
    elapsed_ = end;
  }

  Date start_;
  Duration elapsed_{0};
  std::uint64_t sequence_ = 0;
  std::priority_queue<Entry> tasks_;
};

}  // namespace fleetor::test
