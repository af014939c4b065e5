#include "qt/device/transient_key_store.h"

namespace fleetor {
namespace {

bool isSameItem(const SecItem& query, const SecItem& item) {
  for (const char* name : {sec::generic, sec::accessGroup}) {
    const auto wanted = query.find(name);
    if (wanted == query.end()) continue;
    const auto is = item.find(name);
    if (is == item.end() || is->second != wanted->second) return false;
  }
  return true;
}

// What belongs to a question and not to an item.
void dropQuestion(SecItem& item) {
  for (const char* name : {sec::returnAttributes, sec::returnData, sec::matchLimit})
    item.erase(name);
}

}  // namespace

SecItem* TransientKeyStore::find(const SecItem& query) {
  for (SecItem& item : items_)
    if (isSameItem(query, item)) return &item;
  return nullptr;
}

std::optional<SecItem> TransientKeyStore::copyMatching(const SecItem& query) {
  const SecItem* found = find(query);
  if (!found) return std::nullopt;
  SecItem copy = *found;
  if (!query.contains(sec::returnData)) copy.erase(sec::valueData);
  return copy;
}

bool TransientKeyStore::add(const SecItem& item) {
  if (find(item)) return false;
  dropQuestion(items_.emplace_back(item));
  return true;
}

bool TransientKeyStore::update(const SecItem& query, const SecItem& changes) {
  SecItem* found = find(query);
  if (!found) return false;
  for (const auto& [name, value] : changes)
    (*found)[name] = value;
  dropQuestion(*found);
  return true;
}

bool TransientKeyStore::remove(const SecItem& query) {
  return std::erase_if(items_, [&query](const SecItem& item) { return isSameItem(query, item); }) > 0;
}

}  // namespace fleetor
