#include "model/json.h"

#include <charconv>

#include "model/json_document.h"

namespace fleetor {

namespace {

constexpr std::size_t longestBody = std::size_t{1} << 31;  // so that every offset of a text fits in 32 bits
constexpr std::size_t deepestNesting = 1024;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// The parser refuses integers beyond 64 bits. Gives every one of them an exponent, which makes it a double.
std::string withLongIntegersAsDoubles(std::string_view json) {
  std::string out;
  out.reserve(json.size() + simdjson::SIMDJSON_PADDING + json.size() / 16);
  bool inText = false;
  for (std::size_t i = 0; i < json.size(); ++i) {
    const char c = json[i];
    out += c;
    if (inText) {
      if (c == '\\' && i + 1 < json.size()) out += json[++i];
      if (c == '"') inText = false;
    } else if (c == '"') {
      inText = true;
    } else if (isDigit(c)) {
      const std::size_t first = i;
      while (i + 1 < json.size() && isDigit(json[i + 1]))
        out += json[++i];
      const char next = i + 1 < json.size() ? json[i + 1] : ' ';
      const char previous = first > 0 ? json[first - 1] : ' ';
      const bool isInteger =
          next != '.' && next != 'e' && next != 'E' && previous != '.' && previous != '+' &&
          previous != 'e' && previous != 'E' &&
          !(previous == '-' && first > 1 && (json[first - 2] == 'e' || json[first - 2] == 'E'));
      if (isInteger && i + 1 - first >= 19) out += "e0";
    }
  }
  return out;
}

/// Parses in place a body that may begin with a byte-order mark.
simdjson::error_code parse(std::string& bytes, simdjson::dom::document& parsed) {
  const std::size_t mark = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0;
  bytes.reserve(bytes.size() + simdjson::SIMDJSON_PADDING);
  simdjson::dom::parser parser;
  if (const auto error = parser.allocate(0, deepestNesting)) return error;
  return parser.parse_into_document(parsed, bytes.data() + mark, bytes.size() - mark, false).error();
}

}  // namespace

Result<JSONValue> decodeJSON(std::string bytes) {
  if (bytes.size() > longestBody) return JSONModelError::badJSON();
  simdjson::dom::document parsed;
  simdjson::error_code error = parse(bytes, parsed);
  if (error == simdjson::NUMBER_ERROR) {
    bytes = withLongIntegersAsDoubles(bytes);
    error = parse(bytes, parsed);
  }
  if (error) return JSONModelError::badJSON();
  const auto root = parsed.root();
  if (!root.is_object() && !root.is_array()) return JSONModelError::badJSON();
  return JSONValue(std::make_shared<const json::Document>(std::move(parsed)));
}

bool JSONValue::isObject() const {
  return document_ && document_->root().is_object();
}
bool JSONValue::isArray() const {
  return document_ && document_->root().is_array();
}

}  // namespace fleetor
