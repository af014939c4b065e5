#pragma once

#include <vector>

#include "platform/key_store.h"

namespace fleetor {

/// A key store that forgets everything when it is destroyed. Main thread only.
class TransientKeyStore final : public KeyStore {
 public:
  std::optional<SecItem> copyMatching(const SecItem& query) override;
  bool add(const SecItem& item) override;
  bool update(const SecItem& query, const SecItem& changes) override;
  bool remove(const SecItem& query) override;
  void listen(Queues*, std::function<void(KeyStoreEvent)>) override {}  ///< there are no events

  const std::vector<SecItem>& items() const { return items_; }

 private:
  SecItem* find(const SecItem& query);

  std::vector<SecItem> items_;
};

}  // namespace fleetor
