#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "history/derivation.h"
#include "history/temperature.h"
#include "model/errors.h"
#include "tests/history/historytools.h"
#include "tests/history/slowhistory.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class Derivation : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  RecordingPorts ports;
  RecordingPanels panels;

  void derive(Qihao from, Qihao to) { calcHistoryAttr(workspace.store(), from, to, &ports, ports, &panels); }

  /// One column of all rows, oldest first.
  QString column(const QString& name) {
    return workspace.rows(u"SELECT %1 FROM 历史记录 ORDER BY 期号"_s.arg(name).toUtf8().constData()).join(u'|');
  }
};

TEST_F(Derivation, EveryColumnOfADrawFollowsItsRule) {
  workspace.addDraws(u"11031501 02 04 06 08 10\n11031502 01 03 05 07 11"_s);
  derive(11031502, 11031502);
  EXPECT_EQ(workspace.rows("SELECT 和值, 奇数和值, 偶数和值, 跨度, 最大间距, AC值 FROM 历史记录 WHERE 期号 = 11031502"),
            QStringList{u"27 27 0 10 4 1"_s});
  EXPECT_EQ(workspace.rows("SELECT 奇数个数, 偶数个数, 大数个数, 小数个数, 低尾码个数, 高尾码个数 FROM 历史记录"
                           " WHERE 期号 = 11031502"),
            QStringList{u"5 0 2 3 3 2"_s});
  EXPECT_EQ(workspace.rows("SELECT 连号, 重叠号, 斜位码, 尾数形式, 头数形式, 头数和值, 尾数和值 FROM 历史记录"
                           " WHERE 期号 = 11031502"),
            QStringList{u"0 0 5 2,1,1,1 4,1 1 17"_s});
  EXPECT_EQ(workspace.rows("SELECT 区间1, 区间2, 区间3, 区间4, 自定义组1, 自定义组10, 温度值5, 温度值10, 已完成"
                           " FROM 历史记录 WHERE 期号 = 11031502"),
            QStringList{u"3 2 0 0 0 0 0 0 Y"_s});
}

TEST_F(Derivation, AnEvenDrawMirrorsAnOddOne) {
  workspace.addDraws(u"11031501 05 06 07 08 09\n11031502 02 04 06 08 10"_s);
  derive(11031502, 11031502);
  EXPECT_EQ(workspace.rows("SELECT 和值, 奇数和值, 偶数和值, 奇数个数, 偶数个数, 重叠号, 斜位码, 头数和值, 尾数和值,"
                           " 温度值5, 温度值10 FROM 历史记录 WHERE 期号 = 11031502"),
            QStringList{u"30 0 30 0 5 2 4 1 20 2 2"_s});
}

TEST_F(Derivation, ColumnsThatNothingDerivesStayEmpty) {
  workspace.addDraws(u"11031501 02 04 06 08 10\n11031502 01 03 05 07 11"_s);
  derive(1, 11031502);
  EXPECT_EQ(workspace.rows("SELECT 间距七, 间距九, 间距十一, 间距十二, 遗漏值总和, 遗漏数据, 总期号 FROM 历史记录"),
            (QStringList{u"- - - - - - -"_s, u"- - - - - - -"_s}));
}

TEST_F(Derivation, ARangeOfTheSecondRowReadsTheFirstAsTheDrawBefore) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031502 01 02 03 04 06\n11031503 01 02 03 04 07"_s);
  derive(11031502, 11031502);
  EXPECT_EQ(column(u"重叠号"_s), u"-|4|-"_s);
}

TEST_F(Derivation, ARangeBeyondTheLastRowEndsWithIt) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031502 01 02 03 04 06"_s);
  derive(11031502, 99999999);
  EXPECT_EQ(column(u"和值"_s), u"-|16"_s);
}

TEST_F(Derivation, AnEmptyHistoryDerivesNothing) {
  derive(1, 0);
  derive(1, 11031510);
  EXPECT_FALSE(ports.visible);
  EXPECT_EQ(ports.yields, 0);
  EXPECT_EQ(column(u"期号"_s), u""_s);
}

TEST_F(Derivation, TheOldestRowStaysEmptyAfterAWholePass) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031502 01 02 03 04 06\n11031601 07 08 09 10 11"_s);
  derive(1, 11031602);
  EXPECT_EQ(column(u"和值"_s), u"-|16|45"_s);
  EXPECT_EQ(column(u"温度值5"_s), u"-|4|0"_s);
}

