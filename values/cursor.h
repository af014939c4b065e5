#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace fleetor {

/// Reads a text without the blanks around it from its beginning to its end. A text beyond the bound is as one
/// that nothing can read.
class Cursor {
 public:
  static constexpr std::size_t longestText = 40;                                     ///< bytes
  static constexpr std::array<std::string_view, 3> blanks{" ", "\u00A0", "\u202F"};  ///< also no-break ones

  constexpr explicit Cursor(std::string_view text) : rest_(text.size() > longestText ? "\n" : text) {
    skipBlanks();
    while (std::ranges::any_of(blanks, [this](std::string_view blank) { return drop(blank); })) {
    }
  }

  constexpr std::string_view rest() const { return rest_; }
  constexpr bool isAtEnd() const { return rest_.empty(); }

  constexpr bool take(std::string_view expected) {
    if (!rest_.starts_with(expected)) return false;
    rest_.remove_prefix(expected.size());
    return true;
  }

  /// At most that many digits, at least one.
  constexpr std::optional<int> takeNumber(std::size_t most) {
    std::size_t count = 0;
    int value = 0;
    for (; count < most && count < rest_.size() && isDigit(rest_[count]); ++count)
      value = 10 * value + (rest_[count] - '0');
    if (count == 0) return std::nullopt;
    rest_.remove_prefix(count);
    return value;
  }

  /// Exactly that many digits, with none behind them.
  constexpr std::optional<int> takeDigits(std::size_t count) {
    if (rest_.size() > count && isDigit(rest_[count])) return std::nullopt;
    const std::size_t before = rest_.size();
    const auto value = takeNumber(count);
    return before - rest_.size() == count ? value : std::nullopt;
  }

  constexpr void skipBlanks() {
    while (std::ranges::any_of(blanks, [this](std::string_view blank) { return take(blank); })) {
    }
  }

  static constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

 private:
  constexpr bool drop(std::string_view ending) {
    if (!rest_.ends_with(ending)) return false;
    rest_.remove_suffix(ending.size());
    return true;
  }

  std::string_view rest_;
};

}  // namespace fleetor
