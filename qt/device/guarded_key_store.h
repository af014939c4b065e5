#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/queues.h"
#include "qt/device/transient_key_store.h"

namespace fleetor {

/// A key store of the system, which may be missing, locked, or wait for a person who is not there. Everything
/// but `cancel` runs on one thread, a worker.
class SystemKeyStore : public KeyStore {
 public:
  /// Finds out whether the store can be used; called once, before everything else.
  virtual void open() = 0;

  /// Why the last call could not be carried out, in a few words; empty when it could (finding nothing is no
  /// problem).
  virtual const std::string& problem() const = 0;

  /// Ends the call that is waiting, if it can, and every later one. Any thread.
  virtual void cancel() = 0;
};

/// Stands between the client and the system's key store, so that no call takes longer than `bound`. As soon
/// as the system's store does not answer in time or cannot carry out a call, this one takes its place with
/// what it has seen of it so far, in memory only, for the rest of its life, and says so in one line on
/// standard error. Main thread only; calls to the system's store run on a worker thread, which begins with
/// opening it.
class GuardedKeyStore final : public KeyStore {
 public:
  GuardedKeyStore(std::shared_ptr<SystemKeyStore> system, Seconds bound);
  ~GuardedKeyStore() override;

  GuardedKeyStore(const GuardedKeyStore&) = delete;
  GuardedKeyStore& operator=(const GuardedKeyStore&) = delete;

  std::optional<SecItem> copyMatching(const SecItem& query) override;
  bool add(const SecItem& item) override;
  bool update(const SecItem& query, const SecItem& changes) override;
  bool remove(const SecItem& query) override;

 private:
  class Worker;

  template <class Result>
  std::optional<Result> ask(std::function<Result(KeyStore&)> call);
  void fallBack(const std::string& reason);

  std::shared_ptr<SystemKeyStore> system_;
  Seconds bound_;
  std::unique_ptr<Worker> worker_;  ///< nothing once memory has taken over
  TransientKeyStore memory_;        ///< the client's items as they are known to be in the system's store
};

/// The key store of this machine: the Secret Service where there is a usable one, else one in memory. Returns
/// at once; the first call may take a few seconds.
std::unique_ptr<KeyStore> makeKeyStore();

}  // namespace fleetor
