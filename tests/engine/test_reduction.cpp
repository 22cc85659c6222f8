#include "engine/reduction.h"

#include <rapidcheck.h>

#include <set>

#include "model/errors.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class Reduction : public EngineTest {
 protected:
  void addFour() { addRows(u"01 02 03 04 05\n01 02 03 04 06\n01 02 03 07 08\n06 07 08 09 10"_s); }
  QStringList reductionMarks() {
    return workspace.rows("SELECT 缩水标记 FROM 日志表 WHERE 期号 = 11031510 ORDER BY ID");
  }
};

TEST_F(Reduction, CoveringAtThreeKeepsTwoOfFour) {
  addFour();
  EXPECT_EQ(runSuoshui(run(), 3, period), 2);
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"2: 06 07 08 09 10"_s}));
  EXPECT_EQ(reductionMarks(), (QStringList{u"3"_s, u"3"_s}));
  EXPECT_EQ(ports.status, u"\r\n\r\n[保三型]缩水后余：２ 注"_s);
}

TEST_F(Reduction, CoveringAtFourKeepsTheThird) {
  addFour();
  EXPECT_EQ(runSuoshui(run(), 4, period), 3);
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"2: 01 02 03 07 08"_s, u"3: 06 07 08 09 10"_s}));
  EXPECT_EQ(ports.status, u"\r\n\r\n[保四型]缩水后余：３ 注"_s);
}

TEST_F(Reduction, TypesFromFiveUpNameTypeFiveAndChangeNothing) {
  addFour();
  const QStringList before = survivors();
  for (const int type : {5, 6, 7, 99}) {
    ports.status.clear();
    EXPECT_EQ(runSuoshui(run(), type, period), 4);
    EXPECT_EQ(ports.status, u"\r\n\r\n[保五型]缩水后余：４ 注"_s);
  }
  EXPECT_EQ(survivors(), before);
  EXPECT_EQ(reductionMarks(), (QStringList{u"0"_s, u"0"_s, u"0"_s, u"0"_s}));
}

TEST_F(Reduction, OneRowIsKept) {
  addRows(u"01 02 03 04 05"_s);
  EXPECT_EQ(runSuoshui(run(), 3, period), 1);
  EXPECT_EQ(ports.status, u"\r\n\r\n[保三型]缩水后余：１ 注"_s);
}

TEST_F(Reduction, NoRowsAreToldAsZero) {
  EXPECT_EQ(runSuoshui(run(), 3, period), 0);
  EXPECT_EQ(ports.status, u"\r\n\r\n[保三型]缩水后余：０ 注"_s);
  EXPECT_EQ(runSuoshui(run(), 5, period), 0);
}

TEST_F(Reduction, TheOrderIsScoreThenXuhaoThenId) {
  addFour();
  sql("UPDATE 日志表 SET 临时数据 = 10 WHERE 序号 = 1");
  // Now 01 02 03 04 06 comes first and covers the third and the first.
  EXPECT_EQ(runSuoshui(run(), 3, period), 2);
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 06"_s, u"2: 06 07 08 09 10"_s}));
}

TEST_F(Reduction, RowsWithEqualXuhaoComeById) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06"_s);
  sql("UPDATE 日志表 SET 序号 = 1");
  runSuoshui(run(), 3, period);
  EXPECT_EQ(numbers(), QStringList{u"01 02 03 04 05"_s});
}

TEST_F(Reduction, ASecondReductionTakesNothingMore) {
  addFour();
  runSuoshui(run(), 3, period);
  sql("UPDATE 日志表 SET 缩水标记 = 0");
  EXPECT_EQ(runSuoshui(run(), 3, period), 2);
  EXPECT_EQ(survivors().size(), 2);
}

TEST_F(Reduction, TheRunningLineStandsMeanwhileAndTheBarEndsFull) {
  addFour();
  QString during;
  ports.onYield = [&](int) { during = ports.status; };
  runSuoshui(run(), 4, period);
  EXPECT_EQ(during, u"\r\n\r\n[保四型]缩水正在进行中．．．"_s);
  EXPECT_EQ(ports.value, 4);
  EXPECT_EQ(ports.log, (QStringList{u"disable Pic_subTouZhu"_s, u"progress 0..4"_s, u"enable cmm_stop"_s,
                                    u"progress hidden"_s, u"disable cmm_stop"_s, u"enable Pic_subTouZhu"_s}));
}

