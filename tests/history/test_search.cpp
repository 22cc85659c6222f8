#include "history/search.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "history/derivation.h"
#include "history/historytable.h"
#include "model/errors.h"
#include "tests/history/historytools.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class Search : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  RecordingPorts ports;

  /// The periods found, less 11031500, joined by blanks.
  QString found(const std::vector<ColumnFilter>& filters) {
    QStringList periods;
    for (const Qihao q : searchHistory(workspace.store(), buildFilterSql(filters)))
      periods << QString::number(q - 11031500);
    return periods.join(u' ');
  }

  void SetUp() override {
    workspace.addDraws(
        u"11031501 01 02 03 04 10\n11031502 01 02 03 04 05\n11031503 02 03 04 05 06\n11031504 07 08 09 10 11\n"
        u"11031505 01 02 04 05 08"_s);
    calcHistoryAttr(workspace.store(), 1, 11031505, nullptr, ports);
  }
};

TEST_F(Search, NumbersAreComparedAsTextByPrefix) {
  // sums of the rows 2 to 5: 15, 20, 45, 20
  EXPECT_EQ(found({{u"和值"_s, u"2"_s}}), u"3 5"_s);
  EXPECT_EQ(found({{u"和值"_s, u"20"_s}}), u"3 5"_s);
  EXPECT_EQ(found({{u"和值"_s, u"0"_s}}), u""_s);
}

TEST_F(Search, SeveralColumnsMustAllAgree) {
  EXPECT_EQ(found({{u"和值"_s, u"2"_s}, {u"号码1"_s, u"1"_s}}), u"5"_s);
}

TEST_F(Search, WithoutATextTheTableComesBackWhole) {
  EXPECT_EQ(buildFilterSql({}).where, "");
  EXPECT_EQ(buildFilterSql({{u"和值"_s, u"  "_s}, {u"跨度"_s, u""_s}}).where, "");
  EXPECT_EQ(found({{u"和值"_s, u" "_s}}), u"1 2 3 4 5"_s);
}

TEST_F(Search, BlanksAroundATextCountForNothing) {
  EXPECT_EQ(found({{u"和值"_s, u" 45 "_s}}), u"4"_s);
}

TEST_F(Search, EmptyCellsHaveNoTextToBeginWith) {
  EXPECT_EQ(found({{u"间距七"_s, u"0"_s}}), u""_s);
  EXPECT_EQ(found({{u"连号"_s, u"0"_s}}), u""_s);  // the oldest row has no derived columns
}

TEST_F(Search, NumbersOfADrawAreFoundAsStoredAndAsShown) {
  EXPECT_EQ(found({{u"号码1"_s, u"01"_s}}), u"1 2 5"_s);
  EXPECT_EQ(found({{u"号码1"_s, u"1"_s}}), u"1 2 5"_s);
  EXPECT_EQ(found({{u"号码5"_s, u"1"_s}}), u"1 4"_s);
  EXPECT_EQ(found({{u"号码5"_s, u"0"_s}}), u"2 3 5"_s);
}

TEST_F(Search, TextsAreComparedFromTheirBeginning) {
  EXPECT_EQ(found({{u"连号"_s, u"2+2"_s}}), u"5"_s);
  EXPECT_EQ(found({{u"连号"_s, u"+"_s}}), u""_s);
  EXPECT_EQ(found({{u"头数形式"_s, u"3,"_s}}), u"4"_s);
}

TEST_F(Search, PeriodsAndDatesAreComparedAsTheyAreShown) {
  EXPECT_EQ(found({{u"期号"_s, u"1103150"_s}}), u"1 2 3 4 5"_s);
  EXPECT_EQ(found({{u"期号"_s, u"11031504"_s}}), u"4"_s);
  addHistoryRecord(workspace.store(), 11031506, QDate(2019, 11, 4), drawFrom(u"01 02 03 04 05"_s), false);
  EXPECT_EQ(found({{u"开奖日期"_s, u"2019-11"_s}}), u"6"_s);
  EXPECT_EQ(found({{u"开奖日期"_s, u"2019-12"_s}}), u""_s);
}

