#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace fleetor::demo {

// Repeatable randomness. Whatever the town and its fleet do is a function of the seed and of what is asked (a
// vehicle, a day, a trip), never of the order of questions: each thing has a separate generator,
// seeded by its hash.

constexpr std::uint64_t mixBits(std::uint64_t value) {
  value += 0x9e3779b97f4a7c15ULL;
  value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9ULL;
  value = (value ^ (value >> 27)) * 0x94d049bb133111ebULL;
  return value ^ (value >> 31);
}

template <class... Parts>
constexpr std::uint64_t hashOf(std::uint64_t first, Parts... parts) {
  std::uint64_t hash = mixBits(first);
  ((hash = mixBits(hash ^ static_cast<std::uint64_t>(parts))), ...);
  return hash;
}

constexpr std::uint64_t hashOfText(std::uint64_t seed, std::string_view text) {
  std::uint64_t hash = hashOf(seed, text.size());
  for (const char c : text)
    hash = mixBits(hash ^ static_cast<unsigned char>(c));
  return hash;
}

// 16 digits.
inline std::string hexText(std::uint64_t value) {
  char text[20];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(value));
  return text;
}

class Random {
 public:
  explicit constexpr Random(std::uint64_t seed) : state_(seed) {}

  constexpr std::uint64_t next() { return mixBits(state_ += 0x9e3779b97f4a7c15ULL); }
  // In [0, 1).
  constexpr double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; }
  constexpr double between(double low, double high) { return low + (high - low) * unit(); }
  // In [0, count); count > 0.
  constexpr std::uint32_t below(std::uint32_t count) { return static_cast<std::uint32_t>(next() % count); }
  constexpr bool chance(double probability) { return unit() < probability; }

  template <std::size_t N>
  constexpr const char* oneOf(const char* const (&list)[N]) {
    return list[below(static_cast<std::uint32_t>(N))];
  }

 private:
  std::uint64_t state_;
};

}  // namespace fleetor::demo
