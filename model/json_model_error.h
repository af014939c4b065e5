#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace fleetor {

enum class JSONModelErrorCode : long {
  invalidData = 1,
  badResponse = 2,
  badJSON = 3,
  modelIsInvalid = 4,
  nilInput = 5,
};

inline constexpr std::string_view kJSONModelErrorDomain = "JSONModelErrorDomain";

/// Why an input did not become a record. A plain value.
struct JSONModelError {
  JSONModelErrorCode code = JSONModelErrorCode::invalidData;
  std::string description;

  // Extra entries, by the names that they have among the error's user information.
  std::optional<std::vector<std::string>> kJSONModelMissingKeys;  ///< property names, in table order
  std::optional<std::string> kJSONModelTypeMismatch;
  std::optional<std::string> kJSONModelKeyPath;  ///< where in the input, for instance vehicles[3].name

  std::string_view domain() const { return kJSONModelErrorDomain; }

  static JSONModelError invalidData(std::string_view message);
  static JSONModelError invalidDataWithMissingKeys(std::vector<std::string> names);
  static JSONModelError invalidDataWithTypeMismatch(std::string mismatch);
  static JSONModelError badResponse();
  static JSONModelError badJSON();
  static JSONModelError modelIsInvalid();
  static JSONModelError inputIsNil();

  /// Puts a property name or an index in brackets in front of the key path.
  void prependKeyPathComponent(std::string_view component);
  void prependKeyPathIndex(std::size_t index);

  friend bool operator==(const JSONModelError&, const JSONModelError&) = default;
};

/// A value, or the reason why it is missing. `value` and `error` must only be asked for what is there.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
  Result(JSONModelError error) : state_(std::in_place_index<1>, std::move(error)) {}

  bool hasValue() const { return state_.index() == 0; }
  explicit operator bool() const { return hasValue(); }

  const T& value() const& { return *std::get_if<0>(&state_); }
  T& value() & { return *std::get_if<0>(&state_); }
  T&& value() && { return std::move(*std::get_if<0>(&state_)); }
  const T& operator*() const { return value(); }
  T& operator*() { return value(); }
  const T* operator->() const { return &value(); }
  T* operator->() { return &value(); }

  const JSONModelError& error() const { return *std::get_if<1>(&state_); }

 private:
  std::variant<T, JSONModelError> state_;
};

}  // namespace fleetor
