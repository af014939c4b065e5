#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "platform/queues.h"

namespace fleetor {

/// Attributes of one generic-password item, by the key store's own attribute names (see `sec`).
using SecItem = std::map<std::string, std::string>;

/// Attribute names and fixed values of the key store.
namespace sec {
inline constexpr const char* itemClass = "class";
inline constexpr const char* genericPassword = "genp";
inline constexpr const char* generic = "gena";  ///< the item's identifier
inline constexpr const char* accessGroup = "agrp";
inline constexpr const char* accessible = "pdmn";
inline constexpr const char* accessibleAlwaysThisDeviceOnly = "dku";
inline constexpr const char* account = "acct";
inline constexpr const char* label = "labl";
inline constexpr const char* description = "desc";
inline constexpr const char* valueData = "v_Data";
inline constexpr const char* matchLimit = "m_Limit";  ///< of a query, as those below
inline constexpr const char* matchLimitOne = "m_LimitOne";
inline constexpr const char* returnAttributes = "r_Attributes";
inline constexpr const char* returnData = "r_Data";  ///< the value data is wanted too
}  // namespace sec

/// What happens in the platform's store after a call has returned.
enum class KeyStoreEvent {
  readable,  ///< items of an earlier run that could not be read when they were requested can be read now
  notKept,   ///< the last change is in memory only, and lost when the client ends
};

/// The platform's secure store for small secrets. Items are found by `sec::generic` and, when the query names
/// one, `sec::accessGroup`, one at a time. All calls are made on the main thread and must return within a few
/// seconds, whatever the platform's store does. None reports an error: a call that cannot be carried out
/// finds nothing or changes nothing.
class KeyStore {
 public:
  virtual ~KeyStore() = default;

  /// The attributes of the item that matches, `sec::valueData` among them only when the query asks for
  /// `sec::returnData`; nothing without a match.
  virtual std::optional<SecItem> copyMatching(const SecItem& query) = 0;
  virtual bool add(const SecItem& item) = 0;
  virtual bool update(const SecItem& query, const SecItem& changes) = 0;
  virtual bool remove(const SecItem& query) = 0;

  /// Whether what was added and changed here is known to be there in the next run.
  virtual bool isKept() const = 0;

  /// Reports events on the main thread, through these queues, until it is called with none.
  virtual void listen(Queues* queues, std::function<void(KeyStoreEvent)> listener) = 0;
};

}  // namespace fleetor
