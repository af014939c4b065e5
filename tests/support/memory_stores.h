#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "platform/settings.h"
#include "platform/transient_key_store.h"

namespace fleetor::test {

/// A key store in memory that counts, and that can be broken.
class MemoryKeyStore final : public TransientKeyStore {
 public:
  bool failsWrites = false;
  bool keeps = true;
  std::function<void(KeyStoreEvent)> listener;
  std::function<void()> onRemove;  ///< called before an item is removed
  int writes = 0;                  ///< calls of add, update and remove that changed something

  std::vector<SecItem>& items() { return items_; }

  bool add(const SecItem& item) override { return counted(!failsWrites && TransientKeyStore::add(item)); }
  bool update(const SecItem& query, const SecItem& changes) override {
    return counted(!failsWrites && TransientKeyStore::update(query, changes));
  }
  bool remove(const SecItem& query) override {
    if (onRemove && copyMatching(query)) onRemove();
    return counted(!failsWrites && TransientKeyStore::remove(query));
  }
  bool isKept() const override { return keeps; }
  void listen(Queues*, std::function<void(KeyStoreEvent)> events) override { listener = std::move(events); }

 private:
  bool counted(bool written) {
    writes += written;
    return written;
  }
};

class MemorySettings final : public Settings {
 public:
  std::map<std::string, Value> values;
  int synchronized = 0;

  std::optional<Value> object(const std::string& key) const override {
    const auto found = values.find(key);
    return found == values.end() ? std::nullopt : std::optional(found->second);
  }
  void setObject(const Value& value, const std::string& key) override { values[key] = value; }
  void removeObject(const std::string& key) override { values.erase(key); }
  void synchronize() override { ++synchronized; }
};

}  // namespace fleetor::test
