#pragma once

#include <concepts>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace fleetor {

/// The value of a query or form parameter: a text or a number.
class ParamValue {
 public:
  template <class T>
  requires std::convertible_to<const T&, std::string_view> ParamValue(const T& text)
      : value_(std::string(std::string_view(text))) {}
  ParamValue(std::integral auto number) : value_(static_cast<std::int64_t>(number)) {}
  ParamValue(double number) : value_(number) {}

  bool isNumber() const { return !std::holds_alternative<std::string>(value_); }
  std::string text() const;  ///< a number in decimal digits, without an exponent

 private:
  std::variant<std::string, std::int64_t, double> value_;
};

/// Parameters by name, in the order in which they are sent.
using Params = std::map<std::string, ParamValue>;

/// "a=1&b=2": names as they are, values through urlEncode.
std::string parameterText(const Params& params);

/// How parameters appear in the log: one JSON object on one line, every text a JSON string with its quotes
/// and backslashes escaped, so that a sink can mask the value of "password" whatever it contains. "(null)"
/// without parameters.
std::string parametersForLog(const std::optional<Params>& params);

/// Percent-escapes every byte of the text's UTF-8 except ASCII letters, digits and "-", ".", "_", "~".
std::string urlEncode(const ParamValue& value);

}  // namespace fleetor
