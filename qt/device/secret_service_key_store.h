#pragma once

#include <string>

#include "qt/device/guarded_key_store.h"

namespace fleetor {

/// The desktop's Secret Service. An item is kept in the default keyring; its value is the secret, its other
/// attributes are the item's. Every call fails while the default keyring is locked or missing: a locked one
/// would otherwise look empty. It never asks for a prompt, though the service may show one all the same and
/// keep a call waiting.
class SecretServiceKeyStore final : public SystemKeyStore {
 public:
  SecretServiceKeyStore();
  ~SecretServiceKeyStore() override;

  SecretServiceKeyStore(const SecretServiceKeyStore&) = delete;
  SecretServiceKeyStore& operator=(const SecretServiceKeyStore&) = delete;

  void open() override;
  const std::string& problem() const override { return problem_; }
  void cancel() override;

  std::optional<SecItem> copyMatching(const SecItem& query) override;
  bool add(const SecItem& item) override;
  bool update(const SecItem& query, const SecItem& changes) override;
  bool remove(const SecItem& query) override;

 private:
  struct Connection;

  bool isReady();

  std::unique_ptr<Connection> connection_;
  std::string problem_;
};

}  // namespace fleetor
