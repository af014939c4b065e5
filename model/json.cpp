#include "model/json.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include "model/json_document.h"
#include "model/large_pages.h"

namespace fleetor {

namespace {

using json::Node;

// `Indexer` reads the tokens as simdjson's first stage leaves them, with two places of the end behind them.
// Tested with 3.0.
static_assert(simdjson::SIMDJSON_VERSION_MAJOR == 3,
              "compare what stage1 of this simdjson leaves with `Indexer`, run the tests of model/ and "
              "fuzz_envelopes, then allow its version here");

constexpr std::size_t deepestNesting = 1024;
constexpr std::uint32_t mostTokens = 1U << 24;  // values, keys and punctuation marks
static_assert(longestJSON <= Node::mostPlaces && mostTokens <= Node::mostPlaces);

template <class T>
bool holds(std::string_view number) {
  T value = 0;
  return std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc();
}

/// Of a number beyond the range of double: false when it is too near to 0.
bool isTooLarge(std::string_view number) {
  const auto mark = std::min(number.find_first_of("eE"), number.size());
  const auto point = std::min(number.find('.'), mark);
  const auto digit = number.find_first_of("123456789");
  std::int64_t exponent = 0;
  if (mark < number.size()) {
    const auto text = number.substr(number[mark + 1] == '+' ? mark + 2 : mark + 1);
    if (std::from_chars(text.data(), text.data() + text.size(), exponent).ec != std::errc())
      return text.front() != '-';
  }
  return static_cast<std::int64_t>(point) - static_cast<std::int64_t>(digit) + exponent > 0;
}

/// Nothing when it is no number, or one that is too large for a double.
std::optional<Node::Kind> kindOfNumber(std::string_view token) {
  const char* at = token.data();
  const char* const end = at + token.size();
  const auto is = [&](char one, char other) { return at != end && (*at == one || *at == other); };
  const auto digits = [&] {
    const char* const first = at;
    while (at != end && *at >= '0' && *at <= '9')
      ++at;
    return at - first;
  };
  if (is('-', '-')) ++at;
  const bool beginsWithZero = is('0', '0');
  const auto whole = digits();
  if (whole == 0 || (beginsWithZero && whole > 1)) return {};
  if (at == end && (whole < 19 || holds<std::int64_t>(token))) return Node::integer;
  if (at == end && holds<std::uint64_t>(token)) return Node::unsignedInteger;
  if (is('.', '.')) {
    ++at;
    if (digits() == 0) return {};
  }
  if (is('e', 'E')) {
    ++at;
    if (is('+', '-')) ++at;
    if (digits() == 0) return {};
  }
  if (at != end || (!holds<double>(token) && isTooLarge(token))) return {};
  return Node::real;
}

/// The end of what was written, or null. Some versions ask whether a lone surrogate is replaced.
template <class Parser>
std::uint8_t* unescape(const Parser& parser, const std::uint8_t* text, std::uint8_t* out) {
  if constexpr (requires { parser.parse_string(text, out); })
    return parser.parse_string(text, out);
  else
    return parser.parse_string(text, out, false);
}

/// Checks the grammar of a document whose tokens the parser has found, resolves the escapes of its texts in
/// place, and turns the places of the tokens into the words of `Node`, in the same memory too: no value has
/// more words than there are tokens up to the one behind it.
class Indexer {
 public:
  /// What is large or rarely needed: apart, so that the indexer itself stays in registers.
  struct Room {
    struct Container {
      std::size_t word;
      std::uint32_t members;
      char closing;
    };
    std::array<Container, deepestNesting> containers;
    std::string unescaped;
  };

  Indexer(std::string& bytes, const simdjson::internal::dom_parser_implementation& parser, Room& room)
      : bytes_(bytes.data()),
        size_(bytes.size()),
        words_(parser.structural_indexes.get()),
        tokens_(parser.n_structural_indexes),
        parser_(parser),
        containers_(room.containers.data()),
        unescaped_(room.unescaped) {}

  /// False when the document is malformed, or neither an object nor an array.
  bool run() {
    take();
    if (token_ != '{' && token_ != '[') return false;
    do {
      if (keyIsDue_ && token_ != '"') return false;
      if (token_ == '"') {
        if (!text()) return false;
        if (keyIsDue_) {
          if (token_ != ':') return false;
          take();
          keyIsDue_ = false;
          continue;
        }
      } else if (token_ == '{' || token_ == '[') {
        const char closing = token_ == '{' ? '}' : ']';
        const Node::Kind kind = token_ == '{' ? Node::object : Node::array;
        take();
        if (token_ != closing) {
          if (depth_ == deepestNesting) return false;
          containers_[depth_++] = {written_, 0, closing};
          write(kind, 0);
          keyIsDue_ = kind == Node::object;
          continue;
        }
        take();
        write(kind, 1);
        words_[written_++] = 0;
      } else if (!scalar()) {
        return false;
      }
      if (!endMember()) return false;
    } while (depth_ > 0);
    return taken_ == tokens_ + 1;
  }

