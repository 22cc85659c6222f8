#include "history/celledit.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "model/errors.h"
#include "tests/history/historytools.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class HistoryCellEdit : public ::testing::Test {
 protected:
  TestWorkspace workspace;

  void SetUp() override {
    workspace.addDraws(u"11031510 01 02 03 04 05\n11031511 02 03 04 05 06"_s);
    workspace.store().execute("test", "UPDATE 历史记录 SET 自定义组1 = 1, 自定义组2 = 2, 和值 = 15");
  }

  CellEdit edit(const QString& column, const QString& typed, Qihao row = 11031510) {
    return editHistoryCell(workspace.store(), row, column, typed);
  }

  QStringList rows() {
    return workspace.rows("SELECT 期号, 号码1, 和值, 自定义组1, 自定义组2, 自定义组10 FROM 历史记录 ORDER BY 期号");
  }

  /// Nothing of the table changes, and the sentence tells why.
  void expectRefused(const QString& column, const QString& typed, const QString& sentence) {
    const QStringList before = workspace.rows("SELECT * FROM 历史记录 ORDER BY 期号");
    const CellEdit result = edit(column, typed);
    EXPECT_EQ(result.refusal, sentence) << typed.toStdString();
    EXPECT_EQ(result.qihao, 11031510);
    EXPECT_EQ(workspace.rows("SELECT * FROM 历史记录 ORDER BY 期号"), before) << typed.toStdString();
  }
};

TEST_F(HistoryCellEdit, PeriodsAndTheColumnsBehindTheThirtySeventhCanBeTypedInto) {
  EXPECT_EQ(editableHistoryColumns(),
            (QStringList{u"期号"_s, u"自定义组2"_s, u"自定义组3"_s, u"自定义组4"_s, u"自定义组5"_s, u"自定义组6"_s,
                         u"自定义组7"_s, u"自定义组8"_s, u"自定义组9"_s, u"自定义组10"_s}));
}

TEST_F(HistoryCellEdit, APeriodMovesWithAllItsColumns) {
  const CellEdit result = edit(u"期号"_s, u" 11031601 "_s);
  EXPECT_EQ(result.qihao, 11031601);
  EXPECT_EQ(result.refusal, QString());
  EXPECT_EQ(rows(), (QStringList{u"11031511 2 15 1 2 -"_s, u"11031601 1 15 1 2 -"_s}));
}

TEST_F(HistoryCellEdit, TheLargestAndTheSmallestPeriodAreTaken) {
  EXPECT_EQ(edit(u"期号"_s, u"2147483647"_s).qihao, 2147483647);
  EXPECT_EQ(edit(u"期号"_s, u"1"_s, 2147483647).qihao, 1);
  EXPECT_EQ(workspace.rows("SELECT 期号 FROM 历史记录 ORDER BY 期号"), (QStringList{u"1"_s, u"11031511"_s}));
}

TEST_F(HistoryCellEdit, WhatIsNoPeriodIsRefused) {
  for (const QString& typed : {u""_s, u"0"_s, u"-1"_s, u"+5"_s, u"2147483648"_s, u"99999999999999999999"_s, u"1.5"_s,
                               u"11031a"_s, u"11031512'; DELETE FROM 历史记录; --"_s, u"１１"_s, u"1 2"_s})
    expectRefused(u"期号"_s, typed, u"期号应为 1 到 2147483647 之间的整数，没有改动。"_s);
}

TEST_F(HistoryCellEdit, APeriodThatIsThereIsRefused) {
  expectRefused(u"期号"_s, u"11031511"_s, u"历史记录中已有第 11031511 期，没有改动。"_s);
}

TEST_F(HistoryCellEdit, TheSamePeriodAgainIsNoChange) {
  const QStringList before = rows();
  EXPECT_EQ(edit(u"期号"_s, u"11031510"_s).refusal, QString());
  EXPECT_EQ(rows(), before);
}

TEST_F(HistoryCellEdit, ACountOfAGroupIsWrittenToItsRowOnly) {
  EXPECT_EQ(edit(u"自定义组2"_s, u"5"_s).refusal, QString());
  EXPECT_EQ(edit(u"自定义组10"_s, u" 255"_s).refusal, QString());
  EXPECT_EQ(rows(), (QStringList{u"11031510 1 15 1 5 255"_s, u"11031511 2 15 1 2 -"_s}));
}

TEST_F(HistoryCellEdit, AnEmptyCountEmptiesTheCell) {
  EXPECT_EQ(edit(u"自定义组2"_s, u"  "_s).refusal, QString());
  EXPECT_EQ(rows(), (QStringList{u"11031510 1 15 1 - -"_s, u"11031511 2 15 1 2 -"_s}));
}

TEST_F(HistoryCellEdit, WhatIsNoCountIsRefused) {
  for (const QString& typed : {u"256"_s, u"-1"_s, u"x"_s, u"2.0"_s, u"4294967297"_s})
    expectRefused(u"自定义组2"_s, typed, u"自定义组2应为 0 到 255 之间的整数，没有改动。"_s);
}

TEST_F(HistoryCellEdit, ARowThatIsGoneIsRefused) {
  EXPECT_EQ(edit(u"自定义组2"_s, u"1"_s, 7).refusal, u"历史记录中已没有第 7 期，没有改动。"_s);
  EXPECT_EQ(edit(u"期号"_s, u"8"_s, 7).refusal, u"历史记录中已没有第 7 期，没有改动。"_s);
}

TEST_F(HistoryCellEdit, OtherColumnsAreNoneToTypeInto) {
  for (const QString& column : {u"号码1"_s, u"和值"_s, u"自定义组1"_s, u"开奖日期"_s, u"已完成"_s, u"没有"_s, u"\""_s})
    EXPECT_THROW(edit(column, u"1"_s), MissingData) << column.toStdString();
}

TEST_F(HistoryCellEdit, ManyEditsInARowLeaveWhatWasTakenLast) {
  EXPECT_TRUE(rc::check("any edits of two rows", [&] {
    Qihao period = 11031510;
    std::optional<int> count = workspace.store().value("test", "SELECT 自定义组2 FROM 历史记录 WHERE 期号 = ?", period);
    for (int i = *rc::gen::inRange(1, 12); i > 0; --i) {
      if (*rc::gen::arbitrary<bool>()) {
        const int wanted = *rc::gen::element(0, 1, 11031509, 11031510, 11031511, 11031512, 2147483647);
        const bool taken = wanted > 0 && wanted != 11031511;
        RC_ASSERT(edit(u"期号"_s, QString::number(wanted), period).refusal.isEmpty() == taken);
        period = taken ? wanted : period;
      } else {
        const int wanted = *rc::gen::inRange(-2, 300);
        const bool taken = wanted >= 0 && wanted <= 255;
        RC_ASSERT(edit(u"自定义组2"_s, QString::number(wanted), period).refusal.isEmpty() == taken);
        count = taken ? wanted : count;
      }
    }
    RC_ASSERT(workspace.rows("SELECT 期号 FROM 历史记录 ORDER BY 期号").contains(QString::number(period)));
    RC_ASSERT(workspace.store().value("test", "SELECT 自定义组2 FROM 历史记录 WHERE 期号 = ?", period) == count);
    RC_ASSERT(workspace.store().value("test", "SELECT count(*) FROM 历史记录") == 2);
    static_cast<void>(edit(u"期号"_s, u"11031510"_s, period));
  }));
}

}  // namespace
}  // namespace elevenfive
