#include "qt/device/queues.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>
#include <atomic>
#include <future>
#include <latch>
#include <thread>

#include "run_until.h"
#include "support/testing.h"

namespace fleetor {
namespace {

using namespace std::chrono_literals;

TEST(QtQueues, RunsMainTasksOnTheMainThreadInTheOrderOfEachSender) {
  QtQueues queues;
  std::vector<std::pair<int, int>> seen;
  bool elsewhere = false;
  {
    std::vector<std::jthread> senders;
    senders.reserve(3);
    for (int sender = 0; sender < 3; sender++)
      senders.emplace_back([&, sender] {
        for (int i = 0; i < 1000; i++)
          queues.main([&, sender, i] {
            elsewhere |= QThread::currentThread() != qApp->thread();
            seen.emplace_back(sender, i);
          });
      });
  }
  EXPECT_TRUE(seen.empty()) << "nothing runs inline";
  runUntil([&] { return seen.size() == 3000; });
  EXPECT_FALSE(elsewhere);
  int next[3] = {0, 0, 0};
  for (const auto& [sender, i] : seen)
    ASSERT_EQ(next[sender]++, i);
}

TEST(QtQueues, RunsDelayedTasksInTheOrderOfTheirMomentsAndNeverEarly) {
  QtQueues queues;
  std::vector<std::string> seen;
  const auto began = std::chrono::steady_clock::now();
  const auto later = [&](Seconds delay, const std::string& name) {
    queues.mainAfter(delay, [&, delay, name] {
      EXPECT_GE(std::chrono::steady_clock::now() - began, delay) << name;
      seen.push_back(name);
    });
  };
  std::jthread([&] {
    later(0.0605s, "third");
    later(0.0201s, "second");
    later(-1s, "first");
    later(Seconds(1e300), "never");
  }).join();
  EXPECT_TRUE(seen.empty());
  runUntil([&] { return seen.size() == 3; });
  EXPECT_THAT(seen, ElementsAre("first", "second", "third"));
}

TEST(QtQueues, RunsGlobalTasksSideBySide) {
  QtQueues queues;
  std::promise<void> first, second;
  std::promise<bool> met;
  queues.global([&] {
    first.set_value();
    met.set_value(second.get_future().wait_for(5s) == std::future_status::ready);
  });
  queues.global([&] {
    first.get_future().wait_for(5s);
    second.set_value();
  });
  EXPECT_TRUE(met.get_future().get());
}

TEST(QtQueues, DropsWaitingTasksAndWaitsForRunningOnesWhenDestroyed) {
  std::atomic<int> ran = 0;
  std::atomic<int> ended = 0;
  auto captured = std::make_shared<int>();
  std::thread::id releasedOn;
  std::shared_ptr<void> screen(nullptr, [&](void*) { releasedOn = std::this_thread::get_id(); });
  std::promise<void> dropping;
  const std::shared_future<void> dropped = dropping.get_future().share();
  std::shared_ptr<void> waiting(nullptr, [&](void*) { dropping.set_value(); });
  const int threads = std::max(2, QThread::idealThreadCount());
  std::latch running(threads);
  {
    QtQueues queues;
    const auto never = [&ran, captured] { ran++; };
    queues.main(never);
    queues.mainAfter(0s, never);
    QCoreApplication::processEvents();  // arms what is delayed, runs what is not
    ran = 0;
    queues.main(never);
    queues.mainAfter(0.001s, never);
    queues.mainAfter(1h, never);
    for (int i = 0; i < threads; ++i)
      queues.global([&, own = i == 0 ? std::move(screen) : nullptr]() mutable {
        running.count_down();
        EXPECT_EQ(dropped.wait_for(10s), std::future_status::ready);
        queues.main([own = std::move(own)] {});
        queues.main(never);
        queues.global(never);
        ++ended;
      });
    running.wait();
    queues.global([never, held = std::move(waiting)] { never(); });
  }
  EXPECT_EQ(ended, threads);
  EXPECT_EQ(releasedOn, std::this_thread::get_id());
  bool isLater = false;
  QTimer::singleShot(5ms, [&] { isLater = true; });  // behind the one that was to come after 1 ms
  runUntil([&] { return isLater; });
  EXPECT_EQ(ran, 0);
  EXPECT_EQ(captured.use_count(), 1) << "what the tasks held is released with them";
}

}  // namespace
}  // namespace fleetor
