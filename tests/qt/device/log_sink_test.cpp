#include "qt/device/log_sink.h"

#include <thread>

#include "support/testing.h"

namespace fleetor {
namespace {

TEST(LogSink, HidesPasswordsAndTokensInEverySpelling) {
  const std::pair<const char*, const char*> cases[] = {
      // Requests.
      {R"(REQUEST: {"Password":"a\"b\\","uid":"U","username":"token"})",
       R"(REQUEST: {"Password":"***","uid":"U","username":"***"})"},
      {"REQUEST: {\"limit\":20,\"offset\":0}", "REQUEST: {\"limit\":20,\"offset\":0}"},
      {"REQUEST: http://h/token?grant_type=password", "REQUEST: http://h/token?grant_type=password"},
      {"REQUEST: http://h/x?PASSWORD=s3cret&uid=U&token=", "REQUEST: http://h/x?PASSWORD=***&uid=U&token="},
      // Answers in JSON.
      {R"({"refresh_token" : {"a":["s3cret"]}, "n":1 }, 400)", R"({"n":1,"refresh_token":"***"}, 400)"},
      {R"([{"acc\u0065ss_token":12345}], 200)", R"([{"access_token":"***"}], 200)"},
      {R"({"quoted":"{\"password\":\"s3cret\",\"n\":1}"}, 200)",
       R"({"quoted":"{\"n\":1,\"password\":\"***\"}"}, 200)"},
      {R"({ "z":1.50, "a":"b" }, 500)", R"({ "z":1.50, "a":"b" }, 500)"},
      // Other answers.
      {"<access_token>s3cret</access_token>, 400", "***, 400"},
      {"Array\n(\n    [access_token] => s3cret\n)\n, 200", "***, 200"},
      {"Authorization: Bearer s3cret, 0", "***, 0"},
      {"REQUEST: http://h/?access_token: s3cret, 400", "REQUEST: ***"},
      {R"({"password":"cut off, 200)", "***, 200"},
      {"<p>Sorry</p>, 500", "<p>Sorry</p>, 500"},
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
          sink.line("REQUEST: http://h/\xC3\x9F\x1b[2J\xC2\x9B\r?token=s3cret");
      });
  }
  std::rewind(file);
  char line[100];
  int lines = 0;
  for (; std::fgets(line, sizeof line, file); lines++)
    ASSERT_STREQ(line, "REQUEST: http://h/\xC3\x9F?[2J???token=***\n");
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
