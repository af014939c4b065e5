#include "model/json_model.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "model/json_document.h"
#include "model/large_pages.h"

namespace fleetor::json {

namespace {

using Failure = std::optional<JSONModelError>;

/// Hands out texts. References to the document's arena are borrowed in one large batch, and what is left is
/// given back at the end, so that a text costs no atomic step.
class TextSource {
 public:
  explicit TextSource(const DocumentArena* arena) : arena_(arena) { arena_->retain(batch); }
  TextSource(const TextSource&) = delete;
  TextSource& operator=(const TextSource&) = delete;
  ~TextSource() {
    arena_->release(left_);
    if (digits_) digits_->release();
  }

  Text slice(Node node) { return slice(node, node.textLength()); }
  Text slice(Node node, std::size_t length) {
    --left_;
    return Text::adopt(arena_, node.place(), static_cast<std::uint32_t>(length));
  }

  /// The bytes of a text or key; at least 64 more may be read behind them.
  std::string_view view(Node node) const { return {arena_->bytes() + node.place(), node.textLength()}; }

  /// 0 for what is too near to it.
  template <class T>
  T number(Node node) const {
    const char* const digits = arena_->bytes() + node.place();
    T value = *digits == '-' ? T(-0.0) : T(0);
    std::from_chars(digits, arena_->end(), value);
    return value;
  }

  /// Of a number: its length when it is written as an integer, else 0.
  std::size_t digitsOf(Node node) const {
    const char* const first = arena_->bytes() + node.place();
    const char* const last = std::find_if(first + (*first == '-' ? 1 : 0), arena_->end(),
                                          [](char each) { return each < '0' || each > '9'; });
    const bool isInteger = last == arena_->end() || (*last != '.' && *last != 'e' && *last != 'E');
    return isInteger ? static_cast<std::size_t>(last - first) : 0;
  }

  /// A copied text; several share a block.
  Text copy(std::string_view text) {
    if (!digits_ || digitsUsed_ + text.size() > digitsCapacity_) {
      if (digits_) digits_->release();
      digitsCapacity_ =
          std::max(text.size(), std::min<std::size_t>(digitsCapacity_ * 2, std::size_t{64} << 10));
      digits_ = TextArena::make(digitsCapacity_);
      digitsUsed_ = 0;
    }
    std::memcpy(digits_->writableBytes() + digitsUsed_, text.data(), text.size());
    digits_->retain();
    const auto offset = static_cast<std::uint32_t>(digitsUsed_);
    digitsUsed_ += text.size();
    return Text::adopt(digits_, offset, static_cast<std::uint32_t>(text.size()));
  }

 private:
  static constexpr std::uint64_t batch = std::uint64_t{1} << 40;

  const DocumentArena* arena_;
  std::uint64_t left_ = batch;
  TextArena* digits_ = nullptr;
  std::size_t digitsUsed_ = 0;
  std::size_t digitsCapacity_ = 32;
};

std::string_view typeText(Node::Kind kind) {
  switch (kind) {
    case Node::array:
      return "array";
    case Node::object:
      return "object";
    case Node::text:
      return "string";
    case Node::yes:
    case Node::no:
      return "boolean";
    case Node::null:
      return "null";
    default:
      return "number";
  }
}

/// Compares the first eight bytes, which is the whole of most keys, in one step.
bool matches(const PropertyEntry& property, std::string_view key) {
  if (property.key.size() != key.size()) return false;
  std::uint64_t word = 0;
  std::memcpy(&word, key.data(), sizeof word);
  if ((word ^ property.keyWord) & property.keyMask) return false;
  return key.size() <= sizeof word || property.key.substr(sizeof word) == key.substr(sizeof word);
}

/// The shortest text that reads back the same: without fraction when there is none (42.0 gives 42), plain
/// from 1e-5 up to 1e17, with an exponent outside.
std::size_t doubleText(double value, char* out, char* end) {
  const double size = std::fabs(value);
  const bool plain = size == 0 || (size >= 1e-5 && size < 1e17);
  const auto written = plain ? std::to_chars(out, end, value, std::chars_format::fixed)
                             : std::to_chars(out, end, value, std::chars_format::scientific);
  return static_cast<std::size_t>(written.ptr - out);
}

/// Cuts the fraction off; what does not fit becomes the nearest limit.
std::int64_t integerPart(double value) {
  constexpr double limit = 9223372036854775808.0;  // 2^63
  if (value >= limit) return std::numeric_limits<std::int64_t>::max();
  if (value < -limit) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(value);
}

class Mapper {
 public:
  explicit Mapper(TextSource& texts) : texts_(texts) {}