TEST_F(Derivation, ALoneRowIsDerivedAgainstNoDrawAndGetsNoTemperature) {
  workspace.addDraws(u"11031501 01 02 03 04 05"_s);
  derive(1, 11031502);
  EXPECT_EQ(workspace.rows("SELECT 和值, 重叠号, 斜位码, 温度值5, 温度值10 FROM 历史记录"),
            QStringList{u"15 0 1 - -"_s});
}

TEST_F(Derivation, ALoneRowWithout01HasNoDiagonalNumber) {
  workspace.addDraws(u"11031501 02 03 04 05 06"_s);
  derive(11031501, 11031501);
  EXPECT_EQ(workspace.rows("SELECT 重叠号, 斜位码 FROM 历史记录"), QStringList{u"0 0"_s});
}

TEST_F(Derivation, ARangeOfAMissingPeriodDerivesTheLoneRowBeforeItAgainstNoDraw) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031502 02 03 04 05 06"_s);
  derive(11031505, 11031505);
  EXPECT_EQ(column(u"重叠号"_s), u"-|0"_s);
}

TEST_F(Derivation, Numbers01And11ShareTheirTail) {
  workspace.addDraws(u"11031501 02 04 06 08 10\n11031502 01 05 06 07 11"_s);
  derive(11031502, 11031502);
  EXPECT_EQ(workspace.rows("SELECT 尾数形式, 头数和值, 尾数和值 FROM 历史记录 WHERE 期号 = 11031502"),
            QStringList{u"2,1,1,1 1 20"_s});
}

TEST_F(Derivation, HeadFormsOfTheNumbersAreThree) {
  workspace.addDraws(
      u"11031501 02 04 06 08 10\n11031502 01 02 03 04 05\n11031503 06 07 08 09 10\n11031504 07 08 09 10 11"_s);
  derive(1, 11031504);
  EXPECT_EQ(column(u"头数形式"_s), u"-|5|4,1|3,2"_s);
  EXPECT_EQ(column(u"尾数形式"_s), u"-|1,1,1,1,1|1,1,1,1,1|1,1,1,1,1"_s);
}

/// Puts the numbers 1..11 into ten classes of a digit by hand.
void setClasses(Store& store, const QString& name, const std::array<int, numberCount>& classes) {
  for (int k = 0; k <= 9; ++k)
    for (int n = 1; n <= numberCount; ++n)
      store.execute("test", u"UPDATE 号码特性 SET %1%2 = ? WHERE 号码 = ?"_s.arg(name).arg(k).toStdString(),
                    classes[static_cast<std::size_t>(n - 1)] == k ? 1 : 0, n);
}

struct SpreadFact {
  std::array<int, 5> classes;  ///< of the numbers 1..5
  const char* tail;
  const char* head;
};

class Spreads : public ::testing::TestWithParam<SpreadFact> {};

TEST_P(Spreads, HaveTheirTexts) {
  TestWorkspace workspace;
  RecordingPorts ports;
  std::array<int, numberCount> classes{};
  std::copy(GetParam().classes.begin(), GetParam().classes.end(), classes.begin());
  setClasses(workspace.store(), u"尾"_s, classes);
  setClasses(workspace.store(), u"头"_s, classes);
  workspace.addDraws(u"11031501 06 07 08 09 10\n11031502 01 02 03 04 05"_s);
  calcHistoryAttr(workspace.store(), 11031502, 11031502, nullptr, ports);
  EXPECT_EQ(workspace.rows("SELECT '[' || 尾数形式 || ']', '[' || 头数形式 || ']' FROM 历史记录 WHERE 期号 = 11031502"),
            (QStringList{u"[%1] [%2]"_s.arg(QLatin1StringView(GetParam().tail), QLatin1StringView(GetParam().head))}));
}

INSTANTIATE_TEST_SUITE_P(
    Derivation, Spreads,
    ::testing::Values(SpreadFact{{0, 1, 2, 3, 4}, "1,1,1,1,1", ""}, SpreadFact{{0, 0, 2, 3, 4}, "2,1,1,1", ""},
                      SpreadFact{{0, 0, 2, 2, 4}, "2,2,1", ""}, SpreadFact{{9, 9, 9, 3, 4}, "3,1,1", ""},
                      SpreadFact{{0, 0, 0, 3, 3}, "3,2", "3,2"}, SpreadFact{{0, 7, 7, 7, 7}, "4,1", "4,1"},
                      SpreadFact{{6, 6, 6, 6, 6}, "5", "5"}));

