#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <set>
#include <sstream>

#include "running_service.h"

namespace fleetor::demo {
namespace {

// The keys of the first record at that place, in order.
std::string keysOf(const std::string& body, const std::string& place) {
  nlohmann::ordered_json node = nlohmann::ordered_json::parse(body);
  std::istringstream steps(place);
  for (std::string step; steps >> step;)
    node = node.at(step).is_array() ? node.at(step).at(0) : node.at(step);
  std::string keys;
  for (const auto& item : node.items())
    keys += (keys.empty() ? "" : " ") + item.key();
  return keys;
}

TEST(DemoEndpoints, NameTheKeysOfEveryRecordAndKeepNumbersAsText) {
  RunningService service;
  service.signIn("demo");
  const char* const cases[][3] = {
      {"/user?", "", "total error user"},
      {"/user?", "error", "code description"},
      {"/user?", "user",
       "name statusDescription sms companyName address1 address2 vat gsm mail expirationDate"},
      {"/vehicles", "vehicles", "vehicleId name registration mapLineColor icon"},
      {"/live?vehid=1001", "live",
       "datetime vehicles active speed powerSupply powerSupplyType sig direction fuel fuelType rpm odometer "
       "led "
       "street temp location"},
      {"/live?vehid=1001", "live led", "z1 z3 z4 z6 z8 z14 z23 z28 z33"},
      {"/live?vehid=1001", "live location", "lat lon"},
      {"/map?vehid=1001&date=2026-03-10", "map", "lp location dateTime duration totdist label street"},
      {"/route?vehid=1001&date=2026-03-10", "route", "lp status timeFrom timeTo duration distance from to"},
      {"/info?vehid=1001", "info", "auto service live"},
      {"/info?vehid=1001", "info auto",
       "name registration mapLineColor icon driver driverGsm engine tank active"},
      {"/info?vehid=1001", "info service", "oil tech odo"},
      {"/info?vehid=1001", "info live", "odo fuel"}};
  for (const auto& [path, place, keys] : cases) {
    const Answer answer = service.get(path);
    ASSERT_EQ(answer.status, 200) << path << answer.body;
    EXPECT_EQ(answer.contentType, "application/json; charset=utf-8");
    EXPECT_EQ(keysOf(answer.body, place), keys) << path;
  }
  const Json live = service.get("/live?vehid=1001").json["live"];
  for (const auto& [key, value] : live.items())
    EXPECT_TRUE(value.is_string() || value.is_object()) << key;
  EXPECT_TRUE(live["vehicles"]["vehicleId"].is_number_integer());
}

TEST(DemoEndpoints, PageThroughTheFleetWithoutGapsOrRepeats) {
  RunningService service(45);
  service.signIn("demo");
  std::set<std::int64_t> ids;
  std::set<std::string> icons;
  int plateless = 0;
  for (int offset = 0; offset < 60; offset += 20) {
    const Json page = service.get("/vehicles?limit=20&offset=" + std::to_string(offset)).json;
    EXPECT_EQ(page["total"], 45);
    EXPECT_EQ(page["vehicles"].size(), offset == 40 ? 5u : 20u);
    for (const Json& vehicle : page["vehicles"]) {
      ids.insert(vehicle["vehicleId"].get<std::int64_t>());
      icons.insert(vehicle["icon"].get<std::string>());
      plateless += vehicle["registration"] == Json("");
      EXPECT_EQ(vehicle["mapLineColor"].get<std::string>().size(), 7u);
    }
  }
  EXPECT_EQ(ids.size(), 45u);
  EXPECT_EQ(icons.size(), 7u);
  EXPECT_GT(plateless, 0);
  EXPECT_LT(plateless, 23);
  EXPECT_EQ(service.get("/vehicles?offset=45").json["vehicles"], Json::array());
  service.signIn("empty");
  const Json none = service.get("/vehicles").json;
  EXPECT_EQ(none["total"], 0);
  EXPECT_EQ(none["vehicles"], Json::array());
}

TEST(DemoEndpoints, ServeTenThousandVehiclesWithoutAWait) {
  RunningService service(10000);
  service.signIn("demo");
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(service.get("/vehicles?offset=9990&limit=20").json["vehicles"].size(), 10u);
  EXPECT_EQ(service.get("/live?vehid=11000").status, 200);
  const auto spent = std::chrono::steady_clock::now() - begin;
  EXPECT_LT(spent, std::chrono::seconds(2));
  EXPECT_EQ(service.get("/vehicles?limit=10000").json["vehicles"].size(), 10000u);
}

TEST(DemoEndpoints, RefuseWrongCredentialsAndStrangersTokens) {
  RunningService service;
  expectFailure(service.signInAnswer("demo", "wrong"), 400, "password");
  expectFailure(service.signInAnswer("nobody", "demo"), 400, "password");
  expectFailure(service.signInAnswer("", ""), 400, "password");
  expectFailure(service.post("/token", "username=demo&password=demo&uid=1"), 400, "grant_type");
  expectFailure(service.post("/token?grant_type=password", "username=demo&uid=1"), 400,
                "\"password\" is missing");
  expectFailure(service.post("/token?grant_type=password", "username=demo&password=demo"), 400,
                "\"uid\" is missing");
  expectFailure(service.post("/token?grant_type=password", "{}", {}, "application/json"), 400, "form");

  const std::string token = service.signIn("demo");
  EXPECT_NE(service.signIn("demo"), token);
  std::string forged = token;
  forged.replace(0, 4, "nora");
  for (const std::string& wrong :
       {std::string(), std::string("demo"), std::string("demo.."), forged, token + "0"})
    for (const char* path : {"/vehicles", "/live?vehid=1001", "/map", "/route", "/info", "/user"})
      expectFailure(service.get(path, wrong), 401, "token");
  expectFailure(service.post("/logout", "uid=1", forged), 401, "token");
}

TEST(DemoEndpoints, KeepEachAccountsVehiclesToItself) {
  RunningService service;
  service.signIn("nora");
  const std::int64_t own = service.get("/vehicles").json["vehicles"][0]["vehicleId"].get<std::int64_t>();
  EXPECT_EQ(service.get("/live?vehid=" + std::to_string(own)).status, 200);
  expectFailure(service.get("/live?vehid=1001"), 404, "1001");
  service.signIn("demo");
  expectFailure(service.get("/info?vehid=" + std::to_string(own)), 404, "no vehicle");
  expectFailure(service.get("/live?vehid=1046"), 404, "1046");
}

TEST(DemoEndpoints, RevokeOnlyTheTokenThatSignsOutAndRememberItAcrossARestart) {
  const std::string file = testing::TempDir() + "fleetor-demo-state";
  std::ofstream(file) << "cut sho";
  std::string left;
  std::string stayed;
  {
    RunningService service(45, file);
    left = service.signIn("demo");
    stayed = service.signIn("demo");
    expectFailure(service.post("/logout", "", left), 400, "uid");
    EXPECT_EQ(service.post("/logout", "uid=1", left).status, 200);
    expectFailure(service.get("/user", left), 401, "revoked");
    expectFailure(service.post("/logout", "uid=1", left), 401, "revoked");
  }
  RunningService restarted(45, file);
  EXPECT_EQ(restarted.get("/user", left).status, 401);
  EXPECT_EQ(restarted.get("/user", stayed).status, 200);
  std::stringstream kept;
  kept << std::ifstream(file).rdbuf();
  EXPECT_EQ(kept.str().find(left), std::string::npos) << "a token must not be written down";
  std::remove(file.c_str());
}

TEST(DemoEndpoints, SayWhatIsWrongWithAParameter) {
  RunningService service;
  service.signIn("demo");
  const struct {
    const char* path;
    const char* mention;
  } cases[] = {
      {"/live", "\"vehid\" is missing"},
      {"/live?vehid=", "\"vehid\" must be"},
      {"/live?vehid=1001x", "\"vehid\" must be"},
      {"/live?vehid=99999999999999999999", "\"vehid\" must be"},
      {"/map?vehid=1001", "\"date\" is missing"},
      {"/map?vehid=1001&date=", "yyyy-MM-dd"},
      {"/map?vehid=1001&date=2026-02-29", "yyyy-MM-dd"},
      {"/route?vehid=1001&date=%00%ff%zz", "yyyy-MM-dd"},
      {"/vehicles?offset=-1", "\"offset\" must be"},
      {"/vehicles?limit=0", "\"limit\" must be"},
      {"/vehicles?limit=10001", "\"limit\" must be"},
  };
  for (const auto& [path, mention] : cases)
    expectFailure(service.get(path), 400, mention);
  expectFailure(service.post("/vehicles", "", service.token), 405, "GET");
  expectFailure(service.get("/logout"), 405, "POST");
  expectFailure(service.get("/token?grant_type=password"), 405, "POST");
  expectFailure(service.get("/vehicles/1001"), 404, "resource");
  expectFailure(service.get("/" + std::string(7000, 'a')), 404, "resource");
}

// Sends bytes as they are and waits until the service has closed the connection.
void sendBytes(int port, const std::string& bytes) {
  const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  ASSERT_EQ(::connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
  ::shutdown(socket, SHUT_WR);
  char drain[4096];
  while (::recv(socket, drain, sizeof drain, 0) > 0)
    continue;
  ::close(socket);
}

TEST(DemoEndpoints, OutliveWhateverIsSent) {
  RunningService service;
  service.signIn("demo");
  const std::string bearer = "Authorization: Bearer " + service.token + "\r\n";
  const std::string attacks[] = {
      "\r\n\r\n",
      "GET " + std::string(20000, '/') + " HTTP/1.1\r\n\r\n",
      "GET /live?" + std::string(6000, '&') + "vehid HTTP/1.1\r\n" + bearer + "\r\n",
      "POST /token?grant_type=password HTTP/1.1\r\nContent-Length: 99999999999999999999\r\n\r\nx",
      "POST /token?grant_type=password HTTP/1.1\r\nContent-Length: -5\r\n\r\n",
      "POST /control/faults HTTP/1.1\r\nContent-Length: 2000\r\n\r\n" + std::string(2000, '['),
      "GET /user HTTP/1.1\r\nRange: bytes=9-1,x\r\n" + bearer + "\r\n",
      "GET /user HTTP/1.1\r\nAuthorization: Bearer \xff\xfe.\x01.\r\n\r\n",
      std::string(300000, '\0'),
  };
  for (const std::string& attack : attacks) {
    sendBytes(service.port(), attack);
    EXPECT_EQ(service.get("/user").status, 200) << attack.substr(0, 60);
  }
}

TEST(DemoEndpoints, ListTheLastRequestsWithoutTheirSecrets) {
  RunningService service;
  const std::string token = service.signIn("demo");
  service.get("/vehicles?limit=20&offset=0&access_token=hidden-one");
  service.post("/token?grant_type=password&pass%77ord=hidden-two", "password=hidden-three&username=demo");
  const Answer log = service.get("/control/requests", "");
  ASSERT_EQ(log.json["count"], 3) << log.body;
  const Json& list = log.json["requests"][1];
  EXPECT_EQ(list["verb"], "GET");
  EXPECT_EQ(list["path"], "/vehicles");
  EXPECT_EQ(list["query"], "limit=20&offset=0&access_token=***");
  EXPECT_NE(std::ranges::find(list["headers"], Json("Authorization")), list["headers"].end());
  EXPECT_EQ(log.json["requests"][2]["form"], "password=***&username=demo");
  EXPECT_EQ(log.json["requests"][2]["status"], 400);
  for (const std::string& secret : {token, std::string("hidden")})
    EXPECT_EQ(log.body.find(secret), std::string::npos) << log.body;
  service.remove("/control/requests");
  EXPECT_EQ(service.get("/control/requests", "").json["count"], 0);
}

}  // namespace
}  // namespace fleetor::demo
