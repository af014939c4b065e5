#include <gmock/gmock.h>

#include <any>

#include "support/client.h"
#include "vehicle/notifications.h"

namespace fleetor::test {
namespace {

using testing::ElementsAre;

/// The information page of vehicle 7, alone in the window.
class InfoPage : public testing::Test {
 protected:
  InfoPage() {
    Vehicle vehicle;
    vehicle.vehicleId = 7;
    page->setVehicle(vehicle);
    client.application.window().setRootViewController(page);
  }

  static std::shared_ptr<const Live> record(std::int64_t vehicleId) {
    const auto answer = JSONModel::initWithDictionary<LiveResponse>(
        *decodeJSON(liveReply(static_cast<int>(vehicleId), 57).body));
    return std::make_shared<const Live>(*answer->live);
  }
  void post(const std::any& object) { client.center.postNotificationName(kFleetorNotificationLive, object); }
  void postRecord(std::int64_t vehicleId) { post(record(vehicleId)); }

  std::vector<std::string> rows() {
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(table.numberOfRows()));
    for (int row = 0; row < table.numberOfRows(); ++row)
      texts.push_back(Client::textOfRow(table, row) + " " +
                      std::to_string(static_cast<int>(table.heightForRow(row))));
    return texts;
  }

  Client client;
  std::shared_ptr<InfoDetailViewController> page =
      std::make_shared<InfoDetailViewController>(client.environment);
  TableView& table = page->itemsTableView();
};

TEST_F(InfoPage, SpinsUntilTheFirstRecordAndThenListsIt) {
  EXPECT_THAT(rows(), ElementsAre("... 60"));
  EXPECT_TRUE(dynamic_cast<ActivityIndicator&>(*table.cellForRow(0)->viewWithTag(123)).isAnimating());
  postRecord(7);
  EXPECT_THAT(rows(), ElementsAre("Vehicle 7\nKR 7 68", "2026-03-10 08:00:15 | Update time 42",
                                  "57km/h | Speed 42", "2100 | RPM 42", "270° | Direction 42",
                                  "Long Street 5 | Address 42", "13.8V | Power supply 42",
                                  "21°C | Temperature 42", "40l | Fuel 42", "120345 km | Odometer 42"));
  EXPECT_EQ(dynamic_cast<ImageView&>(*table.cellForRow(0)->findOutlet("photoImageView")).image(), "Car7");
}

TEST_F(InfoPage, IgnoresErrorsOtherVehiclesAndWhatComesWhileItIsHidden) {
  postRecord(8);
  EXPECT_FALSE(page->live());
  postRecord(7);
  const auto shown = page->live();
  post(APIFailure{});
  post({});
  postRecord(8);
  EXPECT_EQ(page->live(), shown);
  client.application.window().setRootViewController(nullptr);
  postRecord(7);
  EXPECT_EQ(page->live(), shown);
}

}  // namespace
}  // namespace fleetor::test
