#include "demo/service/tokens.h"

#include <fstream>
#include <random>

#include "demo/town/random.h"

namespace fleetor::demo {

Tokens::Tokens(std::uint64_t seed, std::string stateFile)
    : seed_(hashOf(seed, 51)), stateFile_(std::move(stateFile)) {
  if (stateFile_.empty()) return;
  std::ifstream file(stateFile_);
  for (std::string line; std::getline(file, line);)
    if (!line.empty()) revoked_.insert(line);
}

std::string Tokens::hashText(std::string_view text) const {
  return hexText(hashOfText(seed_, text));
}

std::string Tokens::issue(std::string_view user) const {
  std::random_device entropy;
  const auto word = [&] { return (static_cast<std::uint64_t>(entropy()) << 32) | entropy(); };
  std::string token = std::string(user) + "." + hexText(word()) + hexText(word());
  return token + "." + hashText(token);
}

std::optional<std::string> Tokens::userOf(std::string_view token) const {
  const std::size_t userEnd = token.find('.');
  const std::size_t hashBegin = token.rfind('.');
  if (userEnd == std::string_view::npos || userEnd == hashBegin) return std::nullopt;
  if (token.substr(hashBegin + 1) != hashText(token.substr(0, hashBegin))) return std::nullopt;
  const std::lock_guard lock(mutex_);
  if (revoked_.contains(hashText(token))) return std::nullopt;
  return std::string(token.substr(0, userEnd));
}

void Tokens::revoke(std::string_view token) {
  const std::lock_guard lock(mutex_);
  const std::string hash = hashText(token);
  if (!revoked_.insert(hash).second || stateFile_.empty()) return;
  // On a separate line even after a line that a full disk has cut short.
  std::ofstream(stateFile_, std::ios::app) << '\n' << hash << '\n';
}

}  // namespace fleetor::demo
