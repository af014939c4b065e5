#include "model/json.h"

#include <algorithm>
#include <charconv>

#include "model/json_document.h"
#include "model/large_pages.h"

namespace fleetor {

namespace {

static_assert(longestJSON < std::size_t{1} << 31);  // so that every offset of a text fits in 32 bits
constexpr std::size_t deepestNesting = 1024;

// Values, keys and punctuation marks. Each takes up to 12 bytes while the document is read.
constexpr std::uint32_t mostTokens = 1U << 24;

/// An integer that neither 64-bit kind can hold, and a double can.
bool isLongInteger(std::string_view token) {
  const std::string_view digits = token.substr(token.front() == '-' ? 1 : 0);
  if (digits.size() < 19 || digits.front() == '0' ||
      digits.find_first_not_of("0123456789") != std::string_view::npos)
    return false;
  const auto isReadAs = [&token](auto number) {
    return std::from_chars(token.data(), token.data() + token.size(), number).ec == std::errc();
  };
  return !isReadAs(std::int64_t{}) && !isReadAs(std::uint64_t{}) && isReadAs(double{});
}

bool isInNumber(char each) {
  return (each >= '0' && each <= '9') || each == '-' || each == '+' || each == '.' || each == 'e' ||
         each == 'E';
}

/// Whether a key of an object ends before `rest`.
bool isBeforeColon(std::string_view rest) {
  const auto next = rest.find_first_not_of(" \t\r\n");
  return next != std::string_view::npos && rest[next] == ':';
}

/// The parser refuses a document that holds integers beyond 64 bits. Writes each of them as a text.
std::string withLongIntegersAsTexts(std::string_view json) {
  std::string out;
  out.reserve(json.size() + json.size() / 9 + simdjson::SIMDJSON_PADDING);
  std::size_t copied = 0;
  bool inText = false;
  for (std::size_t i = 0; i < json.size(); ++i) {
    if (json[i] == '"') inText = !inText;
    if (inText && json[i] == '\\') ++i;
    if (inText || !isInNumber(json[i])) continue;
    const std::size_t first = i;
    while (i + 1 < json.size() && isInNumber(json[i + 1]))
      ++i;
    const auto token = json.substr(first, i + 1 - first);
    if (!isLongInteger(token) || isBeforeColon(json.substr(i + 1))) continue;
    out.append(json.substr(copied, first - copied)).append("\"").append(token).append("\"");
    copied = i + 1;
  }
  out += json.substr(copied);
  return out;
}

/// Parses in place a body that may begin with a byte-order mark.
simdjson::error_code parse(std::string& bytes, simdjson::dom::document& parsed) {
  const std::size_t mark = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0;
  bytes.reserve(bytes.size() + simdjson::SIMDJSON_PADDING);
  simdjson::dom::parser parser;
  const std::size_t size = bytes.size() - mark;
  const std::size_t capacity = std::max<std::size_t>(size, 64);
  if (const auto error = parser.allocate(capacity, deepestNesting + 1)) return error;
  if (const auto error = parsed.allocate(capacity)) return error;
  json::preferLargePages(parser.implementation->structural_indexes.get(), capacity * sizeof(std::uint32_t));
  json::preferLargePages(parsed.tape.get(), capacity * sizeof(std::uint64_t));
  json::preferLargePages(parsed.string_buf.get(), capacity);
  auto& reader = *parser.implementation;
  const auto* const text = reinterpret_cast<const std::uint8_t*>(bytes.data() + mark);
  if (const auto error = reader.stage1(text, size, simdjson::stage1_mode::regular)) return error;
  if (reader.n_structural_indexes > mostTokens) return simdjson::CAPACITY;
  return reader.stage2(parsed);
}

}  // namespace

Result<JSONValue> decodeJSON(std::string bytes) {
  if (bytes.size() > longestJSON) return JSONModelError::badJSON();
  simdjson::dom::document parsed;
  simdjson::error_code error = parse(bytes, parsed);
  if (error == simdjson::NUMBER_ERROR) {
    bytes = withLongIntegersAsTexts(bytes);
    error = parse(bytes, parsed);
  }
  if (error) return JSONModelError::badJSON();
  const auto root = parsed.root();
  if (!root.is_object() && !root.is_array()) return JSONModelError::badJSON();
  return JSONValue(std::make_shared<const json::Document>(std::move(parsed)));
}

bool JSONValue::isObject() const {
  return document_ && json::Node::root(*document_).kind() == json::Node::object;
}
bool JSONValue::isArray() const {
  return document_ && json::Node::root(*document_).kind() == json::Node::array;
}

}  // namespace fleetor
