#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace fleetor {

/// A secret key that seals texts: who lacks it can neither read nor change one unnoticed. Any thread.
class SealKey {
 public:
  static SealKey random();
  static std::optional<SealKey> fromText(std::string_view text);  ///< nothing: not written by `text`

  SealKey(const SealKey&) = default;
  SealKey& operator=(const SealKey&) = default;
  ~SealKey();

  std::string text() const;  ///< 64 hexadecimal digits

  /// What `about` says is not in the sealed text, but needed to open it.
  std::string seal(std::string_view text, std::string_view about) const;
  std::optional<std::string> open(std::string_view sealed, std::string_view about) const;

 private:
  SealKey() = default;

  std::array<unsigned char, 32> bytes_{};
};

}  // namespace fleetor
