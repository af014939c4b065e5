#include "http/web_address.h"

#include <arpa/inet.h>
#include <curl/curl.h>

#include <array>
#include <memory>

#include "platform/ascii.h"

namespace fleetor {
namespace {

struct FreeHandle {
  void operator()(CURLU* handle) const { curl_url_cleanup(handle); }
};
using Handle = std::unique_ptr<CURLU, FreeHandle>;

std::string escaped(const std::string& url) {
  constexpr std::array<char, 17> digits{"0123456789ABCDEF"};
  std::string out;
  for (const char each : url) {
    const auto byte = static_cast<unsigned char>(each);
    if (byte > ' ' && byte < 0x7F && each != '"' && each != '<' && each != '>') {
      out += each;
    } else {
      out += '%';
      out += digits[byte >> 4];
      out += digits[byte & 15];
    }
  }
  return out;
}

std::string part(const Handle& url, CURLUPart which) {
  char* text = nullptr;
  if (curl_url_get(url.get(), which, &text, CURLU_DEFAULT_PORT) != CURLUE_OK) return {};
  std::string out = text;
  curl_free(text);
  return out;
}

}  // namespace

std::optional<WebAddress> WebAddress::parse(const std::string& text) {
  WebAddress address;
  address.text_ = escaped(text);
  const Handle url(curl_url());
  if (curl_url_set(url.get(), CURLUPART_URL, address.text_.c_str(), CURLU_PATH_AS_IS | CURLU_DISALLOW_USER) !=
      CURLUE_OK)
    return {};
  address.scheme_ = part(url, CURLUPART_SCHEME);
  address.host_ = lowerCase(part(url, CURLUPART_HOST));
  address.port_ = part(url, CURLUPART_PORT);
  if (address.host_.empty() || (address.scheme_ != "http" && address.scheme_ != "https")) return {};
  return address;
}

std::optional<WebAddress> WebAddress::resolved(const std::string& reference) const {
  const Handle url(curl_url());
  if (curl_url_set(url.get(), CURLUPART_URL, text_.c_str(), CURLU_PATH_AS_IS) != CURLUE_OK ||
      curl_url_set(url.get(), CURLUPART_URL, escaped(reference).c_str(), 0) != CURLUE_OK)
    return {};
  return parse(part(url, CURLUPART_URL));
}

bool WebAddress::isThisMachine() const {
  in_addr address{};
  return host_ == "localhost" || host_ == "[::1]" ||
         (::inet_pton(AF_INET, host_.c_str(), &address) == 1 && ntohl(address.s_addr) >> 24 == 127);
}

}  // namespace fleetor
