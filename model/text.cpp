#include "model/text.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <ostream>

namespace fleetor {

namespace {

/// A block whose bytes follow it in the same allocation.
class SmallArena final : public TextArena {
 public:
  static SmallArena* make(std::size_t capacity) {
    void* memory = ::operator new(sizeof(SmallArena) + capacity);
    return new (memory) SmallArena(static_cast<char*>(memory) + sizeof(SmallArena));
  }

 private:
  explicit SmallArena(char* bytes) : TextArena(bytes, 1, &destroy) {}
  static void destroy(const TextArena* arena) {
    static_cast<const SmallArena*>(arena)->~SmallArena();
    ::operator delete(const_cast<void*>(static_cast<const void*>(arena)));
  }
};

/// Behind every empty text that code makes; its own reference is never given back, so it is never destroyed.
class EmptyArena final : public TextArena {
 public:
  constexpr EmptyArena() : TextArena(nullptr, 1, nullptr) {}
};
constinit EmptyArena emptyArena;

std::string_view skipBlanksAndPlus(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || (text.front() >= '\t' && text.front() <= '\r')))
    text.remove_prefix(1);
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  return text;
}

}  // namespace

TextArena* TextArena::make(std::size_t capacity) {
  return SmallArena::make(capacity);
}

Text::Text(std::string_view text) {
  if (text.empty()) {
    emptyArena.retain();
    arena_ = &emptyArena;
    return;
  }
  text = text.substr(0, std::numeric_limits<std::uint32_t>::max());
  TextArena* arena = TextArena::make(text.size());
  std::memcpy(arena->writableBytes(), text.data(), text.size());
  arena_ = arena;
  length_ = static_cast<std::uint32_t>(text.size());
}

std::ostream& operator<<(std::ostream& out, const Text& text) {
  return out << text.view();
}

double doubleValue(std::string_view text) noexcept {
  text = skipBlanksAndPlus(text);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && std::isfinite(value) ? value : 0;
}

std::int64_t integerValue(std::string_view text) noexcept {
  text = skipBlanksAndPlus(text);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc::result_out_of_range) return value;
  return text.front() == '-' ? std::numeric_limits<std::int64_t>::min()
                             : std::numeric_limits<std::int64_t>::max();
}

}  // namespace fleetor
