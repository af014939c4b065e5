#include "shell/base/contact_link.h"

namespace fleetor {

namespace {

constexpr std::string_view digits = "0123456789";
constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::size_t shortestNumber = 3;  ///< an emergency call
constexpr std::size_t longestNumber = 15;
constexpr std::size_t longestAddress = 254;

std::string phoneNumber(std::string_view value) {
  std::string number;
  for (const char c : value) {
    if (digits.find(c) != std::string_view::npos || (c == '+' && number.empty()))
      number += c;
    else if (std::string_view(" ()-./").find(c) == std::string_view::npos)
      return {};
  }
  const std::size_t length = number.size() - (number.starts_with('+') ? 1 : 0);
  return length < shortestNumber || length > longestNumber ? std::string() : number;
}

bool isMailAddress(std::string_view value) {
  const auto at = value.find('@');
  if (at == 0 || at == std::string_view::npos || value.size() > longestAddress) return false;
  const auto consistsOf = [](std::string_view text, std::string_view others) {
    const std::string allowed = std::string(letters).append(digits).append(others);
    return text.find_first_not_of(allowed) == std::string_view::npos;
  };
  const std::string_view host = value.substr(at + 1);
  const auto dot = host.find('.');
  return consistsOf(value.substr(0, at), "._+-") && consistsOf(host, ".-") && dot != std::string_view::npos &&
         dot > 0 && !host.ends_with('.');
}

}  // namespace

std::string contactURL(Contact contact, std::string_view value) {
  if (contact == Contact::none) return {};
  if (contact == Contact::mail) return isMailAddress(value) ? "mailto:" + std::string(value) : std::string();
  const std::string number = phoneNumber(value);
  if (number.empty()) return {};
  return (contact == Contact::phone ? "tel:" : "sms:") + number;
}

}  // namespace fleetor
