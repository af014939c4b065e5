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

namespace dom = simdjson::dom;
using Fault = std::optional<JSONModelError>;

/// Hands out texts. References to the document's arena are borrowed in one large batch, and what is left is
/// given back at the end, so that a text costs no atomic step.
class TextSource {
 public:
  explicit TextSource(const TextArena* arena) : arena_(arena) { arena_->retain(batch); }
  TextSource(const TextSource&) = delete;
  TextSource& operator=(const TextSource&) = delete;
  ~TextSource() {
    arena_->release(left_);
    if (digits_) digits_->release();
  }

  Text slice(std::string_view text) {
    --left_;
    return Text::adopt(arena_, static_cast<std::uint32_t>(text.data() - arena_->bytes()),
                       static_cast<std::uint32_t>(text.size()));
  }

  /// A text of its own, several to a block.
  Text copy(std::string_view text) {
    if (!digits_ || digitsUsed_ + text.size() > digitsCapacity_) {
      if (digits_) digits_->release();
      digitsCapacity_ = std::max(text.size(), std::min<std::size_t>(digitsCapacity_ * 2, 64 * 1024));
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

  const TextArena* arena_;
  std::uint64_t left_ = batch;
  TextArena* digits_ = nullptr;
  std::size_t digitsUsed_ = 0;
  std::size_t digitsCapacity_ = 32;
};

std::string_view typeText(dom::element_type type) {
  switch (type) {
    case dom::element_type::ARRAY:
      return "array";
    case dom::element_type::OBJECT:
      return "object";
    case dom::element_type::STRING:
      return "string";
    case dom::element_type::BOOL:
      return "boolean";
    case dom::element_type::NULL_VALUE:
      return "null";
    default:
      return "number";
  }
}

/// Integral values up to 2^53 and beyond print without fraction; the plain decimal form is kept as long as it
/// is shorter than anybody's patience, an exponent takes over outside of 1e-5 to 1e17. Always the shortest
/// that reads back the same.
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

  Fault record(dom::element value, const RecordType& type, void* out) {
    dom::object object;
    if (value.get(object))
      return JSONModelError::invalidData(
          "Attempt to initialize JSONModel object using initWithDictionary:error: but the dictionary "
          "parameter was not "
          "an 'NSDictionary'.");

    Found found;
    if (type.hasKeyPaths)
      findByKeyPaths(object, type, found);
    else
      findByKeys(object, type, found);
    if (const std::uint64_t missing = type.required & ~found.present) return missingKeys(type, missing);

    for (std::size_t i = 0; i < type.count; ++i) {
      if (!(found.filled >> i & 1)) continue;
      if (auto fault = fill(found.values[i].element, type, type.properties[i], type.properties[i].at(out)))
        return fault;
    }
    if (type.validate && !type.validate(out)) return JSONModelError::modelIsInvalid();
    return {};
  }

  Fault array(dom::array values, const RecordType& type, void* list) {
    for (const dom::element value : values) {
      const std::size_t made = type.size(list);
      Fault fault;
      if (value.is_object()) {
        fault = record(value, type, type.append(list));
      } else if (value.is_array()) {
        fault = array(dom::array(value), type, list);
      }
      if (fault) {
        // Counts records, not positions: what was skipped in front does not count.
        fault->prependKeyPathIndex(made);
        return fault;
      }
    }
    return {};
  }

 private:
  union Slot {
    Slot() {}
    dom::element element;
  };

  /// What an object holds for each property. `present` counts as there, `filled` has a value in `values`.
  struct Found {
    std::uint64_t present = 0;
    std::uint64_t filled = 0;
    Slot values[64];
  };

  static void findByKeys(dom::object object, const RecordType& type, Found& found) {
    std::size_t expected = 0;
    for (auto field = object.begin(); field != object.end(); ++field) {
      const std::string_view key = field.key();
      std::size_t i = expected;
      for (std::size_t tried = 0; tried < type.count; ++tried) {
        if (i >= type.count) i = 0;
        if (type.properties[i].key == key) {
          found.values[i].element = field.value();
          found.filled |= std::uint64_t{1} << i;
          expected = i + 1;
          break;
        }
        ++i;
      }
    }
    found.present = found.filled;
  }

  static void findByKeyPaths(dom::object object, const RecordType& type, Found& found);

  static JSONModelError missingKeys(const RecordType& type, std::uint64_t missing) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < type.count; ++i)
      if (missing >> i & 1) names.emplace_back(type.properties[i].name);
    return JSONModelError::invalidDataWithMissingKeys(std::move(names));
  }

  Fault fill(dom::element value, const RecordType& type, const PropertyEntry& property, void* member) {
    if (value.is_null()) {
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
        auto fault = record(value, *property.type, property.make(member));
        if (!fault) return {};
        if (!property.isOptional) return at(property, std::move(*fault));
        property.drop(member);
        return {};
      }
      case PropertyKind::array: {
        dom::array values;
        if (value.get(values))
          return JSONModelError::invalidDataWithTypeMismatch(
              "Property '" + std::string(property.name) + "' is declared as NSArray<" +
              std::string(property.type->name) + ">* but the corresponding JSON value is not a JSON Array.");
        void* list = property.make(member);
        property.type->reserve(list, std::min(values.size(), longestReserve));
        preferLargePages(property.type->storage(list),
                         property.type->recordSize * std::min(values.size(), longestReserve));
        if (auto fault = array(values, *property.type, list)) return at(property, std::move(*fault));
        return {};
      }
    }
    return {};
  }

  Fault fillText(dom::element value, const RecordType& type, const PropertyEntry& property, Text& out) {
    char digits[400];
    char* const end = digits + sizeof digits;
    switch (value.type()) {
      case dom::element_type::STRING:
        out = texts_.slice(std::string_view(value));
        return {};
      case dom::element_type::BOOL:
        out = texts_.copy(bool(value) ? "1" : "0");
        return {};
      case dom::element_type::INT64:
        out = texts_.copy({digits, std::to_chars(digits, end, std::int64_t(value)).ptr});
        return {};
      case dom::element_type::UINT64:
        out = texts_.copy({digits, std::to_chars(digits, end, std::uint64_t(value)).ptr});
        return {};
      case dom::element_type::DOUBLE:
        out = texts_.copy({digits, doubleText(double(value), digits, end)});
        return {};
      default:
        return notSupported(value, type, property);
    }
  }

  static Fault fillInteger(dom::element value, const RecordType& type, const PropertyEntry& property,
                           std::int64_t& out) {
    switch (value.type()) {
      case dom::element_type::STRING:
        out = integerValue(std::string_view(value));
        return {};
      case dom::element_type::BOOL:
        out = bool(value) ? 1 : 0;
        return {};
      case dom::element_type::INT64:
        out = std::int64_t(value);
        return {};
      case dom::element_type::UINT64:
        out = std::numeric_limits<std::int64_t>::max();
        return {};
      case dom::element_type::DOUBLE:
        out = integerPart(double(value));
        return {};
      default:
        return notSupported(value, type, property);
    }
  }

  /// An object or array under a key that takes text or a number. It is the service's mistake, so it is an
  /// error like any other and never stops the program.
  static JSONModelError notSupported(dom::element value, const RecordType& type,
                                     const PropertyEntry& property) {
    return at(property,
              JSONModelError::invalidData(std::string(typeText(value.type())) + " type not supported for " +
                                          std::string(type.name) + "." + std::string(property.name)));
  }

  static JSONModelError at(const PropertyEntry& property, JSONModelError error) {
    error.prependKeyPathComponent(property.name);
    return error;
  }

  // An input that promises many records by a long list of nulls must not cost memory.
  static constexpr std::size_t longestReserve = std::size_t{1} << 18;

  TextSource& texts_;
};