TEST_F(Derivation, RunsAreTexts) {
  workspace.addDraws(
      u"1103150101 02 04 06 08 10\n1103150102 01 03 05 07 09\n1103150103 01 02 05 07 09\n1103150104 01 02 04 05 07\n"
      u"1103150105 01 02 03 05 07\n1103150106 01 02 03 10 11\n1103150107 01 02 03 04 06\n1103150108 07 08 09 10 11"_s);
  derive(1, 1103150108);
  EXPECT_EQ(column(u"连号"_s), u"-|0|2|2+2|3|3+2|4|5"_s);
}

TEST_F(Derivation, ZonesAndTheFirstTenGroupsAreReadFromTheAttributes) {
  Store& store = workspace.store();
  store.execute("test", "UPDATE 号码特性 SET 区间1 = 0, 区间4 = 1 WHERE 号码 IN (1, 2)");
  store.execute("test", "UPDATE 号码特性 SET 自定义组1 = 1 WHERE 号码 IN (1, 3, 11)");
  store.execute("test", "UPDATE 号码特性 SET 自定义组10 = 1, 自定义组11 = 1 WHERE 号码 = 5");
  workspace.addDraws(u"11031501 02 04 06 08 10\n11031502 01 02 03 04 05"_s);
  derive(11031502, 11031502);
  EXPECT_EQ(workspace.rows("SELECT 区间1, 区间2, 区间3, 区间4, 自定义组1, 自定义组2, 自定义组10 FROM 历史记录"
                           " WHERE 期号 = 11031502"),
            QStringList{u"3 0 0 2 2 0 1"_s});
}

TEST_F(Derivation, WhatIsNotBigIsSmallAndWhatHasNoLowTailHasAHighOne) {
  workspace.store().execute("test", "UPDATE 号码特性 SET 小数 = 0, 高尾码 = 0");
  workspace.store().execute("test", "UPDATE 号码特性 SET 大数 = 1 WHERE 号码 = 1");
  workspace.addDraws(u"11031501 02 04 06 08 10\n11031502 01 02 03 04 05"_s);
  derive(11031502, 11031502);
  EXPECT_EQ(workspace.rows("SELECT 大数个数, 小数个数, 低尾码个数, 高尾码个数 FROM 历史记录 WHERE 期号 = 11031502"),
            QStringList{u"1 4 4 1"_s});
}

TEST_F(Derivation, ANumberOutsideEndsThePassAndTheRowsBeforeStay) {
  workspace.addDraws(
      u"11031501 01 02 03 04 05\n11031502 01 02 03 04 06\n11031503 01 02 03 04 00\n11031504 01 02 03 04 07"_s);
  try {
    derive(1, 11031504);
    FAIL() << "no fault";
  } catch (const NumberFault& fault) {
    EXPECT_TRUE(fault.message().contains(u"第 11031503 期的号码 00"_s)) << fault.what();
  }
  EXPECT_EQ(column(u"和值"_s), u"-|16|-|-"_s);
  EXPECT_EQ(column(u"温度值5"_s), u"-|-|-|-"_s);  // they would have come after the last row
  EXPECT_EQ(panels.log, QStringList{u"2:"_s});
  EXPECT_FALSE(ports.visible);
  EXPECT_FALSE(workspace.store().inTransaction());
}

TEST_F(Derivation, ARowIsDerivedWhateverItsMark) {
  workspace.addDraws(
      u"11031501 01 02 03 04 05\n11031502 01 02 03 04 06\n11031503 01 02 03 04 07\n11031504 01 02 03 04 08"_s);
  workspace.store().execute("test", "UPDATE 历史记录 SET 已完成 = NULL WHERE 期号 = 11031502");
  workspace.store().execute("test", "UPDATE 历史记录 SET 已完成 = 'N' WHERE 期号 = 11031503");
  derive(1, 11031504);
  EXPECT_EQ(column(u"和值"_s), u"-|16|17|18"_s);
  EXPECT_EQ(column(u"已完成"_s), u"Y|Y|Y|Y"_s);
}

TEST_F(Derivation, ANumberOutsideInTheOldestRowIsOnlyReadAsTheDrawBefore) {
  workspace.addDraws(u"11031501 02 03 04 05 00\n11031502 01 07 08 09 10"_s);
  derive(1, 11031502);
  EXPECT_EQ(workspace.rows("SELECT 重叠号, 斜位码, 温度值5 FROM 历史记录 WHERE 期号 = 11031502"),
            QStringList{u"0 1 0"_s});
}

