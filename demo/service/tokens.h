#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace fleetor::demo {

// Bearer tokens that outlive the process: each names its user and ends with a hash that depends on the seed,
// so that only revoked ones need to be stored. Enough for a demo on loopback, but no protection. Safe from
// any thread.
class Tokens {
 public:
  // `stateFile`: keeps the hashes of revoked tokens, one a line; empty keeps them in memory.
  Tokens(std::uint64_t seed, std::string stateFile);

  // A different one at every call.
  std::string issue(std::string_view user) const;
  // The user; nothing for a forged or revoked token.
  std::optional<std::string> userOf(std::string_view token) const;
  void revoke(std::string_view token);

 private:
  std::string hashText(std::string_view text) const;

  std::uint64_t seed_;
  std::string stateFile_;
  mutable std::mutex mutex_;
  std::set<std::string, std::less<>> revoked_;
};

}  // namespace fleetor::demo