TEST_F(Reduction, AStopDeletesTheCoveredAndLeavesTheRestAndIsTold) {
  addFour();
  stopAtYield(1);  // after the second row was covered; the third was not compared
  EXPECT_EQ(runSuoshui(run(), 3, period), 1);
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"3: 01 02 03 07 08"_s, u"4: 06 07 08 09 10"_s}));
  EXPECT_EQ(reductionMarks(), (QStringList{u"3"_s, u"0"_s, u"0"_s}));
  EXPECT_EQ(ports.status, u"\r\n\r\n[保三型]缩水后余：１ 注"_s);
}

TEST_F(Reduction, ATypeThatWasNeverChosenIsToldClearly) {
  addFour();
  EXPECT_THROW(runSuoshui(run(), 0, period), MissingData);
  EXPECT_EQ(survivors().size(), 4);
}

TEST_F(Reduction, ABadNumberEndsItWithTheRowsAsBefore) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06\n01 02 03 04 12"_s);
  EXPECT_THROW(runSuoshui(run(), 3, period), NumberFault);
  EXPECT_EQ(survivors().size(), 3);
  EXPECT_EQ(reductionMarks(), (QStringList{u"0"_s, u"0"_s, u"0"_s}));
}

TEST_F(Reduction, ARunTakesTheTypeFromItsRow) {
  addFour();
  setValue(3900, 4);
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(statusLines().mid(2), (QStringList{u"[保四型]缩水后余：３ 注"_s, u"全部过滤缩水完成,余：３ 注"_s}));
}

TEST_F(Reduction, EveryRowSharesEnoughWithAKeptOneAndKeptOnesShareLess) {
  EXPECT_TRUE(rc::check("covering", [this] {
    const int K = *rc::gen::inRange(3, 5);
    const auto drawn = *rc::gen::container<std::vector<std::set<int>>>(
        rc::gen::suchThat(rc::gen::container<std::set<int>>(drawSize, rc::gen::inRange(1, 12)),
                          [](const std::set<int>& set) { return set.size() == drawSize; }));
    QString lines;
    for (const std::set<int>& set : drawn) {
      QStringList numbersOfRow;
      for (const int n : set)
        numbersOfRow << QString::number(n);
      lines += numbersOfRow.join(u' ') + u'\n';
    }
    sql("DELETE FROM 日志表");
    addRows(lines);
    const QStringList before = numbers();
    runSuoshui(run(), K, period);
    const QStringList after = numbers();
    const auto shared = [](const QString& a, const QString& b) {
      int count = 0;
      for (const QString& n : a.split(u' '))
        count += b.split(u' ').contains(n) ? 1 : 0;
      return count;
    };
    for (const QString& row : before)
      RC_ASSERT(std::any_of(after.begin(), after.end(), [&](const QString& kept) { return shared(row, kept) >= K; }));
    for (int i = 0; i < after.size(); ++i)
      for (int j = i + 1; j < after.size(); ++j)
        RC_ASSERT(shared(after[i], after[j]) < K);
  }));
}

TEST_F(Reduction, AStopWhileManyRowsAreWrittenWritesThemAll) {
  addRows(u"01 02 03 04 05\n"_s + u"01 02 03 04 06\n"_s.repeated(599));
  stopAtYield(599 + 1 + 1);  // 599 rows against the kept one, its end, the 256th row written
  EXPECT_EQ(runSuoshui(run(), 3, period), 1);
  EXPECT_EQ(survivors(), QStringList{u"1: 01 02 03 04 05"_s});
  EXPECT_EQ(ports.yields, 600 + 2);
  EXPECT_EQ(ports.status, u"\r\n\r\n[保三型]缩水后余：１ 注"_s);
  EXPECT_TRUE(driver.state().userStop);
}

TEST_F(Reduction, TheBarTellsTheKeptRowsWhileItRuns) {
  addFour();
  QStringList bar;
  ports.onYield = [&](int) { bar << QString::number(ports.value); };
  runSuoshui(run(), 4, period);
  // Three rows against the first kept one, its end; one row against the second, its end; the end of the third.
  EXPECT_EQ(bar.join(u' '), u"0 0 0 1 1 2 3"_s);
}

}  // namespace elevenfive
