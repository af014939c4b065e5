#include "qt/components/table_model.h"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include "ui/ui_world.h"

void qml_register_types_Fleetor();

namespace fleetor {
namespace {

struct ManyRows : TableViewDataSource, TableViewDelegate {
  int rows = 10'000;
  int longRow = -1;
  std::map<int, int> asked;

  int tableViewNumberOfRowsInSection(TableView&, int) override { return rows; }
  double tableViewHeightForRowAtIndexPath(TableView&, IndexPath) override { return 68; }
  std::shared_ptr<TableViewCell> tableViewCellForRowAtIndexPath(TableView& table, IndexPath path) override {
    ++asked[path.row];
    auto cell = table.dequeueReusableCellWithIdentifier("InfoCell");
    std::string text = "row " + std::to_string(path.row);
    while (path.row == longRow && text.size() < 100)
      text += " and on";
    cell->textLabel().setText(text);
    return cell;
  }
};

class TableInWindow : public testing::Test {
 protected:
  void SetUp() override {
    table.registerMaker("InfoCell",
                        [](const std::string& kind) { return std::make_shared<TableViewCell>(kind); });
    table.setDataSource(&source);
    table.setDelegate(&source);
    qml_register_types_Fleetor();
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nimport Fleetor\nTableList { width: 390; height: 680 }", QUrl());
    window.resize(390, 680);
    made.reset(component.create());
    list = qobject_cast<QQuickItem*>(made.get());
    ASSERT_NE(list, nullptr) << component.errorString().toStdString();
    list->setParentItem(window.contentItem());
    list->setProperty("table", QVariant::fromValue(adapters.itemFor<TableItem>(&table)));
    EXPECT_TRUE(source.asked.empty()) << "before the window is there";
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    ASSERT_TRUE(waitForRows());
  }

  /// Waits for the rows that a reload, or what follows it, asks for.
  bool waitForRows() {
    return QTest::qWaitFor([this] { return source.asked.size() >= 10; });
  }
  void scrollTo(int row) { list->setProperty("contentY", row * 68.0 + 30); }
  void reload() {
    source.asked.clear();
    table.reloadData();
  }
  /// Waits until everything has been asked for: three frames, if the window draws any.
  void letFramesPass() {
    for (int i = 0; i < 3; ++i) {
      QSignalSpy drawn(&window, &QQuickWindow::frameSwapped);
      window.update();
      EXPECT_TRUE(!window.isExposed() || drawn.wait());
      QCoreApplication::processEvents();
    }
  }

  ManyRows source;
  test::World world;
  TableView table{world.environment};
  Adapters adapters{world.environment};
  QAbstractItemModelTester tester{adapters.itemFor<TableItem>(&table)->model(),
                                  QAbstractItemModelTester::FailureReportingMode::Fatal};
  QQmlApplicationEngine engine;
  QQuickWindow window;
  std::unique_ptr<QObject> made;
  QQuickItem* list = nullptr;
};

TEST_F(TableInWindow, AsksForNothingThatIsNotInSight) {
  list->setProperty("currentIndex", 3);  // the view keeps that row
  scrollTo(5'000);
  letFramesPass();
  reload();
  ASSERT_TRUE(waitForRows());
  EXPECT_FALSE(source.asked.contains(3)) << "scrolled away";
  scrollTo(0);
  EXPECT_TRUE(QTest::qWaitFor([this] { return source.asked[3] == 1; })) << "scrolled back";
  letFramesPass();

  const QString unmapped = QString::number(window.winId());
  const std::pair<std::function<void()>, std::function<void()>> waysOut[] = {
      {[this] { list->setVisible(false); }, [this] { list->setVisible(true); }},
      {[&] {
         QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("windowunmap"), unmapped});
       },
       [&] {
         QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("windowmap"), unmapped});
       }}};
  for (const auto& [leave, comeBack] : waysOut) {
    leave();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window.isExposed() || !list->isVisible(); }));
    reload();
    letFramesPass();
    EXPECT_TRUE(source.asked.empty()) << "out of sight";
    comeBack();
    EXPECT_TRUE(waitForRows());
  }
}

TEST_F(TableInWindow, AReloadOfTenThousandRowsKeepsItsPlaceAndTouchesOnlyWhatIsOnScreen) {
  const double place = 5'000 * 68 + 30;
  scrollTo(5'000);
  letFramesPass();
  EXPECT_LT(source.asked.size(), 40u);

  source.rows = 10'020;
  reload();
  letFramesPass();

  EXPECT_EQ(list->property("contentY").toDouble(), place);
  EXPECT_EQ(list->property("count").toInt(), 10'020);
  EXPECT_GE(source.asked.size(), 10u) << "the rows in view are read again";
  EXPECT_LE(source.asked.size(), 12u);
  for (const auto& [row, times] : source.asked) {
    EXPECT_EQ(times, 1) << "row " << row;
    EXPECT_TRUE(row >= 4'999 && row <= 5'011) << "row " << row;
  }

  source.rows = 3;
  reload();
  letFramesPass();
  EXPECT_EQ(list->property("count").toInt(), 3);
  const double hidden = list->property("contentY").toDouble() - list->property("originY").toDouble();
  EXPECT_LT(hidden, 68) << "what is left must be in sight";
}

TEST_F(TableInWindow, ARowGrowsForAValueThatDoesNotFit) {
  source.longRow = 2;
  source.rows = 4;
  reload();
  letFramesPass();
  const auto height = [this](int row) {
    QQuickItem* item = nullptr;
    QMetaObject::invokeMethod(list, "itemAtIndex", Q_RETURN_ARG(QQuickItem*, item), Q_ARG(int, row));
    return item ? item->height() : 0;
  };
  EXPECT_EQ(height(1), 68);
  EXPECT_TRUE(QTest::qWaitFor([&] { return height(2) > 68; })) << height(2);
  EXPECT_EQ(height(3), 68);
}

}  // namespace
}  // namespace fleetor
