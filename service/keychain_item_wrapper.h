#pragma once

#include <optional>
#include <string>

#include "platform/key_store.h"

namespace fleetor {

/// One generic-password item of the key store, as the client sees it: attributes by name, the value data as
/// text. The store is searched when a wrapper is made and written at each change; a write that fails is not
/// noticed here. Main thread only; the store outlives the wrapper.
class KeychainItemWrapper {
 public:
  static KeychainItemWrapper initWithIdentifier(KeyStore& store, const std::string& identifier,
                                                const std::optional<std::string>& accessGroup);

  /// Writes the value to the store. No value, or one equal to the current one, changes nothing.
  void setObject(const std::optional<std::string>& value, const std::string& key);
  std::optional<std::string> objectForKey(const std::string& key) const;

  /// Removes the item from the store; account, label, description and value data become empty texts.
  void resetKeychainItem();

  SecItem dictionaryToSecItemFormat(const SecItem& dictionary) const;
  SecItem secItemFormatToDictionary(const SecItem& item) const;

 private:
  explicit KeychainItemWrapper(KeyStore& store) : store_(&store) {}
  void writeToKeychain();

  KeyStore* store_;
  SecItem genericPasswordQuery_;
  std::optional<SecItem> keychainItemData_;
};

}  // namespace fleetor
