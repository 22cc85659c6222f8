#include "history/historytable.h"

#include <gtest/gtest.h>

#include "model/errors.h"
#include "model/navigators.h"
#include "tests/history/historytools.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class HistoryTable : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  RecordingPorts ports;

  void add(Qihao qihao, const QString& numbers, bool refresh = false) {
    addHistoryRecord(workspace.store(), qihao, QDate(2019, 11, 4), drawFrom(numbers), refresh);
  }
};

TEST_F(HistoryTable, ADrawIsStoredWithItsDateAndWithoutDerivedColumns) {
  add(19110401, u"01 02 03 04 05"_s);
  EXPECT_EQ(workspace.rows(
                "SELECT 期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5, 已完成, 和值, 连号, 总期号 FROM 历史记录"),
            QStringList{u"19110401 43773.0 1 2 3 4 5 Y - - -"_s});
}

TEST_F(HistoryTable, WithRefreshItIsDerivedAtOnce) {
  add(19110401, u"01 02 03 04 05"_s);
  add(19110402, u"01 02 03 04 06"_s, true);
  EXPECT_EQ(workspace.rows("SELECT 和值, 重叠号, 温度值5 FROM 历史记录 ORDER BY 期号"),
            (QStringList{u"- - -"_s, u"16 4 4"_s}));
}

TEST_F(HistoryTable, AnExistingPeriodTakesTheNewNumbersAndKeepsItsColumnsUntilDerivation) {
  add(19110401, u"01 02 03 04 05"_s);
  add(19110402, u"01 02 03 04 06"_s, true);
  add(19110402, u"07 08 09 10 11"_s);
  EXPECT_EQ(workspace.rows("SELECT 号码1, 号码5, 已完成, 和值 FROM 历史记录 WHERE 期号 = 19110402"),
            QStringList{u"7 11 Y 16"_s});
  add(19110402, u"07 08 09 10 11"_s, true);
  EXPECT_EQ(workspace.rows("SELECT 和值 FROM 历史记录 WHERE 期号 = 19110402"), QStringList{u"45"_s});
  EXPECT_EQ(countHistory(workspace.store()), 2);
}

TEST_F(HistoryTable, ADateBefore1900IsANegativeDay) {
  addHistoryRecord(workspace.store(), 5, QDate(1899, 12, 29), drawFrom(u"01 02 03 04 05"_s), false);
  EXPECT_EQ(workspace.rows("SELECT 开奖日期 FROM 历史记录"), QStringList{u"-1.0"_s});
}

TEST_F(HistoryTable, ANumberThatCannotBeDerivedStaysStored) {
  add(19110401, u"01 02 03 04 05"_s);
  EXPECT_THROW(add(19110402, u"01 02 03 04 12"_s, true), NumberFault);
  EXPECT_EQ(workspace.rows("SELECT 期号, 号码5, 和值 FROM 历史记录 ORDER BY 期号 DESC LIMIT 1"),
            QStringList{u"19110402 12 -"_s});
  EXPECT_FALSE(workspace.store().inTransaction());
}

TEST_F(HistoryTable, ANumberThatTheTableCannotHoldStoresNothing) {
  EXPECT_THROW(add(19110402, u"01 02 03 04 256"_s), StoreError);
  EXPECT_THROW(add(19110402, u"-1 02 03 04 05"_s), StoreError);
  EXPECT_EQ(countHistory(workspace.store()), 0);
}

TEST_F(HistoryTable, ClearingLeavesNothingAndYields) {
  add(19110401, u"01 02 03 04 05"_s);
  clearHistoryTable(workspace.store(), ports);
  EXPECT_EQ(countHistory(workspace.store()), 0);
  EXPECT_EQ(ports.yields, 1);
}

TEST_F(HistoryTable, DeletingTheNewestPeriodMakesItTheNextAgain) {
  add(19110401, u"01 02 03 04 05"_s);
  add(19110402, u"01 02 03 04 06"_s);
  EXPECT_TRUE(deleteHistoryRecord(workspace.store(), 19110402));
  EXPECT_EQ(getNextQihao(workspace.store()), 19110402);
}

TEST_F(HistoryTable, DeletingLeavesTheColumnsOfTheRowBehind) {
  add(19110401, u"01 02 03 04 05"_s);
  add(19110402, u"01 02 03 04 06"_s, true);
  add(19110403, u"01 02 03 04 07"_s, true);
  const QStringList before = workspace.rows("SELECT * FROM 历史记录 WHERE 期号 = 19110403");
  EXPECT_TRUE(deleteHistoryRecord(workspace.store(), 19110402));
  EXPECT_EQ(workspace.rows("SELECT * FROM 历史记录 WHERE 期号 = 19110403"), before);
}

TEST_F(HistoryTable, DeletingAnUnknownPeriodChangesNothing) {
  add(19110401, u"01 02 03 04 05"_s);
  EXPECT_FALSE(deleteHistoryRecord(workspace.store(), 19110402));
  EXPECT_EQ(countHistory(workspace.store()), 1);
}

