#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace fleetor {

/// Short texts in order, each kept as what differs from the one before: the times of a day take some three
/// bytes each. Any thread once it is filled.
class TextColumn {
 public:
  static constexpr std::size_t longest = 100;  ///< bytes

  /// A longer text becomes an empty one.
  void add(std::string_view text);

  std::size_t bytes() const { return coded_.size(); }

  /// From the first text on. The column outlives it.
  class Reader {
   public:
    explicit Reader(const TextColumn& column) : rest_(column.coded_) {}

    /// The next text, valid until the next call; empty after the last one.
    std::string_view next();

   private:
    std::string_view rest_;
    std::string text_;
  };

 private:
  std::string coded_;  ///< of each: how many bytes it shares with the one before, how many follow, and these
  std::string last_;
};

}  // namespace fleetor
