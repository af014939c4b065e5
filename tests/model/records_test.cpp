#include "model/account_records.h"
#include "model/vehicle_records.h"
#include "support/testing.h"

namespace fleetor {
namespace {

template <class R>
Result<R> recordFrom(const std::string& json) {
  return JSONModel::initWithDictionary<R>(*decodeJSON(json));
}

template <class R>
void expectKeys(const char* expected) {
  std::string keys;
  for (const auto& property : json::TableOf<R>::entries)
    keys += std::string(property.key) + (property.isOptional ? "? " : " ");
  EXPECT_EQ(keys, expected) << json::recordType<R>.name;
}

TEST(RecordsTest, ReadAndWriteExactlyTheKeysOfTheService) {
  expectKeys<Vehicle>("vehicleId name registration mapLineColor icon ");
  expectKeys<Live>(
      "datetime vehicles active speed powerSupply powerSupplyType? sig direction fuel fuelType? rpm odometer "
      "led street "
      "temp location ");
  expectKeys<LiveLed>("z1 z3 z4 z6 z8 z14 z23 z28 z33 ");
  expectKeys<Location>("lat lon ");
  expectKeys<MapEntry>("lp location dateTime duration totdist label street ");
  expectKeys<RouteItem>("lp status timeFrom timeTo duration distance from to ");
  expectKeys<User>("name statusDescription sms companyName address1 address2 vat gsm mail expirationDate ");
  expectKeys<Token>("access_token token_type ");
  expectKeys<Info>("auto service live ");
  expectKeys<InfoAuto>("name registration mapLineColor icon driver driverGsm engine tank active ");
  expectKeys<InfoService>("oil tech odo ");
  expectKeys<InfoLive>("odo fuel ");
}

TEST(RecordsTest, VehicleJoinsNameAndRegistration) {
  const char* cases[][3] = {{"Van", "", "Van"}, {"", "WX 1", "WX 1"}, {"Van", "WX 1", "Van\nWX 1"}};
  for (const auto& [name, registration, full] : cases) {
    Vehicle vehicle;
    vehicle.name = name;
    vehicle.registration = registration;
    EXPECT_EQ(vehicle.fullName(), full);
  }
}

TEST(RecordsTest, PointsOfAMapHaveAPlaceAndTexts) {
  const auto location = recordFrom<Location>(R"({"lat":"52.1","lon":21.0})");
  ASSERT_TRUE(location);
  EXPECT_EQ(location->coordinate(), (Coordinate{52.1, 21}));
  EXPECT_EQ(location->title([](const std::string& key) { return "<" + key + ">"; }), "<Current position>");
  EXPECT_EQ(location->subtitle(), "");
  EXPECT_EQ(recordFrom<Location>(R"({"lat":"north","lon":""})")->coordinate(), Coordinate());

  MapEntry entry;
  entry.location = *location;
  entry.dateTime = "10:00";
  entry.street = "Main 1";
  EXPECT_EQ(entry.title(), "Main 1");
  EXPECT_EQ(entry.subtitle(), "10:00");
  entry.duration = "5 min";
  EXPECT_EQ(entry.subtitle(), "10:00 (5 min)");
  EXPECT_EQ(entry.coordinate().longitude, 21);
}

}  // namespace
}  // namespace fleetor
