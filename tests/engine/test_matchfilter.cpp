#include "engine/matchfilter.h"

#include "model/errors.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class MatchFilter : public EngineTest {
 protected:
  void setMatch(int use, int window, int threshold) {
    workspace.store().execute("test", "UPDATE 历史数据过滤 SET 使用状态 = ?, 最小值 = ?, 匹配值 = ?", use, window,
                              threshold);
  }

  void setHistory(const QString& lines) {
    sql("DELETE FROM 历史记录");
    workspace.addDraws(lines);
  }
};

TEST_F(MatchFilter, AThresholdOfFiveTakesOnlyExactRepeats) {
  setMatch(1, 5, 5);
  addRows(u"02 04 06 08 10\n02 04 06 08 11"_s);
  EXPECT_EQ(filter_Lishi(run(), period), 1);
  EXPECT_EQ(survivors(), QStringList{u"1: 02 04 06 08 11"_s});
  EXPECT_EQ(ports.status, u"\r\n\r\n[历史数据过滤]过滤后余：１ 注"_s);
}

TEST_F(MatchFilter, AThresholdOfOneTakesEveryRowWithACommonNumber) {
  setMatch(1, 5, 1);
  addRows(u"01 03 05 07 09\n01 03 05 07 10"_s);
  EXPECT_EQ(filter_Lishi(run(), period), 1);
  EXPECT_EQ(numbers(), QStringList{u"01 03 05 07 09"_s});
}

TEST_F(MatchFilter, ThreeCommonNumbersWithEachDrawStayFourWithOneGo) {
  setMatch(1, 5, 4);
  setHistory(
      u"11031505 01 02 03 04 05\n11031506 01 02 03 06 07\n11031507 01 02 03 08 09\n"
      "11031508 01 02 03 10 11\n11031509 01 02 03 05 06"_s);
  // 01 02 03 shared with all five; the second row shares 01 02 03 04 with the oldest only.
  addRows(u"01 02 07 08 10\n01 02 03 04 08"_s);
  EXPECT_EQ(filter_Lishi(run(), period), 1);
  EXPECT_EQ(numbers(), QStringList{u"01 02 07 08 10"_s});
}

TEST_F(MatchFilter, OnlyTheDrawsOfTheWindowBeforeThePeriodCount) {
  setMatch(1, 1, 5);
  setHistory(u"11031508 01 02 03 04 05\n11031509 02 04 06 08 10\n11031510 01 03 05 07 09\n11031511 03 04 05 06 07"_s);
  addRows(u"01 02 03 04 05\n02 04 06 08 10\n01 03 05 07 09\n03 04 05 06 07"_s);
  EXPECT_EQ(filter_Lishi(run(), period), 3);
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"2: 01 03 05 07 09"_s, u"3: 03 04 05 06 07"_s}));
}

TEST_F(MatchFilter, AGapInThePeriodsWidensNothing) {
  setMatch(1, 2, 5);
  setHistory(u"11031401 01 02 03 04 05\n11031450 02 04 06 08 10\n11031509 01 03 05 07 09"_s);
  addRows(u"01 02 03 04 05\n02 04 06 08 10\n01 03 05 07 09"_s);
  EXPECT_EQ(filter_Lishi(run(), period), 1);
  EXPECT_EQ(numbers(), QStringList{u"01 02 03 04 05"_s});
}

TEST_F(MatchFilter, FewerDrawsThanTheWindowAreComparedAsTheyAre) {
  setMatch(1, 100, 5);
  addRows(u"02 04 06 08 10\n01 03 05 07 09"_s);
  EXPECT_EQ(filter_Lishi(run(), period), 1);
}

TEST_F(MatchFilter, TheLastPassCountsWhereAllWentAtTheFirstDraw) {
  setMatch(1, 2, 1);
  setHistory(u"11031508 01 02 03 04 05\n11031509 07 08 09 10 11"_s);
  addRows(u"01 02 03 04 06\n02 03 04 05 06"_s);
  EXPECT_EQ(filter_Lishi(run(), period), 0);
  EXPECT_TRUE(survivors().isEmpty());
  EXPECT_EQ(ports.yields, 2);  // the second draw finds no row
  EXPECT_EQ(ports.status, u"\r\n\r\n[历史数据过滤]过滤后余：０ 注"_s);
}

TEST_F(MatchFilter, AnEmptyWindowTellsZeroAndLeavesTheRows) {
  setMatch(1, 5, 4);
  sql("DELETE FROM 历史记录");
  addRows(u"01 02 03 04 05"_s);
  EXPECT_EQ(filter_Lishi(run(), period), 0);
  EXPECT_EQ(survivors().size(), 1);
  EXPECT_EQ(ports.status, u"\r\n\r\n[历史数据过滤]过滤后余：０ 注"_s);
}

TEST_F(MatchFilter, AWindowOfNoDrawIsEmpty) {
  setMatch(1, 0, 1);
  addRows(u"02 04 06 08 10"_s);
  EXPECT_EQ(filter_Lishi(run(), period), 0);
  EXPECT_EQ(survivors().size(), 1);
}

TEST_F(MatchFilter, AnyOtherStateThanOneIsSilent) {
  addRows(u"02 04 06 08 10"_s);
  for (const int state : {0, 2, -1}) {
    setMatch(state, 5, 1);
    EXPECT_EQ(filter_Lishi(run(), period), 0);
  }
  EXPECT_EQ(ports.status, QString());
  EXPECT_TRUE(ports.log.isEmpty());
  EXPECT_EQ(survivors().size(), 1);
}

