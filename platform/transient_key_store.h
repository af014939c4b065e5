#pragma once

#include <vector>

#include "platform/key_store.h"

namespace fleetor {

/// A key store that forgets everything when it is destroyed. Main thread only.
class TransientKeyStore : public KeyStore {
 public:
  std::optional<SecItem> copyMatching(const SecItem& query) override {
    const SecItem* found = find(query);
    if (!found) return std::nullopt;
    SecItem copy = *found;
    if (!query.contains(sec::returnData)) copy.erase(sec::valueData);
    return copy;
  }
  bool add(const SecItem& item) override {
    if (find(item)) return false;
    items_.push_back(item);
    return true;
  }
  bool update(const SecItem& query, const SecItem& changes) override {
    SecItem* found = find(query);
    if (!found) return false;
    for (const auto& [name, value] : changes)
      (*found)[name] = value;
    return true;
  }
  bool remove(const SecItem& query) override {
    return std::erase_if(items_, [&query](const SecItem& item) { return matches(item, query); }) > 0;
  }
  bool isKept() const override { return false; }
  void listen(Queues*, std::function<void(KeyStoreEvent)>) override {}  ///< there are no events

  const std::vector<SecItem>& items() const { return items_; }

 protected:
  std::vector<SecItem> items_;

 private:
  static bool matches(const SecItem& item, const SecItem& query) {
    for (const char* name : {sec::generic, sec::accessGroup}) {
      const auto wanted = query.find(name);
      const auto held = item.find(name);
      if (wanted != query.end() && (held == item.end() || held->second != wanted->second)) return false;
    }
    return true;
  }
  SecItem* find(const SecItem& query) {
    for (SecItem& item : items_)
      if (matches(item, query)) return &item;
    return nullptr;
  }
};

}  // namespace fleetor
