#include "service/response_serializer.h"

#include "support/scripted_transport.h"
#include "support/testing.h"

namespace fleetor::test {
namespace {

enum class Object { none, json, raw };

Object objectOf(const HTTPRequestOperation& operation) {
  if (std::holds_alternative<JSONValue>(operation.responseObject)) return Object::json;
  return std::holds_alternative<std::string>(operation.responseObject) ? Object::raw : Object::none;
}

struct Answer {
  const char* name;
  HttpReply reply;
  long error;
  Object object;
  const char* description = nullptr;
};

std::string utf16(std::string_view ascii, bool bigEndian) {
  std::string wide;
  for (const char each : ascii) {
    if (bigEndian) wide += '\0';
    wide += each;
    if (!bigEndian) wide += '\0';
  }
  return wide;
}

using enum Object;
constexpr const char* jsonType = "application/json";

const Answer answers[] = {
    {"object", reply(200, jsonType, "{}"), 0, json},
    {"array at the edge of the range", reply(299, "text/json", "[]"), 0, json},
    {"type in capitals with parameters", reply(201, "Text/JavaScript ; a=b", "{}"), 0, json},
    {"single space", reply(200, jsonType, " "), 0, none},
    {"two spaces", reply(200, jsonType, "  "), -1017, none},
    {"bare value", reply(200, jsonType, "17"), -1017, none},
    {"cut off", reply(200, jsonType, R"({"a":)"), -1017, none},
    {"HTML page", reply(200, "text/html; charset=utf-8", "<p>"), -1016, none,
     "Request failed: unacceptable content-type: text/html"},
    {"no type at all", reply(200, "", "{}"), -1016, none},
    {"below the range", reply(199, jsonType, "{}"), -1011, json},
    {"redirect that leads nowhere", reply(300, jsonType, ""), -1011, none},
    {"not found with a JSON body", reply(404, jsonType, "{}"), -1011, json,
     "Request failed: not found (404)"},
    {"not found with a page", reply(404, "text/html", "{}"), -1011, none},
    {"error with broken JSON", reply(500, jsonType, "{"), -1011, none,
     "Request failed: internal server error (500)"},
    {"not UTF-8", reply(200, jsonType, "{\"a\":\"\xB1\"}"), 0, none},
    {"Polish in ISO 8859-2", reply(200, "application/json; charset=ISO-8859-2", "{\"a\":\"\xB1\"}"), 0, json},
    {"UTF-16 without a mark", reply(200, "application/json; charset=\"utf-16\"", utf16("{}", true)), 0, json},
    {"UTF-16 with a mark", reply(200, "application/json; Charset=UTF-16", "\xFF\xFE" + utf16("[]", false)), 0,
     json},
    {"longer than any text once it is converted",
     reply(200, "application/json; charset=ISO-8859-2", "[\"" + std::string(longestJSON / 2, '\xB1') + "\"]"),
     -1017, none},
    {"single wide space", reply(200, "application/json; charset=utf-16le", std::string(" \0", 2)), 0, none},
    {"unknown character set", reply(200, "application/json; charset=klingon", "{\"a\":\"\xC5\xBC\"}"), 0,
     json},
    {"suffix in place of a name",
     reply(200, "application/json; charset=ascii//ignore", "{\"a\":\"\xC5\xBC\"}"), 0, json},
    {"nothing arrived", failedReply(url_error::timedOut), -1001, none}};

TEST(JSONAnswers, AreJudged) {
  for (const Answer& answer : answers) {
    const auto operation = judge(answer.reply, ResponseSerializer::JSON);
    EXPECT_EQ(operation.error ? operation.error->code : 0, answer.error) << answer.name;
    EXPECT_EQ(objectOf(operation), answer.object) << answer.name;
    if (!answer.description) continue;
    EXPECT_EQ(operation.error.value_or(APIFailure()).localizedDescription, answer.description) << answer.name;
  }
}

TEST(PlainAnswers, AreTakenAsTheyCome) {
  const auto page = judge(reply(204, "text/html; charset=utf-16", "\xFF\xFE<"), ResponseSerializer::plain);
  EXPECT_FALSE(page.error);
  EXPECT_EQ(std::get<std::string>(page.responseObject), "\xFF\xFE<");
  const auto refused = judge(reply(500, "text/plain", "sorry"), ResponseSerializer::plain);
  EXPECT_EQ(refused.error->code, url_error::badServerResponse);
  EXPECT_EQ(refused.responseString, "sorry");
  const std::string large(2'000'000, 'x');
  EXPECT_EQ(judge(reply(500, "text/plain", large), ResponseSerializer::plain).responseString, std::nullopt)
      << "a copy for the log";
}

TEST(DecodeText, ConvertsBodiesLongerThanOnePiece) {
  std::string expected;
  for (int i = 0; i < 50000; ++i)
    expected += "\xC5\xBC";
  EXPECT_EQ(decodeText(std::string(50000, '\xBF'), "ISO-8859-2"), expected);
}

}  // namespace
}  // namespace fleetor::test
