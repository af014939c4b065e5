#include <cstdio>
#include <fstream>
#include <sstream>

#include "running_service.h"

namespace fleetor::demo {
namespace {

std::string keysOf(const Json& record) {
  std::string keys;
  for (const auto& item : record.items())
    keys += (keys.empty() ? "" : " ") + item.key();
  return keys;
}

TEST(DemoEndpoints, NameTheKeysOfEveryRecordAndKeepNumbersAsText) {
  RunningService service;
  service.signIn();
  const char* const cases[][3] = {
      {"/user?", "", "total error user"},
      {"/user?", "/error", "code description"},
      {"/user?", "/user",
       "name statusDescription sms companyName address1 address2 vat gsm mail expirationDate"},
      {"/vehicles", "/vehicles/0", "vehicleId name registration mapLineColor icon"},
      {"/live?vehid=1001", "/live",
       "datetime vehicles active speed powerSupply powerSupplyType sig direction fuel fuelType rpm odometer "
       "led "
       "street temp location"},
      {"/live?vehid=1001", "/live/led", "z1 z3 z4 z6 z8 z14 z23 z28 z33"},
      {"/live?vehid=1001", "/live/location", "lat lon"},
      {"/map?vehid=1001&date=2026-03-10", "/map/0", "lp location dateTime duration totdist label street"},
      {"/route?vehid=1001&date=2026-03-10", "/route/0",
       "lp status timeFrom timeTo duration distance from to"},
      {"/info?vehid=1001", "/info", "auto service live"},
      {"/info?vehid=1001", "/info/auto",
       "name registration mapLineColor icon driver driverGsm engine tank active"},
      {"/info?vehid=1001", "/info/service", "oil tech odo"},
      {"/info?vehid=1001", "/info/live", "odo fuel"}};
  for (const auto& [path, place, keys] : cases) {
    const Answer answer = service.get(path);
    ASSERT_EQ(answer.status, 200) << path << answer.body;
    EXPECT_EQ(answer.header("Content-Type"), "application/json; charset=utf-8");
    EXPECT_EQ(keysOf(answer.json[Json::json_pointer(place)]), keys) << path;
  }
  const Json live = service.get("/live?vehid=1001").json["live"];
  for (const auto& [key, value] : live.items())
    EXPECT_TRUE(value.is_string() || value.is_object()) << key;
  EXPECT_TRUE(live["vehicles"]["vehicleId"].is_number_integer());
}

TEST(DemoEndpoints, RefuseWrongCredentialsAndForgedTokens) {
  RunningService service;
  expectFailure(service.signInAnswer("demo", "wrong"), 400, "password");
  expectFailure(service.signInAnswer("nobody", "demo"), 400, "password");
  expectFailure(service.post("/token", "username=demo&password=demo&uid=1"), 400, "grant_type");
  expectFailure(service.post("/token?grant_type=password&username=demo", "password=demo&uid=1"), 400,
                "query");
  expectFailure(service.post("/token?grant_type=password", "username=demo&uid=1"), 400,
                "\"password\" is missing");
  expectFailure(service.post("/token?grant_type=password", "{}", {}, "application/json"), 400, "form");

  const std::string token = service.signIn();
  EXPECT_NE(service.signIn(), token);
  std::string forged = token;
  forged.replace(0, 4, "nora");
  for (const std::string& wrong : {std::string(), std::string("demo.."), forged, token + "0"})
    for (const char* path : {"/vehicles", "/live?vehid=1001", "/map", "/route", "/info", "/user"})
      expectFailure(service.get(path, RunningService::bearer(wrong)), 401, "token");
  expectFailure(service.post("/logout", "uid=1", forged), 401, "token");
}

TEST(DemoEndpoints, RevokeOnlyTheTokenThatSignsOutAndRememberItAcrossARestart) {
  const std::string file = testing::TempDir() + "fleetor-demo-state";
  std::ofstream(file) << "cut sho";
  std::string left;
  std::string stayed;
  {
    RunningService service(45, file);
    left = service.signIn();
    stayed = service.signIn();
    expectFailure(service.post("/logout", "", left), 400, "uid");
    EXPECT_EQ(service.post("/logout", "uid=1", left).status, 200);
    expectFailure(service.get("/user", RunningService::bearer(left)), 401, "revoked");
  }
  RunningService restarted(45, file);
  EXPECT_EQ(restarted.get("/user", RunningService::bearer(left)).status, 401);
  EXPECT_EQ(restarted.get("/user", RunningService::bearer(stayed)).status, 200);
  std::stringstream kept;
  kept << std::ifstream(file).rdbuf();
  EXPECT_EQ(kept.str().find(left), std::string::npos) << "a token must not be written to disk";
  std::remove(file.c_str());
}

TEST(DemoEndpoints, ReportWhatIsWrongWithARequest) {
  RunningService service;
  service.signIn("nora");
  const std::string others = service.get("/vehicles").json["vehicles"][0]["vehicleId"].dump();
  service.signIn();
  const struct {
    std::string path;
    int status;
    const char* mention;
  } cases[] = {
      {"/live", 400, "\"vehid\" is missing"},
      {"/live?vehid=1001x", 400, "\"vehid\" must be"},
      {"/live?vehid=99999999999999999999", 400, "\"vehid\" must be"},
      {"/live?vehid=1046", 404, "no vehicle 1046"},
      {"/info?vehid=" + others, 404, "no vehicle"},
      {"/map?vehid=1001", 400, "\"date\" is missing"},
      {"/map?vehid=1001&date=2026-02-29", 400, "yyyy-MM-dd"},
      {"/map?vehid=1001&date=2026-2-1", 400, "yyyy-MM-dd"},
      {"/route?vehid=1001&date=%00%ff%zz", 400, "yyyy-MM-dd"},
      {"/vehicles?offset=-1", 400, "\"offset\" must be"},
      {"/vehicles?limit=10001", 400, "\"limit\" must be"},
      {"/logout", 405, "POST"},
      {"/token?grant_type=password", 405, "POST"},
      {"/vehicles/1001", 404, "resource"},
      {"/" + std::string(7000, 'a'), 404, "resource"},
  };
  for (const auto& [path, status, mention] : cases)
    expectFailure(service.get(path), status, mention);
  expectFailure(service.post("/vehicles", "", service.token), 405, "GET");
}

}  // namespace
}  // namespace fleetor::demo
