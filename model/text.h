#pragma once

#include <atomic>
#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

namespace fleetor {

/// A block of bytes that texts point into. It lives as long as any text of it does: a count of 64 bits, so
/// that a mapping can borrow millions of references in one step. Any thread.
class TextArena {
 public:
  TextArena(const TextArena&) = delete;
  TextArena& operator=(const TextArena&) = delete;

  const char* bytes() const noexcept { return bytes_; }
  void retain(std::uint64_t count = 1) const noexcept {
    references_.fetch_add(count, std::memory_order_relaxed);
  }
  void release(std::uint64_t count = 1) const noexcept {
    if (references_.fetch_sub(count, std::memory_order_acq_rel) == count) destroy_(this);
  }

  /// A block of `capacity` bytes with one reference, to be written through `writableBytes` before it is
  /// shared.
  static TextArena* make(std::size_t capacity);
  char* writableBytes() noexcept { return bytes_; }

 protected:
  using Destroy = void (*)(const TextArena*);
  constexpr TextArena(char* bytes, std::uint64_t references, Destroy destroy) noexcept
      : bytes_(bytes), destroy_(destroy), references_(references) {}
  ~TextArena() = default;

  char* bytes_;

 private:
  Destroy destroy_;
  mutable std::atomic<std::uint64_t> references_;
};

/// An immutable text in UTF-8: 16 bytes, a view into a shared block. Copying costs one atomic step and no
/// allocation. Every operation is safe from any thread as for a std::shared_ptr. A text that was never set
/// (`isSet` false) is also empty; the difference matters to the writing of records only, and not to ==.
class Text {
 public:
  constexpr Text() noexcept = default;

  /// Copies the text. Texts are held below 4 GiB; a longer one is cut off there.
  Text(std::string_view text);
  template <class S>
  requires(std::convertible_to<const S&, std::string_view> && !std::same_as<S, Text>) Text(const S& text)
      : Text(std::string_view(text)) {}

  /// Takes over one reference of the arena that the caller already holds.
  static Text adopt(const TextArena* arena, std::uint32_t offset, std::uint32_t length) noexcept {
    Text text;
    text.arena_ = arena;
    text.offset_ = offset;
    text.length_ = length;
    return text;
  }

  Text(const Text& other) noexcept : arena_(other.arena_), offset_(other.offset_), length_(other.length_) {
    if (arena_) arena_->retain();
  }
  Text(Text&& other) noexcept
      : arena_(std::exchange(other.arena_, nullptr)),
        offset_(std::exchange(other.offset_, 0)),
        length_(std::exchange(other.length_, 0)) {}
  Text& operator=(Text other) noexcept {
    std::swap(arena_, other.arena_);
    std::swap(offset_, other.offset_);
    std::swap(length_, other.length_);
    return *this;
  }
  ~Text() {
    if (arena_) arena_->release();
  }

  bool isSet() const noexcept { return arena_ != nullptr; }
  bool empty() const noexcept { return length_ == 0; }
  std::size_t size() const noexcept { return length_; }

  /// Valid as long as this text, or a copy of it, is neither changed nor destroyed. Not terminated by a zero
  /// byte.
  std::string_view view() const noexcept {
    return arena_ ? std::string_view(arena_->bytes() + offset_, length_) : std::string_view();
  }
  operator std::string_view() const noexcept { return view(); }
  std::string str() const { return std::string(view()); }

  friend bool operator==(const Text& a, const Text& b) noexcept { return a.view() == b.view(); }
  template <class S>
  requires(std::convertible_to<const S&, std::string_view> && !std::same_as<S, Text>) friend bool operator==(
      const Text& a, const S& b) noexcept {
    return a.view() == std::string_view(b);
  }
  friend std::ostream& operator<<(std::ostream& out, const Text& text);

 private:
  const TextArena* arena_ = nullptr;
  std::uint32_t offset_ = 0;
  std::uint32_t length_ = 0;
};

static_assert(sizeof(Text) == 16);

/// The number that the text begins with, after blanks and a sign; 0 without a number or with an infinite one.
/// Reads a point as the decimal separator whatever the locale.
double doubleValue(std::string_view text) noexcept;

/// The decimal integer that the text begins with, after blanks and a sign; reading stops at the first other
/// character. 0 without a digit, the nearest limit when it does not fit.
std::int64_t integerValue(std::string_view text) noexcept;

}  // namespace fleetor
