#include "service/response_serializer.h"

#include <gtest/gtest.h>

#include "support/scripted_transport.h"

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

void PrintTo(const Answer& answer, std::ostream* out) {
  *out << answer.name;
}

class JSONAnswers : public testing::TestWithParam<Answer> {};

TEST_P(JSONAnswers, AreJudged) {
  const auto operation = judge(GetParam().reply, ResponseSerializer::JSON);
  EXPECT_EQ(operation.error ? operation.error->code : 0, GetParam().error);
  EXPECT_EQ(objectOf(operation), GetParam().object);
  if (GetParam().description) {
    ASSERT_TRUE(operation.error);
    EXPECT_EQ(operation.error->localizedDescription, GetParam().description);
  }
}

std::string utf16(std::string_view ascii, bool bigEndian) {
  std::string wide;
  for (const char each : ascii) {
    if (bigEndian) wide += '\0';
    wide += each;
    if (!bigEndian) wide += '\0';
  }
  return wide;
}

INSTANTIATE_TEST_SUITE_P(
    All, JSONAnswers,
    testing::Values(
        Answer{"object", reply(200, "application/json", "{}"), 0, Object::json},
        Answer{"array at the edge of the range", reply(299, "text/json", "[]"), 0, Object::json},
        Answer{"type in capitals with parameters", reply(201, "Text/JavaScript ; a=b", "{}"), 0,
               Object::json},
        Answer{"created with nothing", reply(200, "text/html", ""), 0, Object::none},
        Answer{"single space", reply(200, "application/json", " "), 0, Object::none},
        Answer{"two spaces", reply(200, "application/json", "  "), -1017, Object::none},
        Answer{"bare value", reply(200, "application/json", "17"), -1017, Object::none},
        Answer{"cut off", reply(200, "application/json", R"({"a":)"), -1017, Object::none},
        Answer{"HTML page", reply(200, "text/html; charset=utf-8", "<p>"), -1016, Object::none,
               "Request failed: unacceptable content-type: text/html"},
        Answer{"no type at all", reply(200, "", "{}"), -1016, Object::none},
        Answer{"below the range", reply(199, "application/json", "{}"), -1011, Object::json},
        Answer{"redirect that leads nowhere", reply(300, "application/json", ""), -1011, Object::none},
        Answer{"not found with a JSON body", reply(404, "application/json", "{}"), -1011, Object::json,
               "Request failed: not found (404)"},
        Answer{"not found with a page", reply(404, "text/html", "{}"), -1011, Object::none},
        Answer{"error with broken JSON", reply(500, "application/json", "{"), -1011, Object::none,
               "Request failed: internal server error (500)"},
        Answer{"not UTF-8", reply(200, "application/json", "{\"a\":\"\xB1\"}"), 0, Object::none},
        Answer{"surrogate in UTF-8", reply(200, "application/json", "{\"a\":\"\xED\xA0\x80\"}"), 0,
               Object::none},
        Answer{"cut off in a character", reply(200, "application/json", "{\"a\":\"\xE2\x82"), 0,
               Object::none},
        Answer{"Polish in ISO 8859-2", reply(200, "application/json; charset=ISO-8859-2", "{\"a\":\"\xB1\"}"),
               0, Object::json},
        Answer{"UTF-16 without a mark", reply(200, "application/json; charset=\"utf-16\"", utf16("{}", true)),
               0, Object::json},
        Answer{"UTF-16 with a mark",
               reply(200, "application/json; Charset=UTF-16", "\xFF\xFE" + utf16("[]", false)), 0,
               Object::json},
        Answer{"single wide space", reply(200, "application/json; charset=utf-16le", std::string(" \0", 2)),
               0, Object::none},
        Answer{"half a wide character",
               reply(200, "application/json; charset=utf-16le", std::string("{\0}", 3)), 0, Object::none},
        Answer{"not ASCII after all",
               reply(200, "application/json; charset=us-ascii", "{\"a\":\"\xC5\xBC\"}"), 0, Object::none},
        Answer{"unknown character set",
               reply(200, "application/json; charset=klingon", "{\"a\":\"\xC5\xBC\"}"), 0, Object::json},
        Answer{"suffix in place of a name",
               reply(200, "application/json; charset=ascii//ignore", "{\"a\":\"\xC5\xBC\"}"), 0,
               Object::json},
        Answer{"nothing arrived", failedReply(url_error::timedOut), -1001, Object::none}));

TEST(PlainAnswers, AreTakenAsTheyCome) {
  const auto page = judge(reply(204, "text/html; charset=utf-16", "\xFF\xFE<"), ResponseSerializer::plain);
  EXPECT_FALSE(page.error);
  EXPECT_EQ(std::get<std::string>(page.responseObject), "\xFF\xFE<");
  const auto refused = judge(reply(500, "text/plain", "sorry"), ResponseSerializer::plain);
  EXPECT_EQ(refused.error->code, url_error::badServerResponse);
  EXPECT_EQ(refused.responseString, "sorry");
}

TEST(DecodeText, ConvertsBodiesLongerThanOnePiece) {
  std::string expected;
  for (int i = 0; i < 50000; ++i)
    expected += "\xC5\xBC";
  EXPECT_EQ(decodeText(std::string(50000, '\xBF'), "ISO-8859-2"), expected);
}

}  // namespace
}  // namespace fleetor::test