TEST_F(MatchFilter, TheMarkBecomesOne) {
  setMatch(1, 5, 4);
  addRows(u"01 03 05 07 09"_s);
  sql("UPDATE 日志表 SET 过滤标记 = 6");
  filter_Lishi(run(), period);
  EXPECT_EQ(marks(), QStringList{u"1"_s});
}

TEST_F(MatchFilter, AStopLeavesBothLoopsAndDeletesWhatFailed) {
  setMatch(1, 2, 5);
  setHistory(u"11031508 01 02 03 04 05\n11031509 01 03 05 07 09"_s);
  addRows(u"02 04 06 08 10\n01 02 03 04 05\n01 03 05 07 09"_s);
  sql("UPDATE 日志表 SET 过滤标记 = 6");
  stopAtYield(2);
  EXPECT_EQ(filter_Lishi(run(), period), 1);
  EXPECT_EQ(survivors(), (QStringList{u"1: 02 04 06 08 10"_s, u"3: 01 03 05 07 09"_s}));
  EXPECT_EQ(marks(), (QStringList{u"1"_s, u"6"_s}));
  EXPECT_EQ(statusLines(), QStringList{u"[历史数据过滤]过滤正进行中．．．"_s});
}

TEST_F(MatchFilter, ABadNumberEndsThePassWithTheRowsAsBefore) {
  setMatch(1, 5, 1);
  addRows(u"02 04 06 08 10\n01 02 03 04 40"_s);
  EXPECT_THROW(filter_Lishi(run(), period), NumberFault);
  EXPECT_EQ(survivors(), (QStringList{u"1: 02 04 06 08 10"_s, u"2: 01 02 03 04 40"_s}));
  EXPECT_TRUE(ports.enabled[ControlId::Pic_subTouZhu]);
}

TEST_F(MatchFilter, AThresholdOfZeroTakesEveryRow) {
  setMatch(1, 5, 0);
  addRows(u"01 03 05 07 09\n02 04 06 08 10"_s);
  EXPECT_EQ(filter_Lishi(run(), period), 0);
  EXPECT_TRUE(survivors().isEmpty());
  EXPECT_EQ(ports.status, u"\r\n\r\n[历史数据过滤]过滤后余：０ 注"_s);
}

TEST_F(MatchFilter, WithoutItsSettingsItIsSilent) {
  sql("DELETE FROM 历史数据过滤");
  addRows(u"02 04 06 08 10"_s);
  EXPECT_EQ(filter_Lishi(run(), period), 0);
  EXPECT_TRUE(ports.log.isEmpty());
  EXPECT_EQ(ports.status, QString());
  EXPECT_EQ(survivors().size(), 1);
}

TEST_F(MatchFilter, WithoutRowsItTellsZeroAndLeavesTheEndsOfTheBar) {
  setMatch(1, 5, 4);
  ports.maximum = 7;
  ports.value = 3;
  EXPECT_EQ(filter_Lishi(run(), period), 0);
  EXPECT_EQ(ports.status, u"\r\n\r\n[历史数据过滤]过滤后余：０ 注"_s);
  EXPECT_EQ(ports.maximum, 7);
  EXPECT_EQ(ports.value, 3);
  EXPECT_EQ(ports.yields, 0);
  EXPECT_EQ(ports.log, (QStringList{u"disable Pic_subTouZhu"_s, u"progress 0..7"_s, u"enable cmm_stop"_s,
                                    u"progress hidden"_s, u"disable cmm_stop"_s, u"enable Pic_subTouZhu"_s}));
}

TEST_F(MatchFilter, ManyRowsAreWrittenWithYieldsInBetween) {
  setMatch(1, 1, 5);
  addRows(u"01 03 05 07 09\n"_s.repeated(600));
  EXPECT_EQ(filter_Lishi(run(), period), 600);
  EXPECT_EQ(ports.yields, 600 + 2);  // behind the 256th and the 512th row written
}

TEST_F(MatchFilter, AStopWhileTheRowsAreWrittenWritesThemAllAndKeepsTheRunningLine) {
  setMatch(1, 1, 5);
  addRows(u"01 03 05 07 09\n"_s.repeated(300) + u"02 04 06 08 10\n"_s.repeated(300));
  stopAtYield(600 + 1);
  EXPECT_EQ(filter_Lishi(run(), period), 300);
  EXPECT_EQ(workspace.rows("SELECT COUNT(*), MIN(过滤标记), MAX(序号) FROM 日志表"), QStringList{u"300 1 300"_s});
  EXPECT_EQ(statusLines(), QStringList{u"[历史数据过滤]过滤正进行中．．．"_s});
  EXPECT_TRUE(driver.state().userStop);
}

TEST_F(MatchFilter, TheBarMovesByDrawsAndEndsAtTheRowsOfTheDraw) {
  setMatch(1, 2, 5);
  setHistory(u"11031508 01 02 03 04 05\n11031509 01 03 05 07 09"_s);
  addRows(u"02 04 06 08 10\n01 02 03 04 05\n02 03 04 05 06"_s);
  QStringList bar;
  ports.onYield = [&](int) { bar << u"%1/%2"_s.arg(ports.value).arg(ports.maximum); };
  EXPECT_EQ(filter_Lishi(run(), period), 2);
  EXPECT_EQ(bar, (QStringList{u"0/3"_s, u"0/3"_s, u"0/3"_s, u"0/2"_s, u"0/2"_s}));
  EXPECT_EQ(ports.value, 1);
}

}  // namespace elevenfive
