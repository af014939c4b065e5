#include "service/envelopes.h"

#include <gtest/gtest.h>

namespace fleetor::test {
namespace {

template <class R>
Result<R> mapped(std::string json) {
  return JSONModel::initWithDictionary<R>(decodeJSON(std::move(json)).value());
}

VehiclesResponse page(std::int64_t total, std::initializer_list<std::int64_t> ids) {
  VehiclesResponse made;
  made.total = total;
  made.vehicles.emplace();
  for (const auto id : ids)
    made.vehicles->emplace_back().vehicleId = id;
  return made;
}

std::vector<std::int64_t> idsOf(const VehiclesResponse& response) {
  std::vector<std::int64_t> ids;
  for (const auto& each : *response.vehicles)
    ids.push_back(each.vehicleId);
  return ids;
}

TEST(ListEnvelopes, GatherPagesAndCountDownOnError) {
  auto list = VehiclesResponse::initForLoading();
  EXPECT_EQ(list.total, 1);
  EXPECT_TRUE(list.vehicles && list.vehicles->empty());
  list.nextResult(page(5, {3, 1}));
  list.nextResult(page(4, {1, 2}));
  EXPECT_EQ(idsOf(list), (std::vector<std::int64_t>{3, 1, 1, 2})) << "in order, nothing merged";
  EXPECT_EQ(list.total, 4);
  list.nextResult(page(9, {}));
  EXPECT_EQ(idsOf(list).size(), 4u);
  EXPECT_EQ(list.total, 9);
  list.onError();
  EXPECT_EQ(list.total, 4);

  auto trips = RouteResponse::initForLoading();
  EXPECT_TRUE(trips.total == 1 && trips.route && trips.route->empty());
  RouteResponse answer;
  answer.total = 2;
  answer.route.emplace(2);
  trips.nextResult(answer);
  EXPECT_EQ(trips.route->size(), 2u);
  trips.total = 8;
  trips.onError();
  EXPECT_EQ(trips.total, 2);
}

TEST(SingleRecordEnvelopes, CountTheRowsOfTheirScreens) {
  auto user = UserResponse::initForLoading();
  EXPECT_TRUE(user.total == 1 && !user.user);
  UserResponse account;
  account.total = 1;
  account.user.emplace().name = "Jan";
  user.nextResult(account);
  EXPECT_EQ(user.total, 10);
  EXPECT_EQ(user.user->name, "Jan");
  user.onError();
  EXPECT_EQ(user.total, 0);

  auto info = InfoResponse::initForLoading();
  EXPECT_TRUE(info.total == 1 && !info.info);
  InfoResponse answer;
  answer.info.emplace().service.oil = "soon";
  info.nextResult(answer);
  EXPECT_EQ(info.total, 6);
  EXPECT_EQ(info.info->service.oil, "soon");
  info.onError();
  EXPECT_EQ(info.total, 0);
}

template <class R>
void expectOptionalPayload(const std::string& name, const std::string& payload) {
  const std::string status = R"({"total":3,"error":{"code":200,"description":"OK"})";
  const auto without = mapped<R>(status + "}");
  ASSERT_TRUE(without) << name;
  EXPECT_FALSE(without->isValidResponse()) << name;
  const std::string record = std::string(",\"").append(name).append("\":").append(payload).append("}");
  const auto with = mapped<R>(status + record);
  ASSERT_TRUE(with) << name;
  EXPECT_TRUE(with->isValidResponse()) << name;
  EXPECT_EQ(with->total, 3);
  for (const char* code : {"0", "500"}) {
    const std::string error = std::string(R"({"code":)").append(code).append(R"(,"description":"no"})");
    const auto refused = mapped<R>(std::string(R"({"total":3,"error":)").append(error).append(record));
    ASSERT_TRUE(refused) << name;
    EXPECT_FALSE(refused->isValidResponse()) << name;
  }
}

TEST(Envelopes, AreValidWithAPayloadAndCode200Only) {
  expectOptionalPayload<TokenResponse>("token", R"({"access_token":"a","token_type":"b"})");
  expectOptionalPayload<VehiclesResponse>("vehicles", "[]");
  expectOptionalPayload<MapResponse>("map", "[]");
  expectOptionalPayload<RouteResponse>("route", "[]");
  expectOptionalPayload<UserResponse>(
      "user", R"({"name":"","statusDescription":"","sms":"","companyName":"","address1":"","address2":"",)"
              R"("vat":"","gsm":"","mail":"","expirationDate":""})");
  expectOptionalPayload<LiveResponse>(
      "live",
      R"({"datetime":"","vehicles":{"vehicleId":1,"name":"","registration":"","mapLineColor":"","icon":""},)"
      R"("active":"","speed":0,"powerSupply":"","sig":"","direction":"","fuel":"","rpm":"","odometer":"",)"
      R"("led":{"z1":"","z3":"","z4":"","z6":"","z8":"","z14":"","z23":"","z28":"","z33":""},)"
      R"("street":"","temp":"","location":{"lat":"","lon":""}})");

  InfoResponse info;  // always has its payload when it comes from the service
  info.info.emplace();
  for (const int code : {0, 200, 500}) {
    info.error.code = code;
    EXPECT_EQ(info.isValidResponse(), code == 200);
  }
}

TEST(Envelopes, RefuseAnswersWithoutTheirStatus) {
  for (const char* json :
       {R"({"error":{"code":200,"description":""}})", R"({"total":1})",
        R"({"total":null,"error":{"code":200,"description":""}})", R"({"total":1,"error":{"code":200}})",
        R"({"total":1,"error":{"code":null,"description":""}})", R"({"total":1,"error":{"description":""}})",
        R"({"total":1,"error":null})"})
    EXPECT_FALSE(mapped<APIResponse>(json)) << json;

  const auto info = mapped<InfoResponse>(R"({"total":1,"error":{"code":200,"description":""}})");
  ASSERT_FALSE(info);
  EXPECT_EQ(info.error().kJSONModelMissingKeys, std::vector<std::string>{"info"});
}

}  // namespace
}  // namespace fleetor::test
