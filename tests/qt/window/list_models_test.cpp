#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <algorithm>
#include <array>
#include <utility>

#include "qt/components/view_controller_items.h"
#include "qt/map/map_view_item.h"
#include "ui/map/map_annotation.h"
#include "ui/ui_world.h"

namespace fleetor {
namespace {

/// The model follows every change of order. Qt checks what it announces, and every row that stays keeps its
/// item.
template <class Item, class Update>
void expectToFollow(QAbstractItemModel& model, const std::vector<Item*>& items, Update update) {
  const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  const auto nameAt = [&](const QModelIndex& index) {
    const auto* item = index.data(Qt::UserRole).template value<Item*>();
    return static_cast<char>('a' + (std::ranges::find(items, item) - items.begin()));
  };
  for (const std::string wanted : {"abc", "cab", "bd", "dcba", "ad", ""}) {
    std::vector<std::pair<QPersistentModelIndex, char>> before;
    for (int row = 0; row < model.rowCount(); ++row)
      before.emplace_back(model.index(row, 0), nameAt(model.index(row, 0)));
    std::vector<std::size_t> places;
    for (const char name : wanted)
      places.push_back(static_cast<std::size_t>(name - 'a'));
    update(places);
    std::string shown;
    for (int row = 0; row < model.rowCount(); ++row)
      shown += nameAt(model.index(row, 0));
    EXPECT_EQ(shown, wanted);
    for (const auto& [index, name] : before)
      EXPECT_TRUE(!index.isValid() || nameAt(index) == name) << name << " on the way to " << wanted;
  }
}

class ListModels : public testing::Test {
 protected:
  test::World world_;
  Adapters adapters_{world_.environment};
};

TEST_F(ListModels, OfScreensFollowTheContainer) {
  std::vector<std::shared_ptr<ViewController>> screens;
  std::vector<ViewControllerItem*> items;
  for (const char* name : {"a", "b", "c", "d"}) {
    screens.push_back(world_.screen(name));
    items.push_back(adapters_.itemFor<ViewControllerItem>(screens.back().get()));
  }
  ScreenListModel model(adapters_);
  expectToFollow(model, items, [&](const std::vector<std::size_t>& places) {
    std::vector<std::shared_ptr<ViewController>> wanted(places.size());
    std::ranges::transform(places, wanted.begin(), [&](std::size_t place) { return screens[place]; });
    model.update(wanted);
  });
}

TEST_F(ListModels, OfMarkersFollowTheMap) {
  std::array<MapAnnotationView, 4> markers{MapAnnotationView("a"), MapAnnotationView("b"),
                                           MapAnnotationView("c"), MapAnnotationView("d")};
  std::vector<std::unique_ptr<MapMarkerItem>> owned;
  std::vector<MapMarkerItem*> items;
  for (auto& marker : markers) {
    owned.push_back(std::make_unique<MapMarkerItem>(marker, adapters_));
    items.push_back(owned.back().get());
  }
  MapMarkerModel model;
  expectToFollow(model, items, [&](const std::vector<std::size_t>& places) {
    MapMarkerModel::Items wanted;
    for (const std::size_t place : places)
      wanted.emplace_back(items[place]);
    while (!model.update(wanted, 1)) {
    }
  });
}

}  // namespace
}  // namespace fleetor
