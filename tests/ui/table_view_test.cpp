#include "ui/table/table_view.h"

#include "ui_world.h"

namespace fleetor::test {

/// Forty rows and a loading row, like a screen with a paged list.
class TableViewTest : public testing::Test,
                      public World,
                      public TableViewDataSource,
                      public TableViewDelegate {
 protected:
  TableViewTest() {
    table.setDataSource(this);
    table.setDelegate(this);
    table.registerMaker(
        "Cell", [](const std::string& identifier) { return std::make_shared<TableViewCell>(identifier); });
    table.registerMaker("LoadingCell", [](const std::string& identifier) {
      return std::make_shared<LoadingTableViewCell>(identifier);
    });
  }

  int tableViewNumberOfRowsInSection(TableView&, int) override { return vehicles + 1; }
  std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& asker, IndexPath path) override {
    asked.push_back(path.row);
    if (path.row >= vehicles) {
      if (failsAtOnce) {
        vehicles = 3;
        asker.reloadData();
      }
      auto cell = asker.dequeueReusableCellWithIdentifier("LoadingCell");
      dynamic_cast<ActivityIndicator&>(*cell->viewWithTag(123)).startAnimating();
      return cell;
    }
    auto cell = asker.dequeueReusableCellWithIdentifier("Cell");
    cell->textLabel().setText(std::to_string(path.row));
    return cell;
  }
  double tableViewHeightForRowAtIndexPath(TableView&, IndexPath path) override {
    return path.row < vehicles ? 68 : 60;
  }
  void tableViewDidSelectRowAtIndexPath(TableView&, IndexPath path) override { tapped.push_back(path.row); }

  TableView table{environment};
  int vehicles = 40;
  bool failsAtOnce = false;
  std::vector<int> asked;
  std::vector<int> tapped;
};

TEST_F(TableViewTest, AsksForRowsOnlyWhenTheyAreAboutToShow) {
  EXPECT_EQ(table.numberOfRows(), 41);
  EXPECT_EQ(table.heightForRow(40), 60);
  EXPECT_EQ(table.estimatedHeightForRow(0), 68);
  EXPECT_EQ(table.heightForRow(41), 0);
  EXPECT_EQ(asked, std::vector<int>{}) << "counting and measuring must not reach the loading row";
  const auto shown = table.cellForRow(3);
  EXPECT_EQ(table.cellForRow(3), shown);
  EXPECT_EQ(table.cellForRow(41), nullptr);
  EXPECT_EQ(asked, std::vector<int>{3});

  vehicles = 60;
  EXPECT_EQ(table.numberOfRows(), 41) << "the table as it was, until it is reloaded";
  int reloads = 0;
  const Connection connection = table.reloaded.connect([&] { ++reloads; });
  table.reloadData();
  EXPECT_EQ(reloads, 1);
  EXPECT_EQ(table.numberOfRows(), 61);
}

TEST_F(TableViewTest, ACellThatSomebodyStillDrawsIsNotFilledAnew) {
  auto held = table.cellForRow(0);
  table.reloadData();
  table.didEndDisplayingRow(0);
  EXPECT_NE(table.cellForRow(1), held);
  const TableViewCell* let = held.get();
  held = nullptr;
  EXPECT_EQ(table.cellForRow(2).get(), let);
}

TEST_F(TableViewTest, ARowKeepsItsCellWhenTheTableIsReloaded) {
  vehicles = 3;
  int changes = 0;
  std::vector<std::shared_ptr<TableViewCell>> before;
  std::vector<Connection> connections;
  for (int row = 0; row <= vehicles; ++row) {
    before.push_back(table.cellForRow(row));
    connections.push_back(before.back()->textLabel().changed.connect([&] { ++changes; }));
  }
  table.reloadData();
  for (const int row : {3, 1, 0, 2})
    EXPECT_EQ(table.cellForRow(row), before[static_cast<std::size_t>(row)]);
  EXPECT_EQ(changes, 0) << "what has not changed is not drawn anew";

  vehicles = 2;
  table.reloadData();
  EXPECT_EQ(table.cellForRow(2)->reuseIdentifier(), "LoadingCell") << "another kind than before";
}

TEST_F(TableViewTest, TapsSelectTheRowsThatAreForTapping) {
  table.tap(5);
  EXPECT_EQ(table.indexPathForSelectedRow(), (IndexPath{0, 5}));
  table.tap(40);
  table.tap(41);
  table.tap(-1);
  EXPECT_EQ(tapped, std::vector<int>{5}) << "neither the loading row nor one that is not there";
  std::optional<IndexPath> shown = table.indexPathForSelectedRow();
  const Connection showing = table.changed.connect([&] { shown = table.indexPathForSelectedRow(); });
  table.reloadData();
  EXPECT_EQ(table.indexPathForSelectedRow(), std::nullopt);
  EXPECT_EQ(shown, std::nullopt) << "whoever draws the mark is told";
}

TEST_F(TableViewTest, AReloadWhileARowIsAskedComesAfterwards) {
  failsAtOnce = true;
  int reloads = 0;
  const Connection connection = table.reloaded.connect([&] { ++reloads; });
  const auto cell = table.cellForRow(40);
  ASSERT_NE(cell, nullptr);
  EXPECT_TRUE(dynamic_cast<ActivityIndicator&>(*cell->viewWithTag(123)).isAnimating());
  EXPECT_EQ(reloads, 0);
  EXPECT_EQ(table.numberOfRows(), 41);
  queues.runUntilIdle();
  EXPECT_EQ(reloads, 1);
  EXPECT_EQ(table.numberOfRows(), 4);
}

}  // namespace fleetor::test
