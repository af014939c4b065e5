#include <chrono>
#include <future>

#include "running_service.h"

namespace fleetor::demo {
namespace {

class DemoFaults : public testing::Test {
 protected:
  DemoFaults() { service.signIn("demo"); }

  Answer faulty(const std::string& fault, const std::string& path = "/vehicles") {
    service.remove("/control/faults");
    const Answer added = service.addFault(fault);
    EXPECT_EQ(added.status, 200) << fault << added.body;
    return service.get(path);
  }

  RunningService service;
};

TEST_F(DemoFaults, ReplaceStatusBodyOrType) {
  for (const int status : {401, 403, 404, 500}) {
    const Answer answer = faulty("vehicles=" + std::to_string(status));
    EXPECT_EQ(answer.status, status);
    EXPECT_EQ(answer.json["error"]["code"], status);
  }
  EXPECT_EQ(faulty("vehicles=status:299").status, 299);
  const Answer coded = faulty("vehicles=error-code:401");
  EXPECT_EQ(coded.status, 200);
  EXPECT_EQ(coded.json["error"]["code"], 401);
  EXPECT_EQ(faulty("vehicles=empty").body, "");
  EXPECT_EQ(faulty("vehicles=space").body, " ");
  const Answer page = faulty("vehicles=html");
  EXPECT_EQ(page.status, 200);
  EXPECT_EQ(page.contentType, "text/html; charset=utf-8");
  EXPECT_EQ(page.body.substr(0, 9), "<!DOCTYPE");
  const Answer typed = faulty("vehicles=content-type:text/csv");
  EXPECT_EQ(typed.contentType, "text/csv");
  EXPECT_TRUE(typed.json.is_object());
  const Answer half = faulty("vehicles=truncated");
  EXPECT_EQ(half.status, 200);
  EXPECT_TRUE(half.json.is_discarded());
  EXPECT_GT(half.body.size(), 500u);
}

TEST_F(DemoFaults, EncodeTheBodyInAnotherCharacterSetAndNameItOrLie) {
  const std::string plain = service.get("/vehicles").body;
  ASSERT_NE(plain.find("Caf\xc3\xa9"), std::string::npos);
  const Answer latin = faulty("vehicles=charset:iso-8859-1");
  EXPECT_EQ(latin.contentType, "application/json; charset=iso-8859-1");
  EXPECT_NE(latin.body.find("Caf\xe9"), std::string::npos);
  const Answer lie = faulty("vehicles=charset-lie:iso-8859-1");
  EXPECT_EQ(lie.contentType, "application/json; charset=utf-8");
  EXPECT_EQ(lie.body, latin.body);
  const Answer wide = faulty("vehicles=charset:utf-16le");
  EXPECT_EQ(wide.body.substr(0, 4), std::string("{\0\"\0", 4));
  EXPECT_EQ(faulty("vehicles=charset:utf-16").body.substr(0, 4), std::string("\xfe\xff\0{", 4));
  const Answer named = faulty("vehicles=charset-name:x-nowhere");
  EXPECT_EQ(named.contentType, "application/json; charset=x-nowhere");
  EXPECT_EQ(named.body, plain);
}

TEST_F(DemoFaults, SpoilTheEnvelope) {
  EXPECT_EQ(faulty("vehicles=total:5").json["total"], 50);
  EXPECT_TRUE(faulty("vehicles=null:registration").json["vehicles"][0]["registration"].is_null());
  EXPECT_TRUE(faulty("vehicles=null:vehicles.3.name").json["vehicles"][3]["name"].is_null());
  EXPECT_FALSE(faulty("vehicles=missing").json["vehicles"][0].contains("vehicleId"));
  EXPECT_FALSE(faulty("vehicles=missing:total").json.contains("total"));
  EXPECT_FALSE(faulty("vehicles=missing:error.code").json["error"].contains("code"));
  EXPECT_FALSE(faulty("live=missing:live.led.z33", "/live?vehid=1001").json["live"]["led"].contains("z33"));
  EXPECT_TRUE(faulty("info=null:driver", "/info?vehid=1001").json["info"]["auto"]["driver"].is_null());
  const Json broken = faulty("vehicles=broken-element:2").json["vehicles"];
  ASSERT_EQ(broken.size(), 20u);
  EXPECT_FALSE(broken[2].is_object());
  EXPECT_TRUE(broken[1].is_object() && broken[3].is_object());
  EXPECT_EQ(faulty("user=null:nonsense", "/user").json["error"]["code"], 200);
}

TEST_F(DemoFaults, CutTheConnectionInMidBody) {
  const Answer answer = faulty("vehicles=cut:40");
  EXPECT_EQ(answer.status, 0) << "the client must see a transfer that failed";
  EXPECT_EQ(service.get("/user").status, 200);
}

TEST_F(DemoFaults, DelayOnlyWhatTheyAreMeantForAndOnlyAsOftenAsAsked) {
  service.addFault("live=delay:150*2");
  const auto seconds = [this](const std::string& path) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(service.get(path).status, 200);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  };
  EXPECT_LT(seconds("/user"), 0.15);
  EXPECT_GE(seconds("/live?vehid=1001"), 0.15);
  EXPECT_EQ(service.get("/control/faults").json["faults"][0]["remaining"], 1);
  EXPECT_GE(seconds("/live?vehid=1001"), 0.15);
  EXPECT_LT(seconds("/live?vehid=1001"), 0.15);
  EXPECT_TRUE(service.get("/control/faults").json["faults"].empty());
}

TEST_F(DemoFaults, LeaveARequestUnansweredWhileOthersAreServed) {
  service.addFault("live=hang");
  std::vector<std::future<Answer>> waiting;
  waiting.reserve(30);
  for (int i = 0; i < 30; ++i)
    waiting.push_back(std::async(std::launch::async, [this] { return service.get("/live?vehid=1001"); }));
  while (service.get("/control/requests").json["count"] < 31)
    std::this_thread::yield();
  EXPECT_EQ(service.get("/vehicles").status, 200);
  for (auto& answer : waiting)
    EXPECT_NE(answer.wait_for(std::chrono::seconds(0)), std::future_status::ready);
  const auto begin = std::chrono::steady_clock::now();
  service.server().stop();
  for (auto& answer : waiting)
    EXPECT_EQ(answer.get().status, 0);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5))
      << "the end must not wait for the hung";
}

