#include "demo/service/tokens.h"

#include <bit>
#include <cstdio>
#include <fstream>
#include <random>

#include "demo/town/random.h"

namespace fleetor::demo {
namespace {

std::string hexText(std::uint64_t value) {
  char text[20];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(value));
  return text;
}

// SipHash-2-4 (Aumasson and Bernstein, 2012): a short keyed hash.
std::uint64_t sipHash(std::uint64_t k0, std::uint64_t k1, std::string_view text) {
  std::uint64_t v0 = k0 ^ 0x736f6d6570736575ULL;
  std::uint64_t v1 = k1 ^ 0x646f72616e646f6dULL;
  std::uint64_t v2 = k0 ^ 0x6c7967656e657261ULL;
  std::uint64_t v3 = k1 ^ 0x7465646279746573ULL;
  const auto rounds = [&](int count) {
    for (; count > 0; --count) {
      v0 += v1, v1 = std::rotl(v1, 13) ^ v0, v0 = std::rotl(v0, 32);
      v2 += v3, v3 = std::rotl(v3, 16) ^ v2;
      v0 += v3, v3 = std::rotl(v3, 21) ^ v0;
      v2 += v1, v1 = std::rotl(v1, 17) ^ v2, v2 = std::rotl(v2, 32);
    }
  };
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    word |= static_cast<std::uint64_t>(static_cast<unsigned char>(text[i])) << (8 * (i % 8));
    if (i % 8 != 7) continue;
    v3 ^= word;
    rounds(2);
    v0 ^= word;
    word = 0;
  }
  word |= static_cast<std::uint64_t>(text.size() & 0xff) << 56;
  v3 ^= word;
  rounds(2);
  v0 ^= word;
  v2 ^= 0xff;
  rounds(4);
  return v0 ^ v1 ^ v2 ^ v3;
}

}  // namespace

Tokens::Tokens(std::uint64_t seed, std::string stateFile)
    : key_{hashOf(seed, 51), hashOf(seed, 52)}, stateFile_(std::move(stateFile)) {
  if (stateFile_.empty()) return;
  std::ifstream file(stateFile_);
  for (std::string line; std::getline(file, line);)
    if (!line.empty()) revoked_.insert(line);
}

std::string Tokens::seal(std::string_view text) const {
  return hexText(sipHash(key_[0], key_[1], text));
}

std::string Tokens::issue(std::string_view user) const {
  std::random_device entropy;
  const auto word = [&] { return (static_cast<std::uint64_t>(entropy()) << 32) | entropy(); };
  std::string token = std::string(user) + "." + hexText(word()) + hexText(word());
  return token + "." + seal(token);
}

std::optional<std::string> Tokens::userOf(std::string_view token) const {
  const std::size_t userEnd = token.find('.');
  const std::size_t sealBegin = token.rfind('.');
  if (userEnd == std::string_view::npos || userEnd == sealBegin) return std::nullopt;
  if (token.substr(sealBegin + 1) != seal(token.substr(0, sealBegin))) return std::nullopt;
  const std::lock_guard lock(mutex_);
  if (revoked_.contains(seal(token))) return std::nullopt;
  return std::string(token.substr(0, userEnd));
}

void Tokens::revoke(std::string_view token) {
  const std::lock_guard lock(mutex_);
  const std::string mark = seal(token);
  if (!revoked_.insert(mark).second || stateFile_.empty()) return;
  // On a separate line even after a line that a full disk has cut short.
  std::ofstream(stateFile_, std::ios::app) << '\n' << mark << '\n';
}

}  // namespace fleetor::demo
