#include "running_service.h"

namespace fleetor::demo {
namespace {

TEST(DemoEndpoints, RefuseWrongCredentialsAndForgedTokens) {
  RunningService service;
  expectFailure(service.signInAnswer("demo", "wrong"), 400, "password");
  expectFailure(service.signInAnswer("nobody", "demo"), 400, "password");
  expectFailure(service.post("/token", "username=demo&password=demo&uid=1"), 400, "grant_type");
  expectFailure(service.post("/token?grant_type=password&username=demo", "password=demo&uid=1"), 400,
                "query");

  const std::string token = service.signIn();
  EXPECT_NE(service.signIn(), token);
  std::string forged = token;
  forged.replace(0, 4, "nora");
  for (const std::string& wrong : {std::string(), std::string("demo.."), forged, token + "0"})
    expectFailure(service.get("/vehicles", RunningService::bearer(wrong)), 401, "token");
  expectFailure(service.post("/logout", "uid=1", forged), 401, "token");
}

TEST(DemoEndpoints, GiveTilesThatACacheCanKeep) {
  RunningService service;
  for (const std::string style : {"standard", "dark", "satellite"}) {
    const std::string path = "/tiles/" + style + "/16/0/0.png";
    const Answer answer = service.get(path);
    EXPECT_EQ(answer.body.substr(0, 4), "\x89PNG") << style;
    EXPECT_EQ(answer.header("Content-Type"), "image/png");
    EXPECT_EQ(answer.header("Cache-Control"), "public, max-age=600");
    const Answer again = service.get(path, {{"If-None-Match", answer.header("ETag")}});
    EXPECT_EQ(again.status, 304);
    EXPECT_EQ(again.body, "");
    EXPECT_EQ(service.get(path, {{"If-None-Match", "\"else\""}}).body, answer.body);
  }
}

TEST(DemoEndpoints, PackLongAnswersForWhoAsksForIt) {
  RunningService service;
  service.signIn();
  httplib::Headers headers = RunningService::bearer(service.token);
  const Answer plain = service.get("/vehicles?offset=0&limit=20", headers);
  headers.emplace("Accept-Encoding", "deflate, gzip");
  const Answer packed = service.get("/vehicles?offset=0&limit=20", headers);
  EXPECT_EQ(plain.header("Content-Encoding") + packed.header("Content-Encoding"), "gzip");
  EXPECT_EQ(packed.body, plain.body) << "which the HTTP library unpacks";
  EXPECT_EQ(service.get("/user", headers).header("Content-Encoding"), "");
}

}  // namespace
}  // namespace fleetor::demo
