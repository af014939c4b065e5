#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>

namespace fleetor {

/// One suite of persistent settings (the standard user defaults, or the shared app-group settings that the
/// widget reads). Main thread only. Writes may be held back until `synchronize`; a failed write is reported
/// by the device layer on standard error and changes nothing that is stored.
class Settings {
 public:
  using Texts = std::map<std::string, std::string>;  ///< texts that are stored and replaced together, by name
  using Value = std::variant<std::string, std::int64_t, Texts>;

  virtual ~Settings() = default;
  virtual std::optional<Value> object(const std::string& key) const = 0;
  virtual void setObject(const Value& value, const std::string& key) = 0;
  virtual void removeObject(const std::string& key) = 0;
  virtual void synchronize() = 0;
};

}  // namespace fleetor
