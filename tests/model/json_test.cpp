#include "model/json.h"

#include <sstream>

#include "model/json_model.h"
#include "support/testing.h"

namespace fleetor {
namespace {

struct Sample : APIModel {
  Text a;
  std::int64_t n = 0;
};

}  // namespace

template <>
inline constexpr auto propertiesOf<Sample> = properties(optional<&Sample::a>, optional<&Sample::n>);

namespace {

/// The text of `a`, or how decoding failed.
std::string textOf(const std::string& json) {
  auto decoded = decodeJSON(json);
  if (decoded && decoded->isNil()) return "not UTF-8";
  if (!decoded) return decoded.error() == JSONModelError::badJSON() ? "malformed" : "another error";
  const auto sample = JSONModel::initWithDictionary<Sample>(std::move(*decoded));
  return sample ? sample->a.str() : sample.error().description;
}

TEST(JsonTest, RefusesWhatIsNotJson) {
  std::istringstream words(R"(17 "a" null { {"a":"x" {"a":} [1,] {}{} <html></html> {"a":"\ud800"} {"a":01}
                              {"a":1e999} {"a":018446744073709551616} {"a":1,18446744073709551616:2} {'a':1} {"a":-} {"a":NaN})");
  for (std::string json; words >> json;)
    EXPECT_EQ(textOf(json), "malformed") << json;
  for (const std::string& json :
       {std::string(), std::string(" "), std::string("\xEF\xBB\xBF"), std::string("{\"a\":\"\n\"}"),
        std::string("{\"a\":1}\0", 8), "{\"a\":1" + std::string(400, '0') + "}",
        "{\"a\":0" + std::string(20, '9') + "}", std::string("[1, "), std::string("[\"\xC3\xA5\",truex]")})
    EXPECT_EQ(textOf(json), "malformed") << json.substr(0, 40);
  for (const std::string& json : {std::string("{\"a\":\"\xFF\"}"), std::string("{\"a\":\"\xC0\x80\"}"),
                                  std::string("\xFE\xFF\0{\0}", 6), std::string("{\"\xC3")})
    EXPECT_EQ(textOf(json), "not UTF-8") << json;
}

TEST(JsonTest, DecodesTheEdgesOfWhatIsJson) {
  const std::pair<std::string, std::string> cases[] = {
      {"\xEF\xBB\xBF{\"a\":\"x\"}", "x"},
      {"{\"a\":\"x\",\"a\":\"y\"}", "y"},
      {"{\"a\":{},\"a\":\"y\"}", "y"},
      {"{\"\\u0061\":\"\\u017c\\ud83d\\ude97\\n\"}", "\xC5\xBC\xF0\x9F\x9A\x97\n"},
      {" {\"a\":\"a\\\\\\\"18446744073709551616\",\"b\":99999999999999999999} ", "a\\\"18446744073709551616"},
      {"{\"b\":[[\"\"]],\"c\":{\"d\":[{}]},\"a\":\"x\"}", "x"},
      {"{\"a\":1e-999,\"b\":0.1e-99999999999999999999}", "0"},
      {"{\"a\":-0.0001e-400,\"b\":0e999}", "-0"},
      {"{\"a\":18446744073709551615}", "18446744073709551615"},
      {"{\"a\":100000000000000000000}", "100000000000000000000"},
      {"{\"a\":-123456789012345678901234567890}", "-123456789012345678901234567890"},
      {"{\"a\":18446744073709551615,\"b\":-9223372036854775809}", "18446744073709551615"},
      {"{\"a\":-9223372036854775808,\"b\":[99999999999999999999]}", "-9223372036854775808"}};
  for (const auto& [json, text] : cases)
    EXPECT_EQ(textOf(json), text) << json;
}

TEST(JsonTest, TurnsNumbersIntoTheirShortestUsualText) {
  std::istringstream table(
      "42 42  -7 -7  42.0 42  12.5 12.5  0.1 0.1  1e2 100  1e5 100000  1e16 10000000000000000  1e17 1e+17 "
      "0.00001 0.00001  1e-6 1e-06  52.229676 52.229676  0 0  0.0 0  -12.5 -12.5  -1e16 -10000000000000000 "
      "true 1  false 0");
  for (std::string number, text; table >> number >> text;)
    EXPECT_EQ(textOf("{\"a\":" + number + "}"), text) << number;
}

TEST(JsonTest, ReadsIntegersFromEveryKindOfNumber) {
  std::istringstream table(R"(17 17  "17" 17  "-17km" -17  12.9 12  -12.9 -12  true 1  "" 0
      1e300 9223372036854775807  9223372036854775808.0 9223372036854775807  -1e300 -9223372036854775808  18446744073709551615 9223372036854775807
      99999999999999999999 9223372036854775807  -99999999999999999999 -9223372036854775808  9223372036854775807 9223372036854775807)");
  std::string number;
  for (std::int64_t value = 0; table >> number >> value;) {
    auto decoded = decodeJSON("{\"n\":" + number + "}");
    ASSERT_TRUE(decoded) << number;
    const auto sample = JSONModel::initWithDictionary<Sample>(*decoded);
    ASSERT_TRUE(sample) << number;
    EXPECT_EQ(sample->n, value) << number;
  }
}

TEST(JsonTest, BoundsNesting) {
  const auto nested = [](std::size_t levels) {
    return "{\"a\":\"x\",\"deep\":" + std::string(levels - 1, '[') + "1" + std::string(levels - 1, ']') + "}";
  };
  EXPECT_EQ(textOf(nested(1024)), "x");
  EXPECT_EQ(textOf(nested(1025)), "malformed");
  EXPECT_EQ(textOf(std::string(1'000'000, '[')), "malformed");

  // Arrays within the array of a record type are walked to the bottom.
  const std::string lists = std::string(1020, '[') + "{\"a\":\"deep\"}" + std::string(1020, ']');
  const auto records = JSONModel::arrayOfModelsFromDictionaries<Sample>(*decodeJSON(lists));
  ASSERT_TRUE(records);
  ASSERT_EQ(records->value().size(), 1u);
  EXPECT_EQ(records->value()[0].a, "deep");
}

TEST(JsonTest, BoundsItsLengthAndItsTokens) {
  EXPECT_FALSE(decodeJSON("[\"" + std::string(longestJSON, 'x') + "\"]"));
  const auto zeros = [](std::size_t count) {
    std::string json = "[0";
    for (std::size_t i = 1; i < count; ++i)
      json += ",0";
    return json + "]";
  };
  EXPECT_TRUE(decodeJSON(zeros((1 << 23) - 1)));
  EXPECT_FALSE(decodeJSON(zeros(1 << 23)));
}

}  // namespace
}  // namespace fleetor