  Failure record(Node value, const RecordType& type, void* out) {
    if (value.kind() != Node::object)
      return JSONModelError::invalidData(
          "Attempt to initialize JSONModel object using initWithDictionary:error: but the dictionary "
          "parameter was not "
          "an 'NSDictionary'.");

    Found found;
    if (type.hasKeyPaths)
      findByKeyPaths(value, type, found);
    else
      findByKeys(value, type, found);
    if (const std::uint64_t missing = type.required & ~found.filled) return missingKeys(type, missing);

    for (std::size_t i = 0; i < type.count; ++i) {
      if (!(found.filled >> i & 1)) continue;
      const auto& property = type.properties[i];
      const Node node(found.values[i]);
      // Fast path: almost every property is a text.
      if (property.kind == PropertyKind::text && node.kind() == Node::text)
        *static_cast<Text*>(property.at(out)) = texts_.slice(node);
      else if (auto failure = fill(node, type, property, property.at(out)))
        return failure;
    }
    if (type.validate && !type.validate(out)) return JSONModelError::modelIsInvalid();
    return {};
  }

  Failure array(Node values, const RecordType& type, void* list) {
    for (Node value = values.first(); value != values.end(); value = value.next()) {
      const std::size_t made = type.size(list);
      Failure failure;
      if (value.kind() == Node::object) {
        failure = record(value, type, type.append(list));
      } else if (value.kind() == Node::array) {
        failure = array(value, type, list);
      }
      if (failure) {
        // Counts records, not positions: what was skipped in front does not count.
        failure->prependKeyPathIndex(made);
        return failure;
      }
    }
    return {};
  }

 private:
  /// Where an object holds each property. Bit i of `filled`: there is a value, at the word `values[i]`.
  struct Found {
    std::uint64_t filled = 0;
    const std::uint32_t* values[64];
  };

  void findByKeys(Node object, const RecordType& type, Found& found) const {
    std::size_t expected = 0;
    const Node end = object.end();
    for (Node key = object.first(); key != end;) {
      const std::string_view name = texts_.view(key);
      const Node value = key.ofKey();
      std::size_t i = expected;
      for (std::size_t tried = 0; tried < type.count; ++tried, ++i) {
        if (i >= type.count) i = 0;
        if (!matches(type.properties[i], name)) continue;
        found.values[i] = value.word();
        found.filled |= std::uint64_t{1} << i;
        expected = i + 1;
        break;
      }
      key = value.next();
    }
  }

  void findByKeyPaths(Node object, const RecordType& type, Found& found) const {
    for (std::size_t i = 0; i < type.count; ++i) {
      if (const auto value = valueAtKeyPath(object, type.properties[i].key)) {
        found.values[i] = value->word();
        found.filled |= std::uint64_t{1} << i;
      }
    }
  }

  /// The value at the end of a path of keys, if there is one. Of duplicate keys, the last.
  std::optional<Node> valueAtKeyPath(Node object, std::string_view path) const {
    const auto dot = path.find('.');
    std::optional<Node> last;
    for (Node key = object.first(); key != object.end(); key = key.ofKey().next())
      if (texts_.view(key) == path.substr(0, dot)) last = key.ofKey();
    if (!last || dot == std::string_view::npos) return last;
    if (last->kind() != Node::object) return std::nullopt;
    return valueAtKeyPath(*last, path.substr(dot + 1));
  }

  static JSONModelError missingKeys(const RecordType& type, std::uint64_t missing) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < type.count; ++i)
      if (missing >> i & 1) names.emplace_back(type.properties[i].name);
    return JSONModelError::invalidDataWithMissingKeys(std::move(names));
  }

