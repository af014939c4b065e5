#include "lone_page.h"
#include "shell/base/info_cell.h"

namespace fleetor::test {
namespace {

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
  EXPECT_EQ(outletOf<ImageView>(*table.cellForRow(0), "photoImageView").image(), "Car7");
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
  client.advance(40);
  show();
  EXPECT_EQ(page->live(), shown);
  EXPECT_EQ(outletOf<Label>(*page->itemsTableView().cellForRow(1), "noteLabel").text(), "40 s");
}

TEST_F(InfoPage, ShowsTheAgeOfTheReadingsBesideTheirTimeAndFadesThemWhenTheyAreOld) {
  int reloads = 0;
  const Connection reloaded = table.reloaded.connect([&] { ++reloads; });
  const auto row = [this](int index) {
    return std::static_pointer_cast<InfoTableViewCell>(table.cellForRow(index));
  };
  poll(record(7));
  const double start = client.queues.elapsed().count();
  for (const auto& [seconds, age, mark, isFaded] : {std::tuple{0.0, "now", "AgeFresh", false},
                                                    {19.9, "now", "AgeFresh", false},
                                                    {20.1, "20 s", "AgeFresh", false},
                                                    {29.9, "25 s", "AgeFresh", false},
                                                    {30.1, "30 s", "AgeLate", false},
                                                    {60.1, "1 min", "AgeLate", false},
                                                    {299, "4 min", "AgeLate", false},
                                                    {301, "5 min", "AgeOld", true},
                                                    {7501, "2 h 5 min", "AgeOld", true}}) {
    client.advance(start + seconds - client.queues.elapsed().count());
    EXPECT_EQ(row(1)->noteLabel().text(), age);
    EXPECT_EQ(row(1)->noteImageView().image(), mark) << age;
    EXPECT_EQ(row(1)->textLabel().faded() && row(9)->textLabel().faded(), isFaded) << age;
    EXPECT_EQ(row(2)->noteLabel().text(), "");
  }
  EXPECT_LE(reloads, 1 + 9 + 124) << "every 5 seconds, then every minute";
}

TEST_F(InfoPage, UpdatesTheAgeOnlyWhileItIsSeen) {
  const auto age = [this] {
    return std::static_pointer_cast<InfoTableViewCell>(table.cellForRow(1))->noteLabel().text();
  };
  poll(record(7));
  for (const bool inBackground : {true, false}) {
    inBackground ? client.application.didEnterBackground() : hide();
    const std::string before = age();
    client.advance(3600);
    EXPECT_EQ(client.queues.waiting(), 0u);
    EXPECT_EQ(age(), before);
    inBackground ? client.application.willEnterForeground() : show();
    EXPECT_EQ(age(), inBackground ? "1 h 0 min" : "2 h 0 min");
  }
}

}  // namespace
}  // namespace fleetor::test
