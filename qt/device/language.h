#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace fleetor {

/// One language's texts. A language is named by its code, with or without a region: "pt", "pt-PT". Any thread
/// once it is made.
class Language {
 public:
  /// The codes of all languages that there are texts in, "en" among them, sorted.
  static std::vector<std::string> known();

  /// The first language of the system's settings that is known, with its region; "en" when none is.
  static std::string ofSystem();

  /// An unknown language has English texts.
  explicit Language(const std::string& name);

  const std::string& code() const { return code_; }  ///< without a region

  /// The text behind an English key; the key itself without a translation.
  std::string text(const std::string& key) const;

 private:
  std::string code_;
  std::unordered_map<std::string, std::string> texts_;
};

}  // namespace fleetor
