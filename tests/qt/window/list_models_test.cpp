#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <array>

#include "qt/components/control_items.h"
#include "qt/components/table_model.h"
#include "qt/map/map_view_item.h"
#include "ui/map/map_annotation.h"
#include "ui/ui_world.h"

namespace fleetor {
namespace {

/// Qt checks what the model announces, and every row that stays keeps its item.
TEST(MarkerList, FollowsEveryChangeOfOrder) {
  test::World world;
  Adapters adapters(world.environment);
  std::array<MapAnnotationView, 4> views{MapAnnotationView("a"), MapAnnotationView("b"),
                                         MapAnnotationView("c"), MapAnnotationView("d")};
  std::vector<std::unique_ptr<MapMarkerItem>> items;
  items.reserve(views.size());
  for (auto& view : views)
    items.push_back(std::make_unique<MapMarkerItem>(view, adapters));
  MapMarkerModel model;
  const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  const auto nameAt = [&](const QModelIndex& index) {
    const auto* item = index.data(Qt::UserRole).value<MapMarkerItem*>();
    const auto found = std::ranges::find(items, item, &std::unique_ptr<MapMarkerItem>::get);
    return static_cast<char>('a' + (found - items.begin()));
  };
  for (const std::string order : {"abc", "cab", "bd", "dcba", "ad", ""}) {
    std::vector<std::pair<QPersistentModelIndex, char>> before;
    for (int row = 0; row < model.rowCount(); ++row)
      before.emplace_back(model.index(row, 0), nameAt(model.index(row, 0)));
    MapMarkerModel::Items wanted;
    for (const char name : order)
      wanted.emplace_back(items[static_cast<std::size_t>(name - 'a')].get());
    while (!model.update(wanted, 1)) {
    }
    std::string shown;
    for (int row = 0; row < model.rowCount(); ++row)
      shown += nameAt(model.index(row, 0));
    EXPECT_EQ(shown, order);
    for (const auto& [index, name] : before)
      EXPECT_TRUE(!index.isValid() || nameAt(index) == name) << name << " on the way to " << order;
  }
}

/// A row whose drawing reads all of its outlets whenever one of them changes, as QML does.
class Row : public TableViewCell {
 public:
  Row() : TableViewCell("row") {
    outlet("first", first);
    outlet("second", second);
  }
  ImageView first;
  Label second;
};

TEST(Adapters, NeverReadARowThatIsBeingDestroyed) {
  test::World world;
  Adapters adapters(world.environment);
  std::optional<Row> row(std::in_place);
  auto* const cell = adapters.itemFor<CellItem>(&*row);
  int announced = 0;
  for (const char* name : {"first", "second"})
    QObject::connect(cell->outlet(name), &ComponentItem::changed, cell, [&announced, cell] {
      ++announced;
      for (const char* each : {"first", "second"})
        EXPECT_EQ(cell->outlet(each), nullptr);
    });
  row.reset();
  EXPECT_EQ(announced, 0);
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(announced, 2);

  row.emplace();
  EXPECT_TRUE(adapters.itemFor<ImageViewItem>(&row->first)) << "at the place of the earlier one";
  EXPECT_TRUE(adapters.itemFor<LabelItem>(&row->second));
}

}  // namespace
}  // namespace fleetor
