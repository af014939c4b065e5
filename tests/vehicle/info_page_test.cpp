#include "lone_page.h"

namespace fleetor::test {
namespace {

using testing::ElementsAre;

class InfoPage : public LonePage<InfoDetailViewController> {
 protected:
  static std::shared_ptr<const Live> record(std::int64_t vehicleId) {
    const auto answer = JSONModel::initWithDictionary<LiveResponse>(
        *decodeJSON(liveReply(static_cast<int>(vehicleId), 57).body));
    return std::make_shared<const Live>(*answer->live);
  }

  TableView& table = page->itemsTableView();
};

TEST_F(InfoPage, SpinsUntilTheFirstRecordAndThenListsIt) {
  EXPECT_THAT(Client::textsOf(table), ElementsAre("..."));
  EXPECT_EQ(table.heightForRow(0), 60);
  EXPECT_TRUE(dynamic_cast<ActivityIndicator&>(*table.cellForRow(0)->viewWithTag(123)).isAnimating());
  poll(record(7));
  EXPECT_THAT(Client::textsOf(table),
              ElementsAre("Vehicle 7\nKR 7", "2026-03-10 08:00:15 | Update time", "57km/h | Speed",
                          "2100 | RPM", "270° | Direction", "Long Street 5 | Address", "13.8V | Power supply",
                          "21°C | Temperature", "40l | Fuel", "120345 km | Odometer"));
  EXPECT_EQ(table.heightForRow(0), 68);
  EXPECT_EQ(table.heightForRow(1), 42);
  EXPECT_EQ(dynamic_cast<ImageView&>(*table.cellForRow(0)->findOutlet("photoImageView")).image(), "Car7");
}

TEST_F(InfoPage, IgnoresErrorsOtherVehiclesAndWhatComesWhileItIsHidden) {
  poll(record(8));
  EXPECT_FALSE(page->live());
  poll(record(7));
  const auto shown = page->live();
  poll(APIFailure{});
  poll({});
  poll(record(8));
  EXPECT_EQ(page->live(), shown);
  hide();
  poll(record(7));
  EXPECT_EQ(page->live(), shown);
}

}  // namespace
}  // namespace fleetor::test
