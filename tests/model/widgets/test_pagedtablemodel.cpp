#include "model/widgets/pagedtablemodel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QScrollBar>
#include <QTableView>

#include "model/errors.h"
#include "model/widgets/gridview.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

PagedQuery allDraws() {
  return {"test", "SELECT 期号 FROM 历史记录 ORDER BY 期号", {}, "SELECT * FROM 历史记录 WHERE 期号 = ?"};
}

/// count draws with the periods 1..count, all 01 02 03 04 05.
void fillHistory(TestWorkspace& data, int count) {
  StoreTransaction transaction(data.store());
  data.store().execute("test",
                       "INSERT INTO 历史记录 (期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5, 已完成) "
                       "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
                       "SELECT i, 43000.5, 1, 2, 3, 4, 5, 'Y' FROM n",
                       count);
  transaction.commit();
}

class PagedTableModelTest : public ::testing::Test {
 protected:
  QVariant cell(int row, const QString& column, int role = Qt::DisplayRole) {
    return model.index(row, model.columnOf(column)).data(role);
  }

  TestWorkspace data;
  PagedTableModel model{data.store()};
  QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(PagedTableModelTest, ShowsTheRowsInTheOrderOfTheKeyQuery) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 04 06 08 10\n11031512 07 08 09 10 11"_s);
  PagedQuery query = allDraws();
  query.keySql = "SELECT 期号 FROM 历史记录 ORDER BY 期号 DESC";
  model.setQuery(query);

  ASSERT_EQ(model.rowCount(), 3);
  EXPECT_EQ(cell(0, u"期号"_s).toString(), u"11031512"_s);
  EXPECT_EQ(cell(2, u"号码5"_s).toString(), u"5"_s);
  EXPECT_EQ(model.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), u"期号"_s);
}

TEST_F(PagedTableModelTest, ABoundValueNarrowsTheRows) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 04 06 08 10"_s);
  PagedQuery query = allDraws();
  query.keySql = "SELECT 期号 FROM 历史记录 WHERE substr(CAST(期号 AS TEXT), 1, ?) = ? AND 号码1 = ?";
  query.keyValues = {4, u"1103"_s, 2};
  model.setQuery(query);

  ASSERT_EQ(model.rowCount(), 1);
  EXPECT_EQ(model.keyOf(0), 11031511);
}

TEST_F(PagedTableModelTest, CellsKeepTheirTypeAndNullIsEmpty) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  model.setQuery(allDraws());

  EXPECT_EQ(cell(0, u"期号"_s, PagedTableModel::valueRole), QVariant(11031510));
  EXPECT_EQ(cell(0, u"已完成"_s, PagedTableModel::valueRole), QVariant(u"Y"_s));
  EXPECT_EQ(cell(0, u"开奖日期"_s, PagedTableModel::valueRole), QVariant(43000.0));
  EXPECT_FALSE(cell(0, u"和值"_s).isValid());
}

TEST(PagedTableModel, ARowDeletedSinceShowsEmptyCellsUntilARefresh) {
  TestWorkspace data;
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 04 06 08 10"_s);
  PagedTableModel model(data.store());
  model.setQuery(allDraws());
  data.store().execute("test", "DELETE FROM 历史记录 WHERE 期号 = 11031510");

  EXPECT_FALSE(model.index(0, 0).data().isValid());
  EXPECT_EQ(model.index(1, 0).data().toString(), u"11031511"_s);
  model.refresh();
  EXPECT_EQ(model.rowCount(), 1);
}

TEST_F(PagedTableModelTest, RefreshDropsCellsThatWereRead) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  model.setQuery(allDraws());
  EXPECT_EQ(cell(0, u"号码1"_s).toString(), u"1"_s);
  data.store().execute("test", "UPDATE 历史记录 SET 号码1 = 9");
  model.refresh();
  EXPECT_EQ(cell(0, u"号码1"_s).toString(), u"9"_s);
}

TEST_F(PagedTableModelTest, AWrittenRowTakesItsPlaceByKey) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031512 02 04 06 08 10"_s);
  model.setQuery(allDraws());
  EXPECT_EQ(cell(1, u"期号"_s).toString(), u"11031512"_s);
  data.addDraws(u"11031511 07 08 09 10 11"_s);
  model.rowWritten(11031511);

  ASSERT_EQ(model.rowCount(), 3);
  EXPECT_EQ(cell(1, u"号码1"_s).toString(), u"7"_s);
  EXPECT_EQ(cell(2, u"期号"_s).toString(), u"11031512"_s);

  data.addDraws(u"11031511 06 08 09 10 11"_s);
  model.rowWritten(11031511);
  ASSERT_EQ(model.rowCount(), 3);
  EXPECT_EQ(cell(1, u"号码1"_s).toString(), u"6"_s);
}

TEST_F(PagedTableModelTest, ADeletedRowGoesAndAnUnknownKeyChangesNothing) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 04 06 08 10"_s);
  model.setQuery(allDraws());
  model.rowDeleted(5);
  ASSERT_EQ(model.rowCount(), 2);
  model.rowDeleted(11031510);
  ASSERT_EQ(model.rowCount(), 1);
  EXPECT_EQ(cell(0, u"期号"_s).toString(), u"11031511"_s);
}