  Failure fill(Node value, const RecordType& type, const PropertyEntry& property, void* member) {
    if (value.kind() == Node::null) {
      if (property.isOptional) return {};
      return at(property, JSONModelError::invalidData("Value of required model key " +
                                                      std::string(property.name) + " is null"));
    }
    switch (property.kind) {
      case PropertyKind::text:
        return fillText(value, type, property, *static_cast<Text*>(member));
      case PropertyKind::integer:
        return fillInteger(value, type, property, *static_cast<std::int64_t*>(member));
      case PropertyKind::record: {
        auto failure = record(value, *property.type, property.make(member));
        if (!failure) return {};
        if (!property.isOptional) return at(property, std::move(*failure));
        property.drop(member);
        return {};
      }
      case PropertyKind::array: {
        if (value.kind() != Node::array)
          return JSONModelError::invalidDataWithTypeMismatch(
              "Property '" + std::string(property.name) + "' is declared as NSArray<" +
              std::string(property.type->name) + ">* but the corresponding JSON value is not a JSON Array.");
        void* list = property.make(member);
        property.type->reserve(list, std::min<std::size_t>(value.count(), longestReserve));
        preferLargePages(property.type->storage(list),
                         property.type->recordSize * std::min<std::size_t>(value.count(), longestReserve));
        if (auto failure = array(value, *property.type, list)) return at(property, std::move(*failure));
        return {};
      }
    }
    return {};
  }

  Failure fillText(Node value, const RecordType& type, const PropertyEntry& property, Text& out) {
    char digits[400];
    char* const end = digits + sizeof digits;
    switch (value.kind()) {
      case Node::text:
        out = texts_.slice(value);
        return {};
      case Node::yes:
        out = texts_.copy("1");
        return {};
      case Node::no:
        out = texts_.copy("0");
        return {};
      case Node::integer:
        out = texts_.copy({digits, std::to_chars(digits, end, texts_.number<std::int64_t>(value)).ptr});
        return {};
      case Node::unsignedInteger:
        out = texts_.copy({digits, std::to_chars(digits, end, texts_.number<std::uint64_t>(value)).ptr});
        return {};
      case Node::real:
        if (const std::size_t length = texts_.digitsOf(value)) {  // an integer beyond 64 bits
          out = texts_.slice(value, length);
          return {};
        }
        out = texts_.copy({digits, doubleText(texts_.number<double>(value), digits, end)});
        return {};
      default:
        return notSupported(value, type, property);
    }
  }

  Failure fillInteger(Node value, const RecordType& type, const PropertyEntry& property,
                      std::int64_t& out) const {
    switch (value.kind()) {
      case Node::text:
        out = integerValue(texts_.view(value));
        return {};
      case Node::yes:
        out = 1;
        return {};
      case Node::no:
        out = 0;
        return {};
      case Node::integer:
        out = texts_.number<std::int64_t>(value);
        return {};
      case Node::unsignedInteger:
        out = std::numeric_limits<std::int64_t>::max();
        return {};
      case Node::real:
        out = integerPart(texts_.number<double>(value));
        return {};
      default:
        return notSupported(value, type, property);
    }
  }

  /// An object or array where a text or a number is expected.
  static JSONModelError notSupported(Node value, const RecordType& type, const PropertyEntry& property) {
    return at(property,
              JSONModelError::invalidData(std::string(typeText(value.kind())) + " type not supported for " +
                                          std::string(type.name) + "." + std::string(property.name)));
  }

  static JSONModelError at(const PropertyEntry& property, JSONModelError error) {
    error.prependKeyPathComponent(property.name);
    return error;
  }

  // A long list of nulls must not reserve memory for as many records.
  static constexpr std::size_t longestReserve = std::size_t{1} << 18;

  TextSource& texts_;
};

}  // namespace

Failure mapRecord(JSONValue value, const RecordType& type, void* record) {
  if (value.isNil()) return JSONModelError::inputIsNil();
  TextSource texts(value.document()->arena());
  return Mapper(texts).record(Node::root(*value.document()), type, record);
}

Failure mapArray(JSONValue value, const RecordType& type, void* records) {
  TextSource texts(value.document()->arena());
  const Node values = Node::root(*value.document());
  if (values.kind() != Node::array)
    return JSONModelError::invalidDataWithTypeMismatch("The JSON value is not a JSON Array.");
  return Mapper(texts).array(values, type, records);
}

}  // namespace fleetor::json
