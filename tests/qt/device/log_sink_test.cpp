#include "qt/device/log_sink.h"

#include <gmock/gmock.h>

#include <thread>
#include <vector>

namespace fleetor {
namespace {

TEST(LogSink, HidesPasswordsAndTokensInEverySpelling) {
  const std::pair<const char*, const char*> cases[] = {
      // Parameters and bodies as JSON.
      {R"({"password":"s3cret","uid":"U","username":"anna"})",
       R"({"password":"***","uid":"U","username":"anna"})"},
      {R"({ "Password" : "a\"b\\", "uid" : 1 })", R"({ "Password" : "***", "uid" : 1 })"},
      {R"({"password":12345,"uid":2})", R"({"password":***,"uid":2})"},
      {R"({"password":{"deep":"s3cret"}})", R"({"password":***)"},
      {R"({"password":"never closed, uid)", R"({"password":"***)"},
      {R"("{\"password\":\"s3\\\"cret\",\"uid\":\"U\"}")", R"("{\"password\":\"***\",\"uid\":\"U\"}")"},
      {R"("{\"password\":\"\\\\\",\"uid\":\"U\"}")", R"("{\"password\":\"***\",\"uid\":\"U\"}")"},
      {R"({"access_token":"abc.def","token_type":"bearer"})",
       R"({"access_token":"***","token_type":"bearer"})"},
      {R"({"refresh_token": "abc"}, 200)", R"({"refresh_token": "***"}, 200)"},
      // Forms and queries.
      {"password=a%26b&uid=U&username=anna", "password=***&uid=U&username=anna"},
      {"http://h/x?uid=U&PASSWORD=s3cret", "http://h/x?uid=U&PASSWORD=***"},
      {"body=%22password%22%3A%22s3cret%22%7D", "body=%22password%22%3A%22***%22%7D"},
      {"password%3Ds3cret", "password%3D***"},
      {"new_password = two words\nuid = U", "new_password = ***\nuid = U"},
      // Headers.
      {"Authorization: Bearer abc.def-_~+/=", "Authorization: ***"},
      {"{Authorization = \"Bearer abc\"; Accept = x}", "{Authorization = \"***\"; Accept = x}"},
      {"sent bearer abc, then BEARER\tdef; Bearer%20ghi&x",
       "sent bearer ***, then BEARER\t***; Bearer%20***&x"},
      // Nothing to hide.
      {"REQUEST: http://h/token?grant_type=password", "REQUEST: http://h/token?grant_type=password"},
      {"{\"limit\":20,\"offset\":0}", "{\"limit\":20,\"offset\":0}"},
      {"wrong password", "wrong password"},
      {"the bearer", "the bearer"},
      {"password=", "password="},
      {"", ""},
  };
  for (const auto& [text, masked] : cases)
    EXPECT_EQ(maskSecrets(text), masked);
}

TEST(LogSink, WritesWholeMaskedLinesFromAnyThreadAndNothingWithoutAStream) {
  std::FILE* file = std::tmpfile();
  ASSERT_TRUE(file);
  {
    LogSink sink(file);
    std::vector<std::jthread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; i++)
      threads.emplace_back([&sink] {
        for (int n = 0; n < 50; n++)
          sink.line("{\"password\":\"s3cret\"}\x1b[2J\r");
      });
  }
  std::rewind(file);
  char line[100];
  int lines = 0;
  for (; std::fgets(line, sizeof line, file); lines++)
    ASSERT_STREQ(line, "{\"password\":\"***\"}?[2J?\n");
  EXPECT_EQ(lines, 200);
  std::fclose(file);

  testing::internal::CaptureStderr();
  ::unsetenv("FLEETOR_LOG");
  LogSink(LogSink::streamFromEnvironment()).line("silent");
  ::setenv("FLEETOR_LOG", "1", 1);
  LogSink(LogSink::streamFromEnvironment()).line("asked for");
  ::unsetenv("FLEETOR_LOG");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "asked for\n");
}

}  // namespace
}  // namespace fleetor
