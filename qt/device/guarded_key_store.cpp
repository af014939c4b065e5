#include "qt/device/guarded_key_store.h"

#include <QStandardPaths>
#include <QUuid>
#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <iterator>
#include <mutex>
#include <thread>
#include <utility>

#include "qt/device/key_store_mark.h"
#include "qt/device/secret_service_key_store.h"

namespace fleetor {
namespace {

// How long the destructor waits for what is not urgent: a removal, the end of a cancelled call.
constexpr Seconds shortWait{0.5};

std::chrono::steady_clock::time_point inside(Seconds time) {
  return std::chrono::steady_clock::now() +
         std::chrono::duration_cast<std::chrono::steady_clock::duration>(time);
}

constexpr const char* noAnswer = "it does not answer";

void report(const std::string& problem, const char* consequence) {
  std::fprintf(stderr, "fleetor: the system's key store cannot be used (%s); %s\n", problem.c_str(),
               consequence);
}

std::vector<SecItem> worthKeeping(const std::vector<SecItem>& items) {
  std::vector<SecItem> kept;
  std::copy_if(items.begin(), items.end(), std::back_inserter(kept), [](const SecItem& item) {
    const auto value = item.find(sec::valueData);
    return value != item.end() && !value->second.empty();
  });
  return kept;
}

}  // namespace

// Writes the latest change to the system's store, on a separate thread. When the store never answers, thread
// and worker are abandoned.
class GuardedKeyStore::Worker : public std::enable_shared_from_this<Worker> {
 public:
  struct Change {
    unsigned number = 0;
    std::string mark;
    Items items;
  };

  Worker(GuardedKeyStore& keyStore, std::shared_ptr<SystemKeyStore> store, std::string markPath)
      : guard(&keyStore), system(std::move(store)), markFile(std::move(markPath)), stored(markFile.read()) {}

  void run() {
    readStoredItems();
    std::unique_lock lock(mutex);
    while (true) {
      changed.wait(lock, [this] { return stopping || wanted; });
      if (!wanted) break;
      const Change change = *std::exchange(wanted, std::nullopt);
      lock.unlock();
      carryOver(change);
      lock.lock();
      carriedOver = change.number;
    }
    ended = true;
    changed.notify_all();
  }

  void runOnMain(std::function<void(GuardedKeyStore&)> task, Seconds delay = Seconds(0)) {
    const std::lock_guard lock(mutex);
    if (!queues) return;
    queues->mainAfter(delay, [self = shared_from_this(), task = std::move(task)] {
      if (self->guard) task(*self->guard);
    });
  }

  bool isAsking() {
    const std::lock_guard lock(mutex);
    return asking;
  }

  GuardedKeyStore* guard;  ///< main thread only; nothing once it is gone
  const std::shared_ptr<SystemKeyStore> system;

  std::mutex mutex;  ///< of all below
  std::condition_variable changed;
  const KeyStoreMark markFile;
  const std::string stored;  ///< the mark of an earlier run's items
  std::optional<Items> found;
  bool hasRead = false;
  std::optional<Change> wanted;
  unsigned latest = 0;  ///< numbers of changes
  unsigned carriedOver = 0;
  unsigned givenUp = 0;  ///< this change was reported as not stored
  bool asking = false;
  bool stopping = false;
  bool ended = false;
  Queues* queues = nullptr;

 private:
  void readStoredItems() {
    if (!stored.empty()) {
      auto items = system->isUsable() ? system->items(stored) : std::nullopt;
      if (!items) {
        report(system->problem(), "nobody is signed in");
        answer(std::nullopt);
        if (unlock()) items = system->items(stored);
      }
      if (items) answer(std::move(items));
    }
    if (system->isUsable()) system->removeOthers(stored);
  }

  void answer(std::optional<Items> items) {
    {
      const std::lock_guard lock(mutex);
      found = std::move(items);
      hasRead = true;
      changed.notify_all();
    }
    runOnMain([](GuardedKeyStore& keyStore) { keyStore.takeLateItems(); });
  }

  bool unlock() {
    setAsking(true);
    const bool unlocked = system->unlock();
    setAsking(false);
    return unlocked && system->isUsable();
  }

  void setAsking(bool asks) {
    const std::lock_guard lock(mutex);
    asking = asks;
    changed.notify_all();
  }

  void carryOver(const Change& change) {
    if (change.items.empty()) {
      if (system->isUsable()) system->removeOthers({});
      return;
    }
    std::string problem;
    if ((system->isUsable() || unlock()) && system->store(change.items, change.mark)) {
      const bool marked = writeMark(change);
      if (!marked) problem = "its mark cannot be written";
      system->removeOthers(marked ? change.mark : std::string());
    } else {
      problem = system->problem();
    }
    runOnMain(
        [number = change.number, problem](GuardedKeyStore& keyStore) { keyStore.settle(number, problem); });
  }

