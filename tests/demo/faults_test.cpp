#include <chrono>
#include <future>
#include <memory>

#include "running_service.h"

namespace fleetor::demo {
namespace {

class DemoFaults : public testing::Test {
 protected:
  DemoFaults() { service.signIn(); }

  Answer faulty(const std::string& fault) {
    service.remove("/control/faults");
    EXPECT_EQ(service.addFault("vehicles=" + fault).status, 200) << fault;
    return service.get("/vehicles");
  }

  RunningService service;
};

TEST_F(DemoFaults, ReplaceTheAnswerOrPartsOfIt) {
  const std::string plain = service.get("/vehicles").body;
  for (const int status : {401, 404, 500}) {
    const Answer answer = faulty(std::to_string(status));
    EXPECT_EQ(answer.status, status);
    EXPECT_EQ(answer.json["error"]["code"], status);
  }
  const Answer coded = faulty("error-code");
  EXPECT_EQ(coded.status, 200);
  EXPECT_EQ(coded.json["error"]["code"], 500);
  EXPECT_EQ(faulty("empty").body, "");
  EXPECT_EQ(faulty("space").body, " ");
  const Answer page = faulty("html");
  EXPECT_EQ(page.header("Content-Type"), "text/html; charset=utf-8");
  EXPECT_EQ(page.body.substr(0, 9), "<!DOCTYPE");
  EXPECT_EQ(faulty("content-type").header("Content-Type"), "text/plain; charset=utf-8");
  EXPECT_EQ(faulty("truncated").body, plain.substr(0, plain.size() / 2));
  EXPECT_EQ(faulty("cut").status, 0) << "the client must see a transfer that failed";
  EXPECT_EQ(faulty("total:5").json["total"], 50);
  EXPECT_TRUE(faulty("null").json["vehicles"][0]["vehicleId"].is_null());
  EXPECT_FALSE(faulty("missing").json["vehicles"][0].contains("vehicleId"));
  const Json broken = faulty("broken-element").json["vehicles"];
  EXPECT_EQ(broken.size(), 20u);
  EXPECT_TRUE(broken[0].is_string() && broken[1].is_object());
}

TEST_F(DemoFaults, EncodeTheBodyInAnotherCharacterSetAndNameItOrLie) {
  const std::string plain = service.get("/vehicles").body;
  ASSERT_NE(plain.find("Caf\xc3\xa9"), std::string::npos);
  const Answer latin = faulty("charset:iso-8859-1");
  EXPECT_EQ(latin.header("Content-Type"), "application/json; charset=iso-8859-1");
  EXPECT_NE(latin.body.find("Caf\xe9"), std::string::npos);
  const Answer lie = faulty("charset-lie:iso-8859-1");
  EXPECT_EQ(lie.header("Content-Type"), "application/json; charset=utf-8");
  EXPECT_EQ(lie.body, latin.body);
  EXPECT_EQ(faulty("charset:utf-16").body.size(), 2 + 2 * latin.body.size());
  const Answer named = faulty("charset-name:x-nowhere");
  EXPECT_EQ(named.header("Content-Type"), "application/json; charset=x-nowhere");
  EXPECT_EQ(named.body, plain);
}

TEST_F(DemoFaults, DelayOnlyTheEndpointThatTheyNameAndOnlyAsOftenAsAsked) {
  service.addFault("live=delay:150*2");
  const auto seconds = [this](const std::string& path) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(service.get(path).status, 200);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  };
  EXPECT_GE(seconds("/live?vehid=1001"), 0.15);
  seconds("/user");
  EXPECT_EQ(service.get("/control/faults").json["faults"][0]["remaining"], 1);
  EXPECT_GE(seconds("/live?vehid=1001"), 0.15);
  EXPECT_TRUE(service.get("/control/faults").json["faults"].empty());
}

TEST_F(DemoFaults, LeaveRequestsUnansweredWhileOthersAreServedUntilTheServiceStops) {
  auto hung = std::make_unique<RunningService>();
  hung->signIn();
  hung->addFault("live=hang");
  std::vector<std::future<bool>> answered(30);
  for (auto& each : answered)
    each = std::async(std::launch::async, [port = hung->port, token = hung->token] {
      httplib::Client client("127.0.0.1", port);
      client.set_read_timeout(std::chrono::minutes(5));
      return static_cast<bool>(client.Get("/live?vehid=1001", RunningService::bearer(token)));
    });
  while (hung->get("/control/requests").json["count"] < 31)
    std::this_thread::yield();
  EXPECT_EQ(hung->get("/vehicles").status, 200);
  for (auto& answer : answered)
    EXPECT_NE(answer.wait_for(std::chrono::seconds(0)), std::future_status::ready);
  hung.reset();
  for (auto& answer : answered)
    EXPECT_FALSE(answer.get());
}

TEST_F(DemoFaults, AffectEveryEndpointWhenMeantForAllButNotTheControls) {
  service.addFault("all=500");
  for (const char* path :
       {"/vehicles", "/live?vehid=1001", "/map?vehid=1001&date=2026-03-01", "/tiles/dark/3/0/0.png"})
    EXPECT_EQ(service.get(path).status, 500) << path;
  EXPECT_EQ(service.post("/logout", "uid=1", service.token).status, 500);
  EXPECT_EQ(service.remove("/control/faults").status, 200);
  EXPECT_EQ(service.get("/user").status, 401) << "the sign-out took effect although its answer was spoilt";
}

TEST_F(DemoFaults, AreRefusedWithAReason) {
  const struct {
    const char* fault;
    const char* mention;
  } cases[] = {{"", "ENDPOINT=KIND"},
               {"lives=500", "ENDPOINT=KIND"},
               {"live=melt", "\"melt\""},
               {"live=delay:soon", "takes a number"},
               {"live=delay", "takes a number"},
               {"live=status:99", "200 to 599"},
               {"live=hang:1", "no argument"},
               {"live=500*0", "count"},
               {"live=charset:klingon", "iso-8859-1"}};
  for (const auto& [fault, mention] : cases)
    expectFailure(service.addFault(fault), 400, mention);
  expectFailure(service.post("/control/faults", "nonsense", {}, "application/json"), 400, "JSON");
  EXPECT_TRUE(service.get("/control/faults").json["faults"].empty());
}

}  // namespace
}  // namespace fleetor::demo
