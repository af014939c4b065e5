#include "qt/device/queues.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QThread>
#include <QThreadPool>
#include <QTimerEvent>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <unordered_map>
#include <utility>

namespace fleetor {
namespace {

using TimerClock = std::chrono::steady_clock;

// Longest single arm of a timer; a longer delay is armed again until its moment comes.
constexpr double longestArmInMs = 24.0 * 3600.0 * 1000.0;

class TaskEvent final : public QEvent {
 public:
  explicit TaskEvent(Task work) : QEvent(eventType), task(std::move(work)) {}
  static const QEvent::Type eventType;
  Task task;
};

class DelayedTaskEvent final : public QEvent {
 public:
  DelayedTaskEvent(TimerClock::time_point moment, Task work)
      : QEvent(eventType), due(moment), task(std::move(work)) {}
  static const QEvent::Type eventType;
  TimerClock::time_point due;
  Task task;
};

const QEvent::Type TaskEvent::eventType = static_cast<QEvent::Type>(QEvent::registerEventType());
const QEvent::Type DelayedTaskEvent::eventType = static_cast<QEvent::Type>(QEvent::registerEventType());

}  // namespace

// Runs what is posted to it. What it has not run when it is destroyed goes with it: Qt removes the posted
// events of a dying object, and the delayed tasks are its own.
class QueuesMainLoop final : public QObject {
 public:
  bool event(QEvent* event) override {
    if (event->type() == TaskEvent::eventType) {
      static_cast<TaskEvent*>(event)->task();
      return true;
    }
    if (event->type() == DelayedTaskEvent::eventType) {
      auto* delayed = static_cast<DelayedTaskEvent*>(event);
      arm(delayed->due, std::move(delayed->task));
      return true;
    }
    return QObject::event(event);
  }

 protected:
  void timerEvent(QTimerEvent* event) override {
    killTimer(event->timerId());
    auto found = waiting_.find(event->timerId());
    if (found == waiting_.end()) return;
    Waiting waiting = std::move(found->second);
    waiting_.erase(found);
    if (TimerClock::now() < waiting.due) {
      arm(waiting.due, std::move(waiting.task));
    } else {
      waiting.task();
    }
  }

 private:
  struct Waiting {
    TimerClock::time_point due;
    Task task;
  };

  void arm(TimerClock::time_point due, Task task) {
    const double ms = std::chrono::duration<double, std::milli>(due - TimerClock::now()).count();
    const int wait = static_cast<int>(std::ceil(std::clamp(ms, 0.0, longestArmInMs)));
    waiting_.emplace(startTimer(wait, Qt::PreciseTimer), Waiting{due, std::move(task)});
  }

  std::unordered_map<int, Waiting> waiting_;
};

struct QtQueues::Parts {
  std::atomic<bool> closing = false;
  QueuesMainLoop loop;
  QThreadPool pool;
};

QtQueues::QtQueues() : parts_(std::make_unique<Parts>()) {
  // Building and mapping are short bursts of work; two threads keep one slow answer from holding up the next
  // request.
  parts_->pool.setMaxThreadCount(std::max(2, QThread::idealThreadCount()));
}

QtQueues::~QtQueues() {
  parts_->closing = true;
  parts_->pool.clear();
  parts_->pool.waitForDone();
}

// Never dropped here, on a thread that may not be the main one: what a task holds goes with the loop.
void QtQueues::main(Task task) {
  QCoreApplication::postEvent(&parts_->loop, new TaskEvent(std::move(task)));
}

void QtQueues::mainAfter(Seconds delay, Task task) {
  // A year is as good as never, and keeps the moment well inside the range of the clock.
  const Seconds bounded = delay.count() > 0 ? std::min(delay, Seconds(365.0 * 24 * 3600)) : Seconds(0);
  const auto due = TimerClock::now() + std::chrono::ceil<TimerClock::duration>(bounded);
  QCoreApplication::postEvent(&parts_->loop, new DelayedTaskEvent(due, std::move(task)));
}

void QtQueues::global(Task task) {
  if (!parts_->closing) parts_->pool.start(std::move(task));
}

}  // namespace fleetor