 private:
  static constexpr std::size_t searchedAtOnce = 4096;

  /// The next token. Behind the last one stands the zero byte behind the document.
  void take() {
    place_ = words_[taken_++];
    token_ = bytes_[place_];
  }
  void write(Node::Kind kind, std::size_t place) { words_[written_++] = Node::word(kind, place); }

  // Each of these begins at its first token and ends at the one behind it.

  bool text() {
    const std::size_t first = place_ + 1;
    take();
    std::size_t last = place_ - 1;
    while (bytes_[last] != '"')
      --last;
    std::size_t length = last - first;
    if (plain_ < last) {
      const std::size_t from = std::max(plain_, first);
      const std::size_t to = std::min(std::max(last, from + searchedAtOnce), size_);
      const void* const escape = std::memchr(bytes_ + from, '\\', to - from);
      plain_ = escape ? static_cast<std::size_t>(static_cast<const char*>(escape) - bytes_) : to;
    }
    if (plain_ < last) {
      unescaped_.resize(length + simdjson::SIMDJSON_PADDING);
      auto* const out = reinterpret_cast<std::uint8_t*>(unescaped_.data());
      const auto* const behind = unescape(parser_, reinterpret_cast<std::uint8_t*>(bytes_ + first), out);
      if (!behind) return false;
      length = static_cast<std::size_t>(behind - out);
      std::memcpy(bytes_ + first, out, length);
    }
    write(Node::text, first);
    words_[written_++] = static_cast<std::uint32_t>(length);
    return true;
  }

  bool scalar() {
    const std::size_t first = place_;
    take();
    std::string_view token(bytes_ + first, place_ - first);
    token = token.substr(0, token.find_last_not_of(" \t\n\r") + 1);
    const auto kind = token == "null"    ? Node::null
                      : token == "true"  ? Node::yes
                      : token == "false" ? Node::no
                                         : kindOfNumber(token);
    if (kind) write(*kind, first);
    return kind.has_value();
  }

  /// The next value, or the end of the document.
  bool endMember() {
    while (depth_ > 0) {
      Room::Container& container = containers_[depth_ - 1];
      ++container.members;
      if (token_ == ',') {
        take();
        keyIsDue_ = container.closing == '}';
        return true;
      }
      if (token_ != container.closing) return false;
      take();
      words_[container.word] |= static_cast<std::uint32_t>(written_ - container.word);
      words_[written_++] = container.members;
      --depth_;
    }
    return true;
  }

  char* const bytes_;
  const std::size_t size_;
  std::uint32_t* const words_;
  const std::size_t tokens_;
  const simdjson::internal::dom_parser_implementation& parser_;
  Room::Container* const containers_;
  std::string& unescaped_;

  char token_ = 0;  // the one taken last, its place, and how many were taken
  std::size_t place_ = 0;
  std::size_t taken_ = 0;
  std::size_t written_ = 0;
  std::size_t plain_ = 0;  // no text has an escape from the latest one up to here
  std::size_t depth_ = 0;
  bool keyIsDue_ = false;
};

}  // namespace

Result<JSONValue> decodeJSON(std::string bytes) {
  const auto refused = [&bytes]() -> Result<JSONValue> {
    if (!simdjson::validate_utf8(bytes)) return JSONValue();
    return JSONModelError::badJSON();
  };
  if (bytes.size() > longestJSON) return refused();
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
  bytes.reserve(bytes.size() + simdjson::SIMDJSON_PADDING);
  simdjson::dom::parser owner;
  const std::size_t capacity = std::max<std::size_t>(bytes.size(), 64);
  if (owner.allocate(capacity, 1)) return JSONModelError::badJSON();
  auto& parser = *owner.implementation;
  json::preferLargePages(parser.structural_indexes.get(), capacity * sizeof(std::uint32_t));
  const auto* const text = reinterpret_cast<const std::uint8_t*>(bytes.data());
  if (parser.stage1(text, bytes.size(), simdjson::stage1_mode::regular)) return refused();
  Indexer::Room room;
  if (parser.n_structural_indexes > mostTokens || !Indexer(bytes, parser, room).run())
    return JSONModelError::badJSON();
  return JSONValue(
      std::make_shared<const json::Document>(std::move(parser.structural_indexes), std::move(bytes)));
}

bool JSONValue::isObject() const {
  return document_ && json::Node::root(*document_).kind() == json::Node::object;
}
bool JSONValue::isArray() const {
  return document_ && json::Node::root(*document_).kind() == json::Node::array;
}

}  // namespace fleetor
