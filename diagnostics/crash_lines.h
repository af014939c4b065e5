#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace fleetor {

/// A line of text in a fixed buffer, for use inside a signal handler. Text that does not fit is cut off.
class CrashLine {
 public:
  CrashLine& text(const char* piece);
  CrashLine& decimal(std::uint64_t number) { return digits(number, 10, 1); }
  CrashLine& hex(std::uint64_t number, int leastDigits = 1) { return digits(number, 16, leastDigits); }

  /// Ends the line and writes it out.
  void write(int descriptor);

  const char* data() const { return text_.data(); }
  std::size_t size() const { return size_; }

 private:
  CrashLine& digits(std::uint64_t number, unsigned base, int least);

  std::array<char, 256> text_{};
  std::size_t size_ = 0;
};

/// Whether the address is in a program or library that is loaded. May be called inside a signal handler.
bool isInModule(std::uintptr_t address);

/// Adds the module that the address is in, the offset there (as the tools that read symbols want it) and the
/// module's build id. An address outside of all modules may consist of user data, so it is written as "?".
/// `program` is what the main program is called. May be called inside a signal handler.
void addPlace(CrashLine& line, std::uintptr_t address, const char* program);

}  // namespace fleetor