TEST_F(Derivation, TheBarRunsFromTheFirstPeriodToTheLastAndIsHidden) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031502 01 02 03 04 06\n11031503 01 02 03 04 07"_s);
  derive(11031502, 11031503);
  EXPECT_EQ(ports.log, (QStringList{u"progress 0..11031503"_s, u"progress hidden"_s}));
  EXPECT_EQ(ports.value, 11031503);
  EXPECT_EQ(ports.yields, 2);
  EXPECT_EQ(panels.log, (QStringList{u"2:   正在统计 11031502 期号码的温度值。。。。。。  "_s,
                                     u"2:   正在统计 11031503 期号码的温度值。。。。。。  "_s, u"2:"_s}));
}

TEST_F(Derivation, AFullDiskEndsThePassWithWholeRows) {
  QString draws;
  for (int i = 0; i < 3000; ++i)
    draws += u"%1 01 02 03 04 %2\n"_s.arg(11031501 + i).arg(5 + i % 7);
  workspace.addDraws(draws);
  limitGrowth(workspace.store(), 5);
  EXPECT_THROW(derive(1, 99999999), StoreError);
  EXPECT_FALSE(workspace.store().inTransaction());
  EXPECT_FALSE(ports.visible);
  EXPECT_EQ(workspace.rows("SELECT COUNT(*), SUM((和值 IS NULL) <> (温度值10 IS NULL)),"
                           " SUM((和值 IS NULL) <> (连号 IS NULL)) FROM 历史记录"),
            QStringList{u"3000 0 0"_s});
  EXPECT_EQ(workspace.rows("PRAGMA integrity_check"), QStringList{u"ok"_s});
}

TEST_F(Derivation, APassAgreesWithTheMeaningOfEachColumn) {
  EXPECT_TRUE(rc::check("a whole pass over a random history", [&] {
    const SlowHistory history = anyHistory(2, 40);
    workspace.store().execute("test", "DELETE FROM 历史记录");
    workspace.addDraws(textOf(history));
    derive(1, history.back().qihao + 1);
    const QStringList rows =
        workspace.rows(("SELECT " + std::string(slowColumnNames) + " FROM 历史记录 ORDER BY 期号").c_str());
    for (std::size_t i = 1; i < history.size(); ++i)
      RC_ASSERT(rows[static_cast<qsizetype>(i)].toStdString() == slowColumns(history, i).toStdString());
    RC_ASSERT(column(u"和值"_s).startsWith(u"-|"_s));
  }));
}

/// Ranges from a to b that together cover the draws 1 to count - 1, in random order.
std::vector<std::pair<std::size_t, std::size_t>> anyRanges(std::size_t count) {
  std::vector<std::pair<std::size_t, std::size_t>> ranges;
  for (std::size_t a = 1; a < count;) {
    const auto b = *rc::gen::inRange(a, std::min(a + 8, count));
    const auto place = *rc::gen::inRange<std::size_t>(0, ranges.size() + 1);
    ranges.insert(ranges.begin() + static_cast<std::ptrdiff_t>(place), {a, b});
    a = b + 1;
  }
  return ranges;
}

TEST_F(Derivation, RangesInAnyOrderGiveTheSameRowsAsAWholePass) {
  EXPECT_TRUE(rc::check("ranges that cover a random history, in random order", [&] {
    const SlowHistory history = anyHistory(2, 30);
    workspace.store().execute("test", "DELETE FROM 历史记录");
    workspace.addDraws(textOf(history));
    for (const auto& [a, b] : anyRanges(history.size()))
      derive(history[a].qihao, history[b].qihao);
    const QStringList rows =
        workspace.rows(("SELECT " + std::string(slowColumnNames) + " FROM 历史记录 ORDER BY 期号").c_str());
    for (std::size_t i = 1; i < history.size(); ++i)
      RC_ASSERT(rows[static_cast<qsizetype>(i)].toStdString() == slowColumns(history, i).toStdString());
  }));
}

