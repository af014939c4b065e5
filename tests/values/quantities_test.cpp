#include "values/quantities.h"

#include "support/testing.h"

namespace fleetor::test {
namespace {

constexpr double refused = -12345;

TEST(Quantities, NumbersAreReadWhereOnlyOneReadingIsPossible) {
  const std::pair<const char*, double> cases[] = {{"12", 12},
                                                  {"12.3", 12.3},
                                                  {"12,3", 12.3},
                                                  {"-3.5", -3.5},
                                                  {"-0,05", -0.05},
                                                  {"-999.97", -999.97},
                                                  {"99999,97", 99999.97},
                                                  {"\u22125", -5},
                                                  {"+4", 4},
                                                  {" 7 ", 7},
                                                  {"0.125", 0.125},
                                                  {"1234.567", 1234.567},
                                                  {"1.2345", 1.2345},
                                                  {"120 345", 120345},
                                                  {"1\u00A0234,5", 1234.5},
                                                  {"1.234,5", 1234.5},
                                                  {"1,234,567.25", 1234567.25},
                                                  {"1.234.567", 1234567}};
  for (const auto& [text, number] : cases)
    EXPECT_DOUBLE_EQ(readNumber(text).value_or(refused), number) << text;
  for (const char* text :
       {"12.345", "1,234", "", "-", ".5", "5.", "1..2", "1,2,3", "1.2,3", "12 34", "1 234 5", "012 345",
        "1e5", "0x10", "inf", "nan", "12 km", "1.234,567.8", "1,234 567"})
    EXPECT_FALSE(readNumber(text)) << text;
  EXPECT_FALSE(readNumber(std::string(41, '1')));
}

TEST(Quantities, UnitsAreKeptApartAndDistancesKnowTheirs) {
  const auto voltage = readQuantity(" 13.8\u00A0V ");
  ASSERT_TRUE(voltage);
  EXPECT_EQ(voltage->unit, "V");
  for (const char* text : {"12-14 V", "12:30", "5 km 300 m", "1e5 km", "3 .V", "km"})
    EXPECT_FALSE(readQuantity(text)) << text;

  const std::pair<const char*, double> cases[] = {
      {"12.3", 12.3},     {"12,3 km", 12.3}, {"340 m", 0.34}, {"120 345 km", 120345},
      {"12 mi", refused}, {"12 M", refused}, {"km", refused}, {"12 km/h", refused}};
  for (const auto& [text, kilometres] : cases)
    EXPECT_DOUBLE_EQ(readKilometres(text).value_or(refused), kilometres) << text;
}

TEST(Quantities, CoordinatesAreDegreesOnTheEarth) {
  EXPECT_EQ(readCoordinate("52.123", "-21,456"), (Coordinate{52.123, -21.456}));
  EXPECT_EQ(readCoordinate("-90", "180.0"), (Coordinate{-90, 180}));
  const std::pair<const char*, const char*> cases[] = {
      {"90.01", "0"},  {"0", "-180.5"}, {"", "21"},     {"52.1", ""},     {"52.1 N", "21"},
      {"52.1.2", "2"}, {"52 123", "2"}, {"0.000", "0"}, {"1.234,5", "1"}, {"52°", "21"}};
  for (const auto& [latitude, longitude] : cases)
    EXPECT_FALSE(readCoordinate(latitude, longitude)) << latitude << " " << longitude;
}

}  // namespace
}  // namespace fleetor::test
