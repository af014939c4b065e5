#include "lone_page.h"
#include "vehicle/about_detail_view_controller.h"

namespace fleetor::test {
namespace {

class AboutPage : public LonePage<AboutDetailViewController> {
 protected:
  std::vector<std::string> requestsAfterPoll(const std::any& outcome = APIFailure{}) {
    poll(outcome);
    return requests();
  }
};

TEST_F(AboutPage, AsksAtEachPollThatItSeesUntilTheDataIsThereAndKeepsIt) {
  auto& table = page->itemsTableView();
  EXPECT_EQ(table.numberOfRows(), 0);
  page->tabSelected();
  EXPECT_THAT(Client::textsOf(table), ElementsAre("..."));
  EXPECT_EQ(table.heightForRow(0), 60.0);
  EXPECT_THAT(requests(), IsEmpty());

  client.transport.leaveOpen("/info");
  EXPECT_THAT(requestsAfterPoll(), ElementsAre("GET /info?vehid=7"));
  EXPECT_THAT(requestsAfterPoll(), IsEmpty()) << "one at a time";
  answer("/info", jsonReply(envelope(6, "")));
  EXPECT_EQ(table.numberOfRows(), 0);

  hide();
  EXPECT_THAT(requestsAfterPoll(), IsEmpty());
  show();
  EXPECT_THAT(requestsAfterPoll(std::make_shared<const Live>()), ElementsAre("GET /info?vehid=7"));
  answer("/info", infoReply());
  EXPECT_THAT(Client::textsOf(table),
              ElementsAre("2026-11-01 | Technical service", "2026-09-15 | Oil change",
                          "150000 km | Distance service", "Jan Kowal | Driver",
                          "+48 600 100 200 | Driver phone", "2027-01-31 | Localizer expiration date"));
  EXPECT_EQ(table.heightForRow(5), 50.0);

  EXPECT_THAT(requestsAfterPoll(), IsEmpty());
  page->clearTabSelected();
  page->tabSelected();
  EXPECT_EQ(table.numberOfRows(), 6);
}

}  // namespace
}  // namespace fleetor::test