TEST_F(DemoFaults, StrikeEveryEndpointWhenMeantForAllButNotTheControls) {
  service.addFault("all=500");
  for (const char* path :
       {"/vehicles", "/live?vehid=1001", "/map?vehid=1001&date=2026-03-01", "/user", "/info"})
    EXPECT_EQ(service.get(path).status, 500) << path;
  EXPECT_EQ(service.signInAnswer("demo", "demo").status, 500);
  EXPECT_EQ(service.post("/logout", "uid=1", service.token).status, 500);
  const Answer list = service.get("/control/faults");
  ASSERT_EQ(list.json["faults"].size(), 1u);
  const std::string id = list.json["faults"][0]["id"].dump();
  EXPECT_EQ(service.remove("/control/faults?id=" + id).status, 200);
  // The sign-out above went through although its answer was spoilt.
  EXPECT_EQ(service.get("/user").status, 401);
}

TEST_F(DemoFaults, AreAddedAsObjectsListsOrTextsAndRefusedWithAReason) {
  const char* several = R"([{"endpoint":"user","kind":"total","argument":3,"count":1},"live=500"])";
  EXPECT_EQ(service.post("/control/faults", several, {}, "application/json").json["faults"].size(), 2u);
  EXPECT_EQ(service.get("/user").json["total"], 4);
  const struct {
    const char* body;
    const char* mention;
  } wrong[] = {
      {"nonsense", "JSON"},
      {"7", "object"},
      {R"("")", "ENDPOINT=KIND"},
      {R"("lives=500")", "ENDPOINT=KIND"},
      {R"("live=melt")", "no fault \"melt\""},
      {R"("live=delay:soon")", "takes a number"},
      {R"("live=delay")", "takes a number"},
      {R"("live=status:99")", "between 200 and 599"},
      {R"("live=hang:1")", "no argument"},
      {R"("live=500*0")", "count"},
      {R"("live=charset:klingon")", "iso-8859-1"},
      {R"(["user=500","live=melt"])", "melt"},
  };
  for (const auto& [body, mention] : wrong)
    expectFailure(service.post("/control/faults", body, {}, "application/json"), 400, mention);
  EXPECT_EQ(service.get("/user").status, 200) << "a refused list must add none of its faults";
}

}  // namespace
}  // namespace fleetor::demo