TEST_F(Derivation, ZonesAndGroupsOfAnyMembersAreCountedRangeByRange) {
  QStringList columns;
  for (int zone = 1; zone <= 4; ++zone)
    columns << u"区间%1"_s.arg(zone);
  for (int group = 1; group <= 10; ++group)
    columns << u"自定义组%1"_s.arg(group);
  EXPECT_TRUE(rc::check("random members of every zone and group, ranges in random order", [&] {
    std::vector<unsigned> members;  // bit n for number n
    for (const QString& name : columns) {
      members.push_back(*rc::gen::inRange(0U, 1U << numberCount) << 1U);
      for (int n = 1; n <= numberCount; ++n)
        workspace.store().execute("test", u"UPDATE 号码特性 SET %1 = ? WHERE 号码 = ?"_s.arg(name).toStdString(),
                                  static_cast<int>(members.back() >> n & 1U), n);
    }
    const SlowHistory history = anyHistory(2, 12);
    workspace.store().execute("test", "DELETE FROM 历史记录");
    workspace.addDraws(textOf(history));
    for (const auto& [a, b] : anyRanges(history.size()))
      derive(history[a].qihao, history[b].qihao);
    const QStringList rows =
        workspace.rows(u"SELECT %1 FROM 历史记录 ORDER BY 期号"_s.arg(columns.join(u", "_s)).toUtf8().constData());
    for (std::size_t i = 1; i < history.size(); ++i) {
      QStringList counts;
      for (const unsigned set : members)
        counts << QString::number(countWhere(history[i].numbers, [&](int n) { return (set >> n & 1U) != 0; }));
      RC_ASSERT(rows[static_cast<qsizetype>(i)].toStdString() == counts.join(u' ').toStdString());
    }
  }));
}

TEST_F(Derivation, NewZonesChangeTheZoneColumnsAlone) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031502 01 02 03 04 06\n11031503 07 08 09 10 11"_s);
  derive(1, 11031503);
  const char all[] = "SELECT * FROM 历史记录 ORDER BY 期号";
  const QString before = workspace.rows(all).join(u'\n');
  workspace.store().execute("test", "UPDATE 号码特性 SET 区间1 = 0, 区间3 = 1 WHERE 号码 = 1");
  ports.log.clear();
  const int yieldsBefore = ports.yields;
  EXPECT_TRUE(recalcQujian(workspace.store(), 1, 11031503, ports, ports, ports));
  EXPECT_EQ(ports.log, (QStringList{u"plain [] 区间重新划分之后，各区间的开出号码个数需要重新计算。。。"_s,
                                    u"progress 0..3"_s, u"progress hidden"_s}));
  EXPECT_EQ(ports.value, 3);
  EXPECT_EQ(ports.yields, yieldsBefore + 3);
  EXPECT_EQ(workspace.rows("SELECT 区间1, 区间2, 区间3, 区间4 FROM 历史记录 ORDER BY 期号"),
            (QStringList{u"4 0 1 0"_s, u"3 1 1 0"_s, u"0 5 0 0"_s}));
  workspace.store().execute("test", "UPDATE 历史记录 SET 区间1 = 4, 区间3 = 0 WHERE 期号 = 11031502");
  workspace.store().execute(
      "test", "UPDATE 历史记录 SET 区间1 = NULL, 区间2 = NULL, 区间3 = NULL, 区间4 = NULL WHERE 期号 = 11031501");
  EXPECT_EQ(workspace.rows(all).join(u'\n'), before);
}

TEST_F(Derivation, ANumberOutsideEndsTheCountOfNewZonesAfterTheRowsBefore) {
  workspace.addDraws(
      u"11031501 01 02 03 04 05\n11031502 07 08 09 10 11\n11031503 01 02 03 04 12\n11031504 01 02 03 04 05"_s);
  EXPECT_THROW(recalcQujian(workspace.store(), 1, 11031504, ports, ports, ports), NumberFault);
  EXPECT_EQ(workspace.rows("SELECT 区间1 FROM 历史记录 ORDER BY 期号"), (QStringList{u"5"_s, u"0"_s, u"-"_s, u"-"_s}));
  EXPECT_FALSE(ports.visible);
  EXPECT_FALSE(workspace.store().inTransaction());
}

TEST_F(Derivation, NewZonesOfARangeWithoutRowsAreOnlyTold) {
  workspace.addDraws(u"11031501 01 02 03 04 05"_s);
  EXPECT_FALSE(recalcQujian(workspace.store(), 11031502, 11031509, ports, ports, ports));
  EXPECT_EQ(ports.log, QStringList{u"plain [] 区间重新划分之后，各区间的开出号码个数需要重新计算。。。"_s});
  EXPECT_EQ(ports.yields, 0);
  EXPECT_EQ(column(u"区间1"_s), u"-"_s);
}

}  // namespace
}  // namespace elevenfive
