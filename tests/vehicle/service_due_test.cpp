#include "vehicle/service_due.h"

#include "support/testing.h"

namespace fleetor::test {
namespace {

class Due : public testing::Test {
 protected:
  /// On 10 March 2026, at 120,345 km.
  ServiceDue due() {
    return serviceDue(info, live, [](const std::string& key) { return key; });
  }

  Due() {
    live.datetime = "2026-03-10 23:59:59";
    live.odometer = "120345 km";
  }

  Live live;
  Info info;
};

TEST_F(Due, IsCountedInDaysOfTheServiceAndKilometresOfTheOdometer) {
  const std::pair<const char*, const char*> days[] = {
      {"2026-03-08", "Oil change: 2 days overdue"}, {"2026-03-09", "Oil change: since yesterday"},
      {"2026-03-10", "Oil change: today"},          {"2026-03-11", "Oil change: tomorrow"},
      {"2026-04-09", "Oil change: in 30 days"},     {"2026-04-10", "Oil change: in 31 days"}};
  for (const auto& [day, words] : days) {
    info.service.oil = day;
    const ServiceDue found = due();
    EXPECT_EQ(found.isUrgent, std::string(day) < "2026-04-10") << day;
    EXPECT_THAT(found.overdue.empty() ? found.soon : found.overdue, ElementsAre(words));
  }
  info.service.oil = "";
  const std::pair<const char*, const char*> distances[] = {{"120005 km", "Distance service: 340 km overdue"},
                                                           {"120 344,5", "Distance service: 1 km overdue"},
                                                           {"121345", "Distance service: in 1000 km"}};
  for (const auto& [distance, words] : distances) {
    info.service.odo = distance;
    const ServiceDue found = due();
    EXPECT_THAT(found.overdue.empty() ? found.soon : found.overdue, ElementsAre(words));
  }
}

TEST_F(Due, StatesWhatIsUrgentAndOtherwiseTheNearestDay) {
  info.service.tech = "2026-12-01";
  info.service.oil = "2026-06-01";
  info.vehicle.active = "2027-01-31";
  info.service.odo = "150000 km";
  EXPECT_THAT(due().soon, ElementsAre("Oil change: in 83 days"));
  EXPECT_FALSE(due().isUrgent);
  info.vehicle.active = "2026-03-01";
  info.service.odo = "121000 km";
  EXPECT_THAT(due().overdue, ElementsAre("Localizer expiration date: 9 days overdue"));
  EXPECT_THAT(due().soon, ElementsAre("Distance service: in 655 km"));
}

TEST_F(Due, IsNotGuessed) {
  info.service.tech = "1.12.2026";
  info.service.oil = "soon";
  for (const char* distance : {"15.000", "12000 km", "171000 km", "when needed"}) {
    info.service.odo = distance;
    EXPECT_THAT(due().soon, IsEmpty()) << distance;
    EXPECT_THAT(due().overdue, IsEmpty()) << distance;
  }
  info.service.oil = "2026-03-08";
  live.datetime = "10 March";
  EXPECT_THAT(due().overdue, IsEmpty()) << "without a day to compare with";
}

}  // namespace
}  // namespace fleetor::test
