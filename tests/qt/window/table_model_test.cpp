#include "qt/table_model.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>
#include <map>
#include <memory>

#include "support/fake_device.h"
#include "support/virtual_queues.h"
#include "ui/appearance.h"
#include "ui/notification_center.h"

void qml_register_types_Fleetor();

namespace fleetor {
namespace {

struct ManyRows : TableViewDataSource, TableViewDelegate {
  int rows = 10'000;
  std::map<int, int> asked;

  int tableViewNumberOfRowsInSection(TableView&, int) override { return rows; }
  double tableViewHeightForRowAtIndexPath(TableView&, IndexPath) override { return 68; }
  std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& table, IndexPath path) override {
    ++asked[path.row];
    auto cell = table.dequeueReusableCellWithIdentifier("InfoCell");
    cell->textLabel().setText("row " + std::to_string(path.row));
    return cell;
  }
};

TEST(TableModel, AReloadOfTenThousandRowsKeepsItsPlaceAndTouchesOnlyWhatIsOnScreen) {
  test::VirtualQueues queues;
  test::FakeDevice device;
  NotificationCenter center;
  Appearance appearance;
  Environment environment{queues, device, queues, center, appearance};
  ManyRows source;
  TableView table(environment);
  table.registerMaker("InfoCell",
                      [](const std::string& kind) { return std::make_shared<TableViewCell>(kind); });
  table.setDataSource(&source);
  table.setDelegate(&source);
  const QTemporaryDir folder;
  TileSource tiles({}, folder.path());
  Adapters adapters(environment, tiles);
  qml_register_types_Fleetor();

  QQmlApplicationEngine engine;
  engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
  QQmlComponent component(&engine);
  component.setData("import QtQuick\nimport Fleetor\nTableList { width: 390; height: 680 }", QUrl());
  QQuickWindow window;
  window.resize(390, 680);
  std::unique_ptr<QObject> made(component.create());
  auto* list = qobject_cast<QQuickItem*>(made.get());
  ASSERT_NE(list, nullptr) << component.errorString().toStdString();
  list->setParentItem(window.contentItem());
  list->setProperty("table", QVariant::fromValue(adapters.itemFor<TableItem>(&table)));
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  const double place = 5'000 * 68 + 30;
  list->setProperty("contentY", place);
  QTest::qWait(100);
  EXPECT_LT(source.asked.size(), 40u);

  source.asked.clear();
  source.rows = 10'020;
  table.reloadData();
  QTest::qWait(100);

  EXPECT_EQ(list->property("contentY").toDouble(), place);
  EXPECT_EQ(list->property("count").toInt(), 10'020);
  EXPECT_GE(source.asked.size(), 10u) << "what is on screen must look again";
  EXPECT_LE(source.asked.size(), 14u);
  int elsewhere = 0;  // the view holds on to one row that is out of sight
  for (const auto& [row, times] : source.asked) {
    EXPECT_EQ(times, 1) << "row " << row;
    if (row < 4'997 || row > 5'013) ++elsewhere;
  }
  EXPECT_LE(elsewhere, 1);

  source.rows = 3;
  table.reloadData();
  QTest::qWait(100);
  EXPECT_EQ(list->property("count").toInt(), 3);
  const double hidden = list->property("contentY").toDouble() - list->property("originY").toDouble();
  EXPECT_LT(hidden, 68) << "what is left must be in sight";
}

}  // namespace
}  // namespace fleetor