/// The value at the end of a path of keys, if there is one. Of duplicate keys, the last.
std::optional<dom::element> valueAtKeyPath(dom::object object, std::string_view path) {
  const auto dot = path.find('.');
  std::optional<dom::element> last;
  for (auto field = object.begin(); field != object.end(); ++field)
    if (field.key() == path.substr(0, dot)) last = field.value();
  if (!last || dot == path.npos) return last;
  dom::object inner;
  if (last->get(inner)) return std::nullopt;
  return valueAtKeyPath(inner, path.substr(dot + 1));
}

void Mapper::findByKeyPaths(dom::object object, const RecordType& type, Found& found) {
  for (std::size_t i = 0; i < type.count; ++i) {
    if (const auto value = valueAtKeyPath(object, type.properties[i].key)) {
      found.values[i].element = *value;
      found.filled |= std::uint64_t{1} << i;
    }
  }
  found.present = found.filled;
}

}  // namespace

Fault mapRecord(JSONValue value, const RecordType& type, void* record) {
  if (value.isNil()) return JSONModelError::inputIsNil();
  TextSource texts(value.document()->arena());
  return Mapper(texts).record(value.document()->root(), type, record);
}

Fault mapArray(JSONValue value, const RecordType& type, void* records) {
  TextSource texts(value.document()->arena());
  dom::array values;
  if (value.document()->root().get(values))
    return JSONModelError::invalidDataWithTypeMismatch("The JSON value is not a JSON Array.");
  return Mapper(texts).array(values, type, records);
}

}  // namespace fleetor::json
