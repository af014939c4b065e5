#include "service/keychain_item_wrapper.h"

#include <utility>

namespace fleetor {

KeychainItemWrapper KeychainItemWrapper::initWithIdentifier(KeyStore& store, const std::string& identifier,
                                                            const std::optional<std::string>& accessGroup) {
  KeychainItemWrapper wrapper(store);
  SecItem& query = wrapper.genericPasswordQuery_;
  query[sec::itemClass] = sec::genericPassword;
  query[sec::generic] = identifier;
  if (accessGroup) query[sec::accessGroup] = *accessGroup;
  query[sec::matchLimit] = sec::matchLimitOne;
  query[sec::returnAttributes] = "1";

  if (const auto found = store.copyMatching(query)) {
    wrapper.keychainItemData_ = wrapper.secItemFormatToDictionary(*found);
  } else {
    wrapper.resetKeychainItem();
    SecItem& item = *wrapper.keychainItemData_;
    item[sec::generic] = identifier;
    if (accessGroup) item[sec::accessGroup] = *accessGroup;
  }
  return wrapper;
}

void KeychainItemWrapper::setObject(const std::optional<std::string>& value, const std::string& key) {
  if (!value || objectForKey(key) == value) return;
  (*keychainItemData_)[key] = *value;
  writeToKeychain();
}

std::optional<std::string> KeychainItemWrapper::objectForKey(const std::string& key) const {
  const auto found = keychainItemData_->find(key);
  return found == keychainItemData_->end() ? std::nullopt : std::optional(found->second);
}

void KeychainItemWrapper::resetKeychainItem() {
  if (keychainItemData_)
    store_->remove(dictionaryToSecItemFormat(*keychainItemData_));
  else
    keychainItemData_.emplace();
  for (const char* key : {sec::account, sec::label, sec::description, sec::valueData})
    (*keychainItemData_)[key] = "";
}

// Texts are UTF-8 here and in the store, so the value data needs no conversion either way.
SecItem KeychainItemWrapper::dictionaryToSecItemFormat(const SecItem& dictionary) const {
  SecItem item = dictionary;
  item[sec::itemClass] = sec::genericPassword;
  return item;
}

SecItem KeychainItemWrapper::secItemFormatToDictionary(const SecItem& item) const {
  SecItem dictionary = item;
  dictionary[sec::itemClass] = sec::genericPassword;
  dictionary[sec::returnData] = "1";
  const auto found = store_->copyMatching(dictionary);
  dictionary.erase(sec::returnData);
  if (found && found->contains(sec::valueData)) dictionary[sec::valueData] = found->at(sec::valueData);
  return dictionary;
}

void KeychainItemWrapper::writeToKeychain() {
  SecItem stored = dictionaryToSecItemFormat(*keychainItemData_);
  if (auto found = store_->copyMatching(genericPasswordQuery_)) {
    (*found)[sec::itemClass] = genericPasswordQuery_[sec::itemClass];
    stored.erase(sec::itemClass);
    store_->update(*found, stored);
  } else {
    store_->add(stored);
  }
}

}  // namespace fleetor
