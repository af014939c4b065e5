#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "model/json_model_error.h"

namespace fleetor {

namespace json {
class Document;
}

/// A decoded JSON document whose top level is an object or an array; or nothing (nil) when made without one.
/// A cheap handle on immutable memory: copies share it, any thread may read it. The texts of the records that
/// were mapped from it stay valid after the last handle is gone.
class JSONValue {
 public:
  JSONValue() = default;
  explicit JSONValue(std::shared_ptr<const json::Document> document) : document_(std::move(document)) {}

  bool isNil() const { return document_ == nullptr; }
  bool isObject() const;
  bool isArray() const;

  const json::Document* document() const { return document_.get(); }

 private:
  std::shared_ptr<const json::Document> document_;
};

inline constexpr std::size_t longestJSON = std::size_t{64} << 20;  // bytes

/// Decodes one JSON text in UTF-8. Bytes that are not UTF-8 decode to nothing (nil); any other failure is the
/// error `badJSON`. Any thread, nothing is shared between calls. Hand the body over with std::move: it is
/// read in place, and the texts of the records lie in it.
///
/// What is accepted beside the plain cases:
/// - a byte-order mark in front is skipped;
/// - of duplicate keys in one object, the last wins;
/// - an integer beyond 64 bits is read as the text of its digits; a number beyond the range of double is
/// malformed;
/// - nesting up to 1,024 levels, an empty innermost one not counted; deeper is malformed;
/// - bodies up to `longestJSON`, with up to 16,777,216 values, keys and punctuation marks; beyond that it is
///   malformed. The latter keeps the memory that a document takes within five times the longest body.
/// Malformed: an empty body, a top level that is neither object nor array, a lone surrogate escape, anything
/// after the end.
Result<JSONValue> decodeJSON(std::string bytes);

}  // namespace fleetor
