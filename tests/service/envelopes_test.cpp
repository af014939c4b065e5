#include "service/envelopes.h"

#include "support/testing.h"

namespace fleetor::test {
namespace {

VehiclesResponse page(std::int64_t total, std::initializer_list<std::int64_t> ids) {
  VehiclesResponse made;
  made.total = total;
  made.vehicles.emplace();
  for (const auto id : ids)
    made.vehicles->emplace_back().vehicleId = id;
  return made;
}

TEST(ListEnvelopes, GatherPagesAndCountDownOnError) {
  auto list = VehiclesResponse::initForLoading();
  list.error.code = 200;  // of the answers nothing but the page and the total is taken over
  EXPECT_EQ(list.total, 1);
  EXPECT_TRUE(list.isValidResponse() && list.vehicles->empty());
  list.nextResult(page(5, {3, 1}));
  list.nextResult(page(4, {1, 2}));
  auto expected = page(4, {3, 1, 1, 2});
  expected.error.code = 200;
  EXPECT_EQ(list, expected) << "in order, nothing merged";
  list.total = 9;
  list.onError();
  EXPECT_EQ(list.total, 4);

  auto trips = RouteResponse::initForLoading();
  EXPECT_TRUE(trips.total == 1 && trips.route && trips.route->empty());
  RouteResponse answer;
  answer.total = 8;
  answer.route.emplace(2);
  trips.nextResult(answer);
  EXPECT_EQ(trips, answer);
  trips.onError();
  EXPECT_EQ(trips.total, 2);
}

template <class R, class Record>
void expectRows(std::optional<Record> R::*payload, std::int64_t rows) {
  auto screen = R::initForLoading();
  EXPECT_TRUE(screen.total == 1 && !(screen.*payload));
  R answer;
  (answer.*payload).emplace();
  screen.nextResult(answer);
  EXPECT_TRUE(screen.total == rows && screen.*payload);
  screen.onError();
  EXPECT_EQ(screen.total, 0);
}

TEST(SingleRecordEnvelopes, CountTheRowsOfTheirScreens) {
  expectRows(&UserResponse::user, 10);
  expectRows(&InfoResponse::info, 6);
}

template <class R, class Payload>
void expectEnvelope(std::optional<Payload> R::*payload, const char* keys) {
  std::string found;
  for (const auto& property : json::TableOf<R>::entries)
    found += std::string(property.key) + (property.isOptional ? "? " : " ");
  EXPECT_EQ(found, keys);

  R envelope;
  envelope.error.code = 200;
  EXPECT_FALSE(envelope.isValidResponse()) << keys;
  (envelope.*payload).emplace();
  for (const int code : {0, 200, 500}) {
    envelope.error.code = code;
    EXPECT_EQ(envelope.isValidResponse(), code == 200) << keys;
  }
}

TEST(Envelopes, AreValidWithAPayloadAndCode200Only) {
  expectEnvelope(&TokenResponse::token, "total error token? ");
  expectEnvelope(&UserResponse::user, "total error user? ");
  expectEnvelope(&InfoResponse::info, "total error info ");
  expectEnvelope(&LiveResponse::live, "total error live? ");
  expectEnvelope(&VehiclesResponse::vehicles, "total error vehicles? ");
  expectEnvelope(&MapResponse::map, "total error map? ");
  expectEnvelope(&RouteResponse::route, "total error route? ");
}

}  // namespace
}  // namespace fleetor::test
