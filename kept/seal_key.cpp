#include "kept/seal_key.h"

#include <sodium.h>

namespace fleetor {

namespace {

constexpr std::size_t nonceLength = crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr std::size_t tagLength = crypto_aead_xchacha20poly1305_ietf_ABYTES;

// Chooses the fastest code of this processor; without it the slowest is used.
void prepare() {
  static const int prepared = sodium_init();
  static_cast<void>(prepared);
}

unsigned char* bytesOf(std::string& text) {
  return reinterpret_cast<unsigned char*>(text.data());
}

const unsigned char* bytesOf(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

}  // namespace

SealKey SealKey::random() {
  prepare();
  SealKey key;
  randombytes_buf(key.bytes_.data(), key.bytes_.size());
  return key;
}

std::optional<SealKey> SealKey::fromText(std::string_view text) {
  SealKey key;
  std::size_t length = 0;
  const bool isRead = sodium_hex2bin(key.bytes_.data(), key.bytes_.size(), text.data(), text.size(), nullptr,
                                     &length, nullptr) == 0;
  return isRead && length == key.bytes_.size() ? std::optional(key) : std::nullopt;
}

SealKey::~SealKey() {
  sodium_memzero(bytes_.data(), bytes_.size());
}

std::string SealKey::text() const {
  std::string digits(2 * bytes_.size() + 1, '\0');
  sodium_bin2hex(digits.data(), digits.size(), bytes_.data(), bytes_.size());
  digits.pop_back();
  return digits;
}

std::string SealKey::seal(std::string_view text, std::string_view about) const {
  static_assert(crypto_aead_xchacha20poly1305_ietf_KEYBYTES == 32);
  prepare();
  std::string sealed(nonceLength + text.size() + tagLength, '\0');
  unsigned char* const nonce = bytesOf(sealed);
  randombytes_buf(nonce, nonceLength);
  crypto_aead_xchacha20poly1305_ietf_encrypt(nonce + nonceLength, nullptr, bytesOf(text), text.size(),
                                             bytesOf(about), about.size(), nullptr, nonce, bytes_.data());
  return sealed;
}

std::optional<std::string> SealKey::open(std::string_view sealed, std::string_view about) const {
  prepare();
  if (sealed.size() < nonceLength + tagLength) return std::nullopt;
  std::string text(sealed.size() - nonceLength - tagLength, '\0');
  const unsigned char* const nonce = bytesOf(sealed);
  const bool isOpen = crypto_aead_xchacha20poly1305_ietf_decrypt(
                          bytesOf(text), nullptr, nullptr, nonce + nonceLength, sealed.size() - nonceLength,
                          bytesOf(about), about.size(), nonce, bytes_.data()) == 0;
  return isOpen ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace fleetor
