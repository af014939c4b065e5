#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/key_store.h"
#include "platform/settings.h"

namespace fleetor::test {

/// A key store that forgets everything at the end of the test, and that can be broken.
class MemoryKeyStore final : public KeyStore {
 public:
  std::vector<SecItem> items;
  bool failsWrites = false;
  std::function<void(KeyStoreEvent)> listener;
  std::function<void()> onRemove;  ///< called before an item is removed
  int writes = 0;                  ///< calls of add, update and remove that changed something

  std::optional<SecItem> copyMatching(const SecItem& query) override {
    const SecItem* found = find(query);
    if (!found) return {};
    SecItem copy = *found;
    if (!query.contains(sec::returnData)) copy.erase(sec::valueData);
    return copy;
  }
  bool add(const SecItem& item) override {
    if (failsWrites || find(item)) return false;
    items.push_back(item);
    ++writes;
    return true;
  }
  bool update(const SecItem& query, const SecItem& changes) override {
    SecItem* found = find(query);
    if (failsWrites || !found) return false;
    for (const auto& [key, value] : changes)
      (*found)[key] = value;
    ++writes;
    return true;
  }
  bool remove(const SecItem& query) override {
    const SecItem* found = find(query);
    if (failsWrites || !found) return false;
    if (onRemove) onRemove();
    items.erase(items.begin() + (found - items.data()));
    ++writes;
    return true;
  }
  void listen(Queues*, std::function<void(KeyStoreEvent)> events) override { listener = std::move(events); }

 private:
  static bool agrees(const SecItem& item, const SecItem& query, const char* attribute) {
    const auto asked = query.find(attribute);
    const auto held = item.find(attribute);
    return asked == query.end() || (held != item.end() && held->second == asked->second);
  }
  SecItem* find(const SecItem& query) {
    for (auto& item : items)
      if (agrees(item, query, sec::itemClass) && agrees(item, query, sec::generic) &&
          agrees(item, query, sec::accessGroup))
        return &item;
    return nullptr;
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
