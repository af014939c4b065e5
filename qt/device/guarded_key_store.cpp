#include "qt/device/guarded_key_store.h"

#include <condition_variable>
#include <cstdio>
#include <deque>
#include <future>
#include <mutex>
#include <thread>
#include <utility>

#include "qt/device/secret_service_key_store.h"

namespace fleetor {

// Runs jobs in order on a thread of its own. A job that never ends is left behind with what it holds.
class GuardedKeyStore::Worker {
 public:
  Worker() : shared_(std::make_shared<Shared>()), ended_(shared_->ended.get_future()) {
    thread_ = std::thread([shared = shared_] { run(*shared); });
  }

  void post(std::function<void()> job) {
    const std::lock_guard lock(shared_->mutex);
    shared_->jobs.push_back(std::move(job));
    shared_->wake.notify_one();
  }

  /// Waits no longer than `bound` for the job at hand.
  void stop(Seconds bound) {
    {
      const std::lock_guard lock(shared_->mutex);
      shared_->jobs.clear();
      shared_->stopping = true;
      shared_->wake.notify_one();
    }
    if (ended_.wait_for(bound) == std::future_status::ready)
      thread_.join();
    else
      thread_.detach();
  }

 private:
  struct Shared {
    std::mutex mutex;
    std::condition_variable wake;
    std::deque<std::function<void()>> jobs;
    bool stopping = false;
    std::promise<void> ended;
  };

  static void run(Shared& shared) {
    std::unique_lock lock(shared.mutex);
    while (!shared.stopping) {
      if (shared.jobs.empty()) {
        shared.wake.wait(lock);
        continue;
      }
      const auto job = std::move(shared.jobs.front());
      shared.jobs.pop_front();
      lock.unlock();
      job();
      lock.lock();
    }
    shared.ended.set_value();
  }

  std::shared_ptr<Shared> shared_;
  std::future<void> ended_;
  std::thread thread_;
};

GuardedKeyStore::GuardedKeyStore(std::shared_ptr<SystemKeyStore> system, Seconds bound)
    : system_(std::move(system)), bound_(bound), worker_(std::make_unique<Worker>()) {
  worker_->post([store = system_] { store->open(); });
}

GuardedKeyStore::~GuardedKeyStore() {
  if (!worker_) return;
  system_->cancel();
  worker_->stop(bound_);
}

template <class Result>
std::optional<Result> GuardedKeyStore::ask(std::function<Result(KeyStore&)> call) {
  if (!worker_) return std::nullopt;
  struct Answer {
    Result result{};
    std::string problem;
  };
  auto promise = std::make_shared<std::promise<Answer>>();
  auto future = promise->get_future();
  worker_->post([store = system_, call = std::move(call), promise] {
    Answer answer;
    answer.problem = store->problem();  // of opening it
    if (answer.problem.empty()) {
      answer.result = call(*store);
      answer.problem = store->problem();
    }
    promise->set_value(std::move(answer));
  });
  if (future.wait_for(bound_) != std::future_status::ready) {
    fallBack("it does not answer");
    return std::nullopt;
  }
  Answer answer = future.get();
  if (!answer.problem.empty()) {
    fallBack(answer.problem);
    return std::nullopt;
  }
  return std::move(answer.result);
}

void GuardedKeyStore::fallBack(const std::string& reason) {
  system_->cancel();
  worker_->stop(Seconds(0));
  worker_.reset();
  std::fprintf(stderr,
               "fleetor: the system's key store cannot be used (%s); the sign-in is kept in memory until the "
               "client ends\n",
               reason.c_str());
}

std::optional<SecItem> GuardedKeyStore::copyMatching(const SecItem& query) {
  // The value is always asked for, to have it when the system's store fails later.
  SecItem whole = query;
  whole[sec::returnData] = "1";
  auto found = ask<std::optional<SecItem>>([whole](KeyStore& store) { return store.copyMatching(whole); });
  if (!found) return memory_.copyMatching(query);
  memory_.remove(query);
  if (!*found) return std::nullopt;
  memory_.add(**found);
  if (!query.contains(sec::returnData)) (*found)->erase(sec::valueData);
  return *found;
}

bool GuardedKeyStore::add(const SecItem& item) {
  const auto done = ask<bool>([item](KeyStore& store) { return store.add(item); });
  if (done && !*done) return false;
  return memory_.add(item);
}

bool GuardedKeyStore::update(const SecItem& query, const SecItem& changes) {
  const auto done = ask<bool>([query, changes](KeyStore& store) { return store.update(query, changes); });
  if (done && !*done) return false;
  return memory_.update(query, changes) || done.value_or(false);
}

bool GuardedKeyStore::remove(const SecItem& query) {
  const auto done = ask<bool>([query](KeyStore& store) { return store.remove(query); });
  if (done && !*done) return false;
  return memory_.remove(query) || done.value_or(false);
}

std::unique_ptr<KeyStore> makeKeyStore() {
  return std::make_unique<GuardedKeyStore>(std::make_shared<SecretServiceKeyStore>(), Seconds(3));
}

}  // namespace fleetor
