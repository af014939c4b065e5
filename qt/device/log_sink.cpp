#include "qt/device/log_sink.h"

#include <algorithm>
#include <cstdlib>

namespace fleetor {
namespace {

constexpr std::string_view kMask = "***";
constexpr std::string_view kSecretNames[] = {"password", "token", "authorization"};
constexpr std::string_view kBlanks = " \t";

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 'a' - 'A') : c;
}

bool hasAt(std::string_view text, std::size_t at, std::string_view word) {
  return text.size() - at >= word.size() &&
         std::equal(word.begin(), word.end(), text.begin() + static_cast<std::ptrdiff_t>(at),
                    [](char expected, char is) { return expected == lower(is); });
}

std::size_t skip(std::string_view text, std::size_t at, std::string_view set) {
  return std::min(text.find_first_not_of(set, at), text.size());
}

// The length of the quotation mark at that place: " or ', behind any number of backslashes, or the escape of
// one.
std::size_t quoteAt(std::string_view text, std::size_t at) {
  if (hasAt(text, at, "%22") || hasAt(text, at, "%27")) return 3;
  const std::size_t mark = skip(text, at, "\\");
  return mark < text.size() && (text[mark] == '"' || text[mark] == '\'') ? mark + 1 - at : 0;
}

// A text quoted n times over has 2^n - 1 backslashes before its quotation marks. The next mark ends it unless
// it is escaped: then the run of backslashes before it is longer, and not by whole escaped backslashes.
std::size_t endOfQuoted(std::string_view text, std::size_t at, std::string_view quote) {
  if (quote[0] == '%') {
    while (at < text.size() && !hasAt(text, at, quote))
      at++;
    return at;
  }
  const std::size_t depth = quote.size() - 1;
  for (std::size_t run = 0; at < text.size(); at++) {
    if (text[at] == quote.back() && run % (2 * (depth + 1)) == depth) return at - depth;
    run = text[at] == '\\' ? run + 1 : 0;
  }
  return at;
}

struct Range {
  std::size_t from = 0;
  std::size_t to = 0;
};

// The value that belongs to the name which ends there; empty when none does.
Range valueAfterName(std::string_view text, std::size_t at) {
  const std::size_t nameQuote = quoteAt(text, at);
  at = skip(text, at + nameQuote, kBlanks);
  if (hasAt(text, at, "%3d") || hasAt(text, at, "%3a"))
    at += 3;
  else if (at < text.size() && (text[at] == '=' || text[at] == ':'))
    at++;
  else
    return {};
  at = skip(text, at, nameQuote ? " \t\r\n" : kBlanks);
  if (const std::size_t quote = quoteAt(text, at)) {
    const std::size_t from = at + quote;
    return {from, endOfQuoted(text, from, text.substr(at, quote))};
  }
  if (at < text.size() && (text[at] == '{' || text[at] == '[')) return {at, text.size()};
  return {at, std::min(text.find_first_of(nameQuote ? "&,}] \t\r\n" : "&\r\n", at), text.size())};
}

Range tokenAfterBearer(std::string_view text, std::size_t at) {
  const std::size_t began = at;
  while (at < text.size()) {
    if (hasAt(text, at, "%20"))
      at += 3;
    else if (kBlanks.find(text[at]) != std::string_view::npos || text[at] == '+' || text[at] == ':' ||
             text[at] == '=')
      at++;
    else
      break;
  }
  if (at == began) return {};
  return {at, std::min(text.find_first_of(" \t\r\n\"'\\,;&}])>", at), text.size())};
}

Range secretAt(std::string_view text, std::size_t at) {
  for (const std::string_view name : kSecretNames)
    if (hasAt(text, at, name)) return valueAfterName(text, at + name.size());
  constexpr std::string_view bearer = "bearer";
  return hasAt(text, at, bearer) ? tokenAfterBearer(text, at + bearer.size()) : Range{};
}

}  // namespace

std::string maskSecrets(std::string_view text) {
  std::string masked;
  std::size_t copied = 0;
  for (std::size_t at = 0; at < text.size(); at++) {
    const Range secret = secretAt(text, at);
    if (secret.to <= secret.from) continue;
    masked.append(text, copied, secret.from - copied).append(kMask);
    copied = secret.to;
    at = secret.to - 1;
  }
  return masked.append(text, copied);
}

std::FILE* LogSink::streamFromEnvironment() {
  const char* wanted = std::getenv("FLEETOR_LOG");
  return wanted && *wanted ? stderr : nullptr;
}

void LogSink::line(std::string_view text) {
  if (!stream_) return;
  std::string masked = maskSecrets(text);
  for (char& c : masked)
    if ((static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') || c == 0x7f) c = '?';
  masked += '\n';
  const std::lock_guard lock(mutex_);
  std::fwrite(masked.data(), 1, masked.size(), stream_);
  std::fflush(stream_);
}

}  // namespace fleetor
