#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "service/keychain_item_wrapper.h"
#include "support/threaded_queues.h"

namespace fleetor {

/// One run of the client, as its key store sees it.
class KeyStoreRun {
 public:
  explicit KeyStoreRun(std::unique_ptr<KeyStore> keyStore) : store(std::move(keyStore)) {
    store->listen(&queues_, [this](KeyStoreNews each) { news_.push_back(each); });
  }
  ~KeyStoreRun() { store->listen(nullptr, {}); }

  KeyStoreRun(const KeyStoreRun&) = delete;
  KeyStoreRun& operator=(const KeyStoreRun&) = delete;

  std::string token() { return keychain().objectForKey(sec::valueData).value(); }
  void signIn(const std::string& token) { keychain().setObject(token, sec::valueData); }
  void signOut() { keychain().resetKeychainItem(); }

  std::vector<KeyStoreNews> awaitNews() {
    queues_.runMainUntil([this] { return !news_.empty(); }, Seconds(20));
    return std::exchange(news_, {});
  }
  /// What has been reported up to now.
  std::vector<KeyStoreNews> takeNews() {
    bool reached = false;
    queues_.main([&reached] { reached = true; });
    queues_.runMainUntil([&reached] { return reached; });
    return std::exchange(news_, {});
  }

 private:
  KeychainItemWrapper keychain() {
    auto wrapper = KeychainItemWrapper::initWithIdentifier(*store, "Fleetor_Keychain", "TEST.fleetor");
    wrapper.setObject(sec::accessibleAlwaysThisDeviceOnly, sec::accessible);
    return wrapper;
  }

  test::ThreadedQueues queues_{1};
  std::vector<KeyStoreNews> news_;

 public:
  std::unique_ptr<KeyStore> store;  ///< goes first
};

}  // namespace fleetor