TEST_F(PagedTableModelTest, WithoutAWriterNothingCanBeTypedOver) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  model.setQuery(allDraws());
  const QModelIndex period = model.index(0, 0);
  EXPECT_FALSE(period.flags().testFlag(Qt::ItemIsEditable));
  EXPECT_FALSE(model.setData(period, u"5"_s));
}

TEST_F(PagedTableModelTest, OnlyTheWritersColumnsCanBeTypedOverAndARefusalChangesNothing) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  model.setQuery(allDraws());
  QStringList asked;
  model.setWriter({u"和值"_s}, [&](int key, const QString& column, const QString& typed) -> std::optional<int> {
    asked << u"%1 %2 %3"_s.arg(key).arg(column, typed);
    return std::nullopt;
  });
  const QModelIndex sum = model.index(0, model.columnOf(u"和值"_s));
  EXPECT_TRUE(sum.flags().testFlag(Qt::ItemIsEditable));
  EXPECT_FALSE(model.setData(model.index(0, 0), u"5"_s));
  EXPECT_TRUE(model.setData(sum, QString()));  // the empty cell as it is: nothing to write
  EXPECT_TRUE(asked.isEmpty());
  EXPECT_FALSE(model.setData(sum, u"15"_s));
  EXPECT_EQ(asked, QStringList{u"11031510 和值 15"_s});
}

TEST_F(PagedTableModelTest, ARowWhoseKeyIsTypedOverMovesToItsPlace) {
  for (int row = 0; row < 5; ++row)
    for (const int key : {1, 15, 25, 35, 45, 99}) {
      data.store().execute("test", "DELETE FROM 历史记录");
      data.addDraws(u"10 01 02 03 04 05\n20 02 03 04 05 06\n30 03 04 05 06 07\n40 04 05 06 07 08\n50 05 06 07 08 09"_s);
      model.setQuery(allDraws());
      model.setWriter({u"期号"_s}, [&](int old, const QString&, const QString& typed) -> std::optional<int> {
        data.store().execute("test", "UPDATE 历史记录 SET 期号 = ? WHERE 期号 = ?", typed.toInt(), old);
        return typed.toInt();
      });
      const QPersistentModelIndex typed = model.index(row, 0);
      ASSERT_TRUE(model.setData(typed, QString::number(key)));
      EXPECT_EQ(typed.data().toInt(), key);
      EXPECT_EQ(typed.sibling(typed.row(), model.columnOf(u"号码1"_s)).data().toInt(), row + 1);
      QStringList shown;
      for (int r = 0; r < model.rowCount(); ++r) {
        shown << model.index(r, 0).data().toString();
        EXPECT_EQ(model.keyOf(r), shown.last().toInt());
      }
      EXPECT_EQ(shown, data.rows("SELECT 期号 FROM 历史记录 ORDER BY 期号"));
    }
}

TEST_F(PagedTableModelTest, AQueryThatFailsLeavesNoRowsAndSaysSo) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  model.setQuery(allDraws());
  PagedQuery broken = allDraws();
  broken.keySql = "SELECT 期号 FROM 没有的表";
  EXPECT_THROW(model.setQuery(broken), StoreError);
  EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(PagedTableModelTest, RowsBeyondTheCachedPagesAreReadAgain) {
  const int rows = PagedTableModel::pageRows * (PagedTableModel::maximumPages + 3);
  fillHistory(data, rows);
  model.setQuery(allDraws());
  for (int row = 0; row < rows; ++row)
    ASSERT_EQ(cell(row, u"期号"_s).toInt(), row + 1);
  data.store().execute("test", "UPDATE 历史记录 SET 号码5 = 11");
  EXPECT_EQ(cell(0, u"号码5"_s).toString(), u"11"_s);        // its page had gone
  EXPECT_EQ(cell(rows - 1, u"号码5"_s).toString(), u"5"_s);  // its page is still there
}

TEST(GridView, OpensThreeHundredThousandDrawsAndReachesTheEndAtOnce) {
  constexpr int rows = 300000;
  TestWorkspace data;
  fillHistory(data, rows);
  GridView grid(data.store());
  grid.resize(1000, 600);
  grid.rows().setQuery(allDraws());
  grid.show();
  grid.scrollToBottom();

  ASSERT_EQ(grid.rows().rowCount(), rows);
  EXPECT_EQ(grid.verticalScrollBar()->value(), grid.verticalScrollBar()->maximum());
  const QModelIndex last = grid.indexAt(QPoint(5, grid.viewport()->height() - 5));
  EXPECT_EQ(last.siblingAtColumn(0).data().toInt(), rows);
}

TEST(GridView, KeepsTheEndInViewAtAnotherHeightAndAnyOtherPlaceWhereItIs) {
  TestWorkspace data;
  fillHistory(data, 200);
  GridView grid(data.store());
  grid.resize(1000, 600);
  grid.rows().setQuery(allDraws());
  grid.show();
  grid.resize(1000, 500);
  EXPECT_EQ(grid.verticalScrollBar()->value(), 0);

  grid.scrollToBottom();
  for (const int height : {430, 610}) {
    grid.resize(1000, height);
    const QRect last = grid.visualRect(grid.rows().index(199, 0));
    EXPECT_LE(last.bottom(), grid.viewport()->height()) << height;
    EXPECT_GT(last.bottom(), grid.viewport()->height() - 2 * last.height()) << height;
  }
}

}  // namespace

}  // namespace elevenfive
