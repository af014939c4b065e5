#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fleetor::demo {

// A request as the service sees it, free of any HTTP library.
struct ServiceRequest {
  std::string verb;
  std::string path;
  std::string query;  // without the question mark, as it was sent
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;

  // The header's value whatever the case of its name; empty when missing.
  std::string_view header(std::string_view name) const;
};

// How a reply leaves the house.
enum class Delivery {
  whole,
  never,     // nothing is ever sent; the connection stays open
  cutShort,  // the whole length is announced, `deliverBytes` are sent, and the connection is closed
};

struct ServiceReply {
  int status = 200;
  std::string contentType = "application/json; charset=utf-8";
  std::vector<std::pair<std::string, std::string>> headers;  // beside the content's type and length
  std::string body;
  Delivery delivery = Delivery::whole;
  std::size_t deliverBytes = 0;
  int delayMilliseconds = 0;
};

using Parameters = std::map<std::string, std::string, std::less<>>;

// "a=1&b=two%20words": percent escapes and plus signs undone, the first of a repeated key kept.
Parameters parseParameters(std::string_view text);

// A whole decimal number, an optional minus before it, that fits.
std::optional<long long> parseNumber(std::string_view text);

}  // namespace fleetor::demo
