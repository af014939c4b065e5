#pragma once

#include <iconv.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace fleetor {

/// Ends the program, and so reports the input, unless the property holds.
inline void require(bool holds, const char* property, std::string_view text = "") {
  if (holds) return;
  ::dprintf(STDERR_FILENO, "does not hold: %s: %.*s\n", property, static_cast<int>(text.size()), text.data());
  std::abort();
}

inline bool isUTF8(std::string text) {
  static const iconv_t decoder = ::iconv_open("UTF-32", "UTF-8");
  std::string wide(4 * text.size() + 4, '\0');  // with a byte-order mark
  char *in = text.data(), *out = wide.data();
  std::size_t left = text.size(), room = wide.size();
  ::iconv(decoder, nullptr, nullptr, nullptr, nullptr);
  return ::iconv(decoder, &in, &left, &out, &room) == 0;
}

/// Spends the input bit by bit; zeros when it is used up.
class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

  std::uint32_t next() {
    if (left_ == 0) return 0;
    --left_;
    return *data_++;
  }

  std::string rest() { return raw(left_); }

  std::string raw(std::size_t most) {
    const std::size_t count = most < left_ ? most : left_;
    std::string out(reinterpret_cast<const char*>(data_), count);
    data_ += count;
    left_ -= count;
    return out;
  }

  std::int64_t integer() {
    std::uint64_t value = 0;
    for (std::uint32_t bytes = next() % 9; bytes > 0; --bytes)
      value = value << 8 | next();
    return static_cast<std::int64_t>(next() % 2 ? ~value : value);
  }

  /// Valid UTF-8: code points of every length, with the controls among them.
  std::string text() {
    std::string out;
    for (std::uint32_t points = next() % 12; points > 0; --points) {
      std::uint32_t point = next();
      const std::uint32_t kind = next() % 8;
      if (kind == 0) point = point << 3 | next();
      if (kind == 1) point = point << 8 | next();
      if (kind == 2) point = (point << 12 | next() << 4) % 0x110000;
      append(out, point >= 0xD800 && point < 0xE000 ? 0xFFFD : point);
    }
    return out;
  }

 private:
  static void append(std::string& out, std::uint32_t point) {
    const auto put = [&](std::uint32_t byte) { out += static_cast<char>(byte); };
    if (point < 0x80) {
      put(point);
    } else if (point < 0x800) {
      put(0xC0 | point >> 6), put(0x80 | (point & 63));
    } else if (point < 0x10000) {
      put(0xE0 | point >> 12), put(0x80 | (point >> 6 & 63)), put(0x80 | (point & 63));
    } else {
      put(0xF0 | point >> 18), put(0x80 | (point >> 12 & 63)), put(0x80 | (point >> 6 & 63)),
          put(0x80 | (point & 63));
    }
  }

  const std::uint8_t* data_;
  std::size_t left_;
};

}  // namespace fleetor