TEST_F(Search, WildcardsAndQuotesStandForThemselves) {
  for (const QString& typed : {u"%"_s, u"_"_s, u"2%"_s, u"1_"_s, u"\\"_s, u"'"_s, u"\""_s, u"' OR 1=1 --"_s,
                               u"2' OR '1'='1"_s, u"'; DELETE FROM 历史记录; --"_s, u"?"_s, u"*"_s, u"[2]"_s})
    EXPECT_EQ(found({{u"和值"_s, typed}}), u""_s) << typed.toStdString();
  EXPECT_EQ(countHistory(workspace.store()), 5);
}

TEST_F(Search, AWildcardIsFoundWhereItIsStored) {
  workspace.store().execute("test", "UPDATE 历史记录 SET 间距七 = '50%_\\x' WHERE 期号 = 11031502");
  workspace.store().execute("test", "UPDATE 历史记录 SET 间距七 = '50x' WHERE 期号 = 11031503");
  EXPECT_EQ(found({{u"间距七"_s, u"50"_s}}), u"2 3"_s);
  EXPECT_EQ(found({{u"间距七"_s, u"50%"_s}}), u"2"_s);
  EXPECT_EQ(found({{u"间距七"_s, u"50%_\\"_s}}), u"2"_s);
}

TEST_F(Search, ATextOfAbsurdLengthFindsNothing) {
  EXPECT_EQ(found({{u"连号"_s, QString(200000, u'2')}}), u""_s);
}

TEST_F(Search, AColumnThatIsNotThereIsAFault) {
  EXPECT_THROW(buildFilterSql({{u"和值\" OR 1=1 --"_s, u"1"_s}}), MissingData);
}

TEST_F(Search, ValuesAreBoundAndNeverInTheSql) {
  const FilterSql sql = buildFilterSql({{u"和值"_s, u"2%"_s}, {u"跨度"_s, u"1"_s}});
  EXPECT_EQ(sql.where, " where \"和值\" LIKE ? ESCAPE '\\' AND \"跨度\" LIKE ? ESCAPE '\\'");
  EXPECT_EQ(sql.values, (QStringList{u"2\\%%"_s, u"1%"_s}));
}

TEST_F(Search, AgreesWithComparingTheTextsOneByOne) {
  EXPECT_TRUE(rc::check("a random prefix in a random column", [&] {
    const QString column = *rc::gen::element(u"期号"_s, u"和值"_s, u"跨度"_s, u"连号"_s, u"尾数形式"_s, u"区间3"_s);
    const QString typed =
        QString::fromStdString(*rc::gen::container<std::string>(rc::gen::elementOf(std::string("01123,+%_")))).left(3);
    QStringList expected;
    for (const QString& row :
         workspace.rows(u"SELECT 期号, \"%1\" FROM 历史记录 ORDER BY 期号"_s.arg(column).toUtf8().constData())) {
      const QString cell = row.section(u' ', 1);
      if (typed.isEmpty() || (cell != u"-"_s && cell.startsWith(typed)))
        expected << QString::number(row.section(u' ', 0, 0).toInt() - 11031500);
    }
    RC_ASSERT(found({{column, typed}}).toStdString() == expected.join(u' ').toStdString());
  }));
}

TEST_F(Search, HiddenColumnsAreNine) {
  QStringList hidden;
  for (const QStringView name : hiddenHistoryColumns())
    hidden << name.toString();
  EXPECT_EQ(hidden.join(u' '), u"已完成 总期号 遗漏数据 开奖日期 间距七 间距九 间距十一 间距十二 遗漏值总和"_s);
}

TEST_F(Search, TheLastHundredOfFewerDrawsAreAllOfThem) {
  const auto range = recentQihaoRange(workspace.store());
  ASSERT_TRUE(range);
  EXPECT_EQ(range->first, 11031501);
  EXPECT_EQ(range->last, 11031505);
}

TEST_F(Search, TheLastHundredEndWithTheNewest) {
  QString draws;
  for (int i = 0; i < 150; ++i)
    draws += u"%1 01 02 03 04 05\n"_s.arg(11040101 + 2 * i);
  workspace.addDraws(draws);
  const auto range = recentQihaoRange(workspace.store());
  ASSERT_TRUE(range);
  EXPECT_EQ(range->first, 11040101 + 2 * 50);
  EXPECT_EQ(range->last, 11040101 + 2 * 149);
}

TEST_F(Search, AnEmptyHistoryHasNoLastHundred) {
  clearHistoryTable(workspace.store(), ports);
  EXPECT_FALSE(recentQihaoRange(workspace.store()));
}

}  // namespace
}  // namespace elevenfive
