#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/queues.h"
#include "platform/transient_key_store.h"

namespace fleetor {

/// A key store of the system, which may be missing, locked, or waiting for a user who is away. It keeps
/// items under a mark, a text that stands beside each. Everything but `cancel` runs on one thread, a worker.
class SystemKeyStore {
 public:
  virtual ~SystemKeyStore() = default;

  virtual bool isUsable() = 0;  ///< present and unlocked; never prompts
  virtual bool unlock() = 0;    ///< prompts the user and waits for the answer

  /// These need a store that is usable.
  virtual std::optional<std::vector<SecItem>> items(const std::string& mark) = 0;  ///< nothing: not readable
  virtual bool store(const std::vector<SecItem>& items, const std::string& mark) = 0;
  virtual bool removeOthers(const std::string& mark) = 0;  ///< removes all other items; no mark: all

  virtual std::string problem() const = 0;  ///< why the last call failed, in a few words

  /// Ends the call that is waiting, if it can, and every later one. Any thread.
  virtual void cancel() = 0;
};

/// Stands between the client and the system's key store, so that the main thread does not wait for that. The
/// client's items are in memory, where every call reads and changes them, and a worker carries the changes
/// over. Only two calls wait: the first one for items that an earlier run has stored, until `patience` has
/// passed since the start, and the destructor for the last sign-in, until `bound` has passed since that.
/// Items that come later, and a sign-in that is not stored by then, are reported as events.
///
/// The items are stored under a random mark, whose name is in the file `markPath` (KeyStoreMark) as long as
/// exactly these are the client's items. A change removes the file before anything else, and the worker
/// writes it anew once the system's store has taken what was changed. So items that were removed or replaced
/// are gone at the next start, whatever the system's store did meanwhile and wherever the client was
/// interrupted. What is still in the store under another mark is removed when the store can be used.
///
/// When there are items to be read or to be stored and the store is locked, the worker has the system ask for
/// its password. Items without value data are not stored. Main thread only.
class GuardedKeyStore final : public KeyStore {
 public:
  GuardedKeyStore(std::shared_ptr<SystemKeyStore> system, std::string markPath, Seconds patience,
                  Seconds bound);
  ~GuardedKeyStore() override;

  GuardedKeyStore(const GuardedKeyStore&) = delete;
  GuardedKeyStore& operator=(const GuardedKeyStore&) = delete;

  std::optional<SecItem> copyMatching(const SecItem& query) override;
  bool add(const SecItem& item) override;
  bool update(const SecItem& query, const SecItem& changes) override;
  bool remove(const SecItem& query) override;
  bool isKept() const override { return isStored_ && !kept_.empty(); }
  void listen(Queues* queues, std::function<void(KeyStoreEvent)> listener) override;

 private:
  class Worker;
  using Items = std::vector<SecItem>;
  using Clock = std::chrono::steady_clock;

  void waitForStoredItems();
  bool takeStoredItems();
  void takeLateItems();
  void keep();
  void storeAnew(Items items);
  void watch(unsigned change);
  void settle(unsigned change, const std::string& problem);

  Seconds bound_;
  Clock::time_point waitsUntil_;
  std::shared_ptr<Worker> worker_;
  std::thread thread_;
  TransientKeyStore memory_;
  Items kept_;  ///< what the system's store has, or is to have
  enum class Reading { due, late, done } reading_ = Reading::done;
  bool isStored_ = false;  ///< the system's store is known to have that
  unsigned change_ = 0;    ///< number of the last change
  unsigned settled_ = 0;   ///< the last change whose outcome is known
  std::function<void(KeyStoreEvent)> listener_;
};

/// The file that names this client's items in the key store; the names of organisation and application must
/// have been set by then.
std::string keyStoreMarkPath();

/// The key store of this machine: the Secret Service where there is a usable one, else one in memory. Returns
/// at once.
std::unique_ptr<KeyStore> makeKeyStore(const std::string& markPath);

}  // namespace fleetor
