#pragma once

#include <string>

#include "qt/device/guarded_key_store.h"

namespace fleetor {

/// The desktop's Secret Service. An item is kept in the default keyring; its value is the secret, its other
/// attributes and the mark are the item's. A locked keyring appears empty, so it is not searched.
class SecretServiceKeyStore final : public SystemKeyStore {
 public:
  SecretServiceKeyStore();
  ~SecretServiceKeyStore() override;

  SecretServiceKeyStore(const SecretServiceKeyStore&) = delete;
  SecretServiceKeyStore& operator=(const SecretServiceKeyStore&) = delete;

  bool isUsable() override;
  bool unlock() override;
  std::optional<std::vector<SecItem>> items(const std::string& mark) override;
  bool store(const std::vector<SecItem>& items, const std::string& mark) override;
  bool removeOthers(const std::string& mark) override;
  std::string problem() const override { return problem_; }
  void cancel() override;

 private:
  struct Connection;

  std::unique_ptr<Connection> connection_;
  std::string problem_;
};

}  // namespace fleetor
