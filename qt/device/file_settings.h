#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/settings.h"

namespace fleetor {

/// A suite of settings in one JSON file. Every change is written at once, and replaces the file as a whole or
/// not at all; what other programs have changed in the meantime stays, and is seen after `synchronize`.
/// Changes that could not be written are kept for this run and tried again with the next one.
///
/// A file that cannot be read or is not a JSON object is ignored; the first change renames it to end in
/// ".broken". Each kind of problem is reported once, in one line on standard error. Main thread only.
class FileSettings final : public Settings {
 public:
  explicit FileSettings(std::string path);
  ~FileSettings() override;

  FileSettings(const FileSettings&) = delete;
  FileSettings& operator=(const FileSettings&) = delete;

  std::optional<Value> object(const std::string& key) const override;
  void setObject(const Value& value, const std::string& key) override;
  void removeObject(const std::string& key) override;
  void synchronize() override;

 private:
  struct Contents;

  void load();
  void save();

  std::string path_;
  std::unique_ptr<Contents> contents_;
};

/// The file of a suite ("standard", or the name of a group of applications) in the configuration folder of
/// this application; the names of organisation and application must have been set by then.
std::string settingsPath(const std::string& suite);

inline constexpr const char* standardSuite = "standard";
inline constexpr const char* sharedSuite = "group.fleetor";  ///< shared with the widget

}  // namespace fleetor
