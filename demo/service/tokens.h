#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace fleetor::demo {

// Bearer tokens that outlive the process: each names its user and carries a seal that only this seed makes,
// so nothing needs to be remembered but those that were revoked. A seal for a demo's users, no protection for
// anybody's data. Safe from any thread.
class Tokens {
 public:
  // `stateFile`: where revocations are kept, one line each, without the token itself; empty keeps them in
  // memory.
  Tokens(std::uint64_t seed, std::string stateFile);

  // A new one at every call.
  std::string issue(std::string_view user) const;
  // The user, or nothing for a token that is not ours or was revoked.
  std::optional<std::string> userOf(std::string_view token) const;
  void revoke(std::string_view token);

 private:
  std::string seal(std::string_view text) const;

  std::uint64_t key_[2];
  std::string stateFile_;
  mutable std::mutex mutex_;
  std::set<std::string, std::less<>> revoked_;
};

}  // namespace fleetor::demo