TEST_F(HistoryTable, TheDeleteButtonAsksForThePeriodAndTellsThatItIsGone) {
  add(19110401, u"01 02 03 04 05"_s);
  ports.typed = {u" 19110401"_s};
  EXPECT_TRUE(deleteAskedRecord(workspace.store(), ports, ports));
  EXPECT_EQ(ports.log, (QStringList{u"ask [请输入期号] 您要删除哪期的记录？ =  19110401"_s, u"plain [] 删除完成！"_s}));
  EXPECT_EQ(countHistory(workspace.store()), 0);
}

TEST_F(HistoryTable, ThePeriodToDeleteIsReadWithAllItsTenDigits) {
  add(110315100, u"01 02 03 04 05"_s);
  add(1103151001, u"01 02 03 04 06"_s);
  ports.typed = {u"1103151001"_s};
  EXPECT_TRUE(deleteAskedRecord(workspace.store(), ports, ports));
  EXPECT_EQ(workspace.rows("SELECT 期号 FROM 历史记录"), QStringList{u"110315100"_s});
}

TEST_F(HistoryTable, ThePeriodToDeleteIsTheNumberThatTheAnswerBeginsWith) {
  add(11031510, u"01 02 03 04 05"_s);
  ports.typed = {u"11031510期"_s, u"2147483648"_s};
  EXPECT_TRUE(deleteAskedRecord(workspace.store(), ports, ports));
  ports.boxes.clear();
  EXPECT_FALSE(deleteAskedRecord(workspace.store(), ports, ports));
  EXPECT_TRUE(ports.boxes.empty());  // beyond all periods: as nothing typed
}

TEST_F(HistoryTable, TheGridIsLaidOutBetweenTheDeletionAndItsBox) {
  add(19110401, u"01 02 03 04 05"_s);
  ports.typed = {u"19110401"_s, u"19110401"_s};
  const HistoryLayout layout = [&] { ports.log << u"layout of %1"_s.arg(countHistory(workspace.store())); };
  EXPECT_TRUE(deleteAskedRecord(workspace.store(), ports, ports, layout));
  EXPECT_EQ(ports.log, (QStringList{u"ask [请输入期号] 您要删除哪期的记录？ = 19110401"_s, u"layout of 0"_s,
                                    u"plain [] 删除完成！"_s}));
  ports.log.clear();
  EXPECT_FALSE(deleteAskedRecord(workspace.store(), ports, ports, layout));
  EXPECT_FALSE(ports.log.contains(u"layout of 0"_s));
}

TEST_F(HistoryTable, TheDeleteButtonTellsOfAnUnknownPeriod) {
  ports.typed = {u"19110401"_s};
  EXPECT_FALSE(deleteAskedRecord(workspace.store(), ports, ports));
  EXPECT_EQ(ports.log.last(), u"plain [删除失败] 无法完成，历史记录表格中没有该期记录！"_s);
}

TEST_F(HistoryTable, TheDeleteButtonEndsSilentlyWithoutAPeriod) {
  add(19110401, u"01 02 03 04 05"_s);
  for (const QString& typed : {u""_s, u"0"_s, u"abc"_s, u"-19110401"_s}) {
    ports.typed = {typed};
    EXPECT_FALSE(deleteAskedRecord(workspace.store(), ports, ports));
  }
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(countHistory(workspace.store()), 1);
}

TEST_F(HistoryTable, TheClearButtonAsksFirst) {
  add(19110401, u"01 02 03 04 05"_s);
  ports.answers = {Answer::no, Answer::yes};
  EXPECT_FALSE(clearAskedHistory(workspace.store(), ports, ports));
  EXPECT_EQ(countHistory(workspace.store()), 1);
  EXPECT_TRUE(clearAskedHistory(workspace.store(), ports, ports));
  EXPECT_EQ(countHistory(workspace.store()), 0);
  EXPECT_EQ(ports.log, QStringList(2, u"question [] 确定要清空所有的历史记录吗？"_s));
}

TEST_F(HistoryTable, ClearingTakesAlsoWhatCameInBetween) {
  add(19110401, u"01 02 03 04 05"_s);
  ports.answers = {Answer::yes};
  EXPECT_TRUE(clearAskedHistory(workspace.store(), ports, ports, [&] {
    ports.log << u"layout of %1"_s.arg(countHistory(workspace.store()));
    EXPECT_EQ(ports.yields, 1);
    add(19110402, u"01 02 03 04 05"_s);
  }));
  EXPECT_EQ(ports.log, (QStringList{u"question [] 确定要清空所有的历史记录吗？"_s, u"layout of 0"_s}));
  EXPECT_EQ(ports.yields, 2);
  EXPECT_EQ(countHistory(workspace.store()), 0);
}

TEST_F(HistoryTable, AnImportAsksAboutOldDrawsOnlyWhereThereAreSome) {
  EXPECT_FALSE(clearBeforeImport(workspace.store(), ports, ports));
  EXPECT_TRUE(ports.boxes.empty());
  add(19110401, u"01 02 03 04 05"_s);
  ports.answers = {Answer::no, Answer::yes};
  EXPECT_FALSE(clearBeforeImport(workspace.store(), ports, ports));
  EXPECT_TRUE(clearBeforeImport(workspace.store(), ports, ports));
  EXPECT_EQ(countHistory(workspace.store()), 0);
  EXPECT_EQ(ports.log, QStringList(2, u"question [] 原有的历史数据是否要清空？"_s));
}

}  // namespace
}  // namespace elevenfive