  // Makes the stored items valid, unless they were replaced or given up meanwhile.
  bool writeMark(const Change& change) {
    const std::lock_guard lock(mutex);
    if (change.number != latest || change.number == givenUp) return false;
    if (markFile.write(change.mark)) return true;
    markFile.remove();
    return false;
  }
};

GuardedKeyStore::GuardedKeyStore(std::shared_ptr<SystemKeyStore> system, std::string markPath,
                                 Seconds patience, Seconds bound)
    : bound_(bound),
      waitsUntil_(inside(patience)),
      worker_(std::make_shared<Worker>(*this, std::move(system), std::move(markPath))) {
  if (!worker_->stored.empty()) reading_ = Reading::due;
  thread_ = std::thread([worker = worker_] { worker->run(); });
}

GuardedKeyStore::~GuardedKeyStore() {
  worker_->guard = nullptr;
  std::unique_lock lock(worker_->mutex);
  worker_->queues = nullptr;
  worker_->stopping = true;
  worker_->changed.notify_all();
  const auto hasEnded = [this] { return worker_->ended; };
  if (worker_->carriedOver != worker_->latest)
    worker_->changed.wait_until(lock, waitsUntil_, [&] { return hasEnded() || worker_->asking; });
  if (!hasEnded()) worker_->system->cancel();
  const bool ended = worker_->changed.wait_for(lock, shortWait, hasEnded);
  lock.unlock();
  if (ended)
    thread_.join();
  else
    thread_.detach();
}

void GuardedKeyStore::listen(Queues* queues, std::function<void(KeyStoreEvent)> listener) {
  listener_ = std::move(listener);
  const std::lock_guard lock(worker_->mutex);
  worker_->queues = queues;
}

void GuardedKeyStore::waitForStoredItems() {
  if (reading_ != Reading::due) return;
  {
    std::unique_lock lock(worker_->mutex);
    if (!worker_->changed.wait_until(lock, waitsUntil_, [this] { return worker_->hasRead; }))
      report(noAnswer, "nobody is signed in");
  }
  if (!takeStoredItems()) reading_ = Reading::late;
}

bool GuardedKeyStore::takeStoredItems() {
  const std::lock_guard lock(worker_->mutex);
  if (!worker_->found) return false;
  for (const SecItem& item : *worker_->found) {
    memory_.remove(item);
    memory_.add(item);
  }
  kept_ = worthKeeping(memory_.items());
  isStored_ = true;
  reading_ = Reading::done;
  return true;
}

// Calls before this one reported that there are no items.
void GuardedKeyStore::takeLateItems() {
  if (reading_ == Reading::late && takeStoredItems() && !kept_.empty() && listener_)
    listener_(KeyStoreEvent::readable);
}

void GuardedKeyStore::keep() {
  Items items = worthKeeping(memory_.items());
  if (items != kept_) storeAnew(std::move(items));
}

void GuardedKeyStore::storeAnew(Items items) {
  kept_ = std::move(items);
  isStored_ = false;
  reading_ = Reading::done;
  waitsUntil_ = inside(kept_.empty() ? shortWait : bound_);
  {
    const std::lock_guard lock(worker_->mutex);
    worker_->markFile.remove();
    worker_->latest = ++change_;
    worker_->wanted = Worker::Change{change_, QUuid::createUuid().toString().toStdString(), kept_};
    worker_->changed.notify_all();
  }
  if (!kept_.empty()) watch(change_);
}

// While the user is asked for a password, the store is not considered silent.
void GuardedKeyStore::watch(unsigned change) {
  worker_->runOnMain(
      [change](GuardedKeyStore& keyStore) {
        if (keyStore.worker_->isAsking())
          keyStore.watch(change);
        else
          keyStore.settle(change, noAnswer);
      },
      bound_);
}

void GuardedKeyStore::settle(unsigned change, const std::string& problem) {
  if (change != change_ || std::exchange(settled_, change) == change) return;
  isStored_ = problem.empty();
  if (isStored_) return;
  {
    const std::lock_guard lock(worker_->mutex);
    worker_->givenUp = change;
  }
  report(problem, "the sign-in is kept in memory until the client ends");
  if (listener_) listener_(KeyStoreEvent::notKept);
}

std::optional<SecItem> GuardedKeyStore::copyMatching(const SecItem& query) {
  waitForStoredItems();
  return memory_.copyMatching(query);
}

bool GuardedKeyStore::add(const SecItem& item) {
  waitForStoredItems();
  const bool done = memory_.add(item);
  keep();
  return done;
}

bool GuardedKeyStore::update(const SecItem& query, const SecItem& changes) {
  waitForStoredItems();
  const bool done = memory_.update(query, changes);
  keep();
  return done;
}

// Removes what could not be read as well.
bool GuardedKeyStore::remove(const SecItem& query) {
  waitForStoredItems();
  const bool done = memory_.remove(query);
  if (reading_ == Reading::late)
    storeAnew({});
  else
    keep();
  return done;
}

std::string keyStoreMarkPath() {
  return (QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + "/sign-in").toStdString();
}

std::unique_ptr<KeyStore> makeKeyStore(const std::string& markPath) {
  return std::make_unique<GuardedKeyStore>(std::make_shared<SecretServiceKeyStore>(), markPath, Seconds(0.5),
                                           Seconds(2));
}

}  // namespace fleetor
