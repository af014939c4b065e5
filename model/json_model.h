#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/json.h"
#include "model/json_model_error.h"
#include "model/property_table.h"

namespace fleetor {

namespace json {
/// Fills `record`, which must be in its initial state, from the document's top-level object.
std::optional<JSONModelError> mapRecord(JSONValue value, const RecordType& type, void* record);
/// Appends the records of the document's top-level array to `records`, a std::vector of the type.
std::optional<JSONModelError> mapArray(JSONValue value, const RecordType& type, void* records);
std::string writeRecord(const RecordType& type, const void* record);
}  // namespace json

/// Two ways of spelling a property: as JSON key and as property name.
struct JSONKeyMapper {
  using Map = std::string_view (*)(std::string_view);
  Map JSONToModelKey;
  Map modelToJSONKey;
};

/// Base of every record: turns decoded JSON into records and records into JSON, guided by the record's
/// property table (property_table.h). The tables are constants, so every operation may be called from any
/// thread at any time.
///
/// A record may hide `keyMapper` to rename keys and `validate` to refuse what was filled.
class JSONModel {
 public:
  /// Maps a decoded object. A failure never yields a half-filled record. Hand the value over with std::move
  /// when it is not needed any more: its memory is freed on the way.
  template <class R>
  static Result<R> initWithDictionary(JSONValue value) {
    R record;
    if (auto error = json::mapRecord(std::move(value), json::recordType<R>, &record))
      return *std::move(error);
    return record;
  }

  /// Maps a decoded array; nothing and no error for nil.
  template <class R>
  static Result<std::optional<std::vector<R>>> arrayOfModelsFromDictionaries(JSONValue value) {
    if (value.isNil()) return std::optional<std::vector<R>>();
    std::vector<R> records;
    if (auto error = json::mapArray(std::move(value), json::recordType<R>, &records))
      return *std::move(error);
    return std::optional(std::move(records));
  }

  /// The record as a JSON text. A property that is not set is left out when it is optional and null when it
  /// is required.
  template <class R>
  static std::string toJSONString(const R& record) {
    return json::writeRecord(json::recordType<R>, &record);
  }

  static constexpr std::optional<JSONKeyMapper> keyMapper() { return std::nullopt; }
  bool validate() const { return true; }
};

/// Records are equal when all their properties are.
template <std::derived_from<JSONModel> R>
bool operator==(const R& a, const R& b) {
  return std::apply([&](auto... property) { return (... && (a.*property.member == b.*property.member)); },
                    propertiesOf<R>);
}

/// Common base of the records of this application and of the envelopes that carry them.
struct APIModel : JSONModel {};

}  // namespace fleetor
