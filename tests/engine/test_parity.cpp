#include "engine/parity.h"

#include "model/errors.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class Parity : public EngineTest {
 protected:
  /// A pattern of 0, 1 and 2 by place.
  void setPattern(int j, const QString& slots) {
    for (int place = 0; place < drawSize; ++place)
      setValue(5001 + 10 * j + place, slots[place].digitValue());
    use(70 + j);
  }
};

TEST_F(Parity, AnExactMatchIsRefused) {
  setPattern(1, u"11111"_s);
  addRows(u"01 03 05 07 09\n01 03 05 07 10"_s);
  EXPECT_EQ(filter_Danshuang(run(), period, 1), 1);
  EXPECT_EQ(survivors(), QStringList{u"1: 01 03 05 07 10"_s});
  EXPECT_EQ(marks(), QStringList{u"1"_s});
}

TEST_F(Parity, AStarFitsAnyNumber) {
  setPattern(2, u"01112"_s);
  addRows(u"02 03 05 07 09\n02 03 05 07 10\n02 03 05 08 10"_s);
  EXPECT_EQ(filter_Danshuang(run(), period, 2), 1);
  EXPECT_EQ(numbers(), QStringList{u"02 03 05 08 10"_s});
}

TEST_F(Parity, AllStarsExcludeThePeriod) {
  setPattern(1, u"22222"_s);
  addRows(u"01 03 05 07 09\n02 04 06 08 10"_s);
  EXPECT_EQ(filter_Danshuang(run(), period, 1), 0);
  EXPECT_TRUE(survivors().isEmpty());
}

TEST_F(Parity, WithToleranceAMatchStays) {
  driver.state().rongcuoValue = 1;
  setPattern(1, u"11111"_s);
  addRows(u"01 03 05 07 09\n01 03 05 07 10"_s);
  EXPECT_EQ(filter_Danshuang(run(), period, 1), 1);
  EXPECT_EQ(marks(), (QStringList{u"0"_s, u"1"_s}));
}

TEST_F(Parity, TheTextsOfAPatternWithRows) {
  setPattern(3, u"00112"_s);
  addRows(u"01 03 05 07 09"_s);
  ports.status = u"此前"_s;
  QString during;
  ports.onYield = [&](int) { during = ports.status; };
  filter_Danshuang(run(), period, 3);
  EXPECT_EQ(during, u"此前\r\n\r\n[排除掉单双组合3：]过滤正在进行中．．．"_s);
  EXPECT_EQ(ports.status, u"此前\r\n\r\n[排除掉单双组合3：]双双单单*\r\n\r\n过滤后余：１ 注"_s);
}

TEST_F(Parity, WithoutRowsThePatternsLineStays) {
  setPattern(5, u"00112"_s);
  EXPECT_EQ(filter_Danshuang(run(), period, 5), 0);
  EXPECT_EQ(ports.status, u"\r\n\r\n[排除掉单双组合5：] 双双单单*"_s);
}

TEST_F(Parity, EveryPatternHasItsOwnLabel) {
  addRows(u"01 03 05 07 09"_s);
  for (int j = 0; j <= parityPatterns; ++j)
    use(70 + j);
  sql("UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN 5001 AND 5055");
  QStringList expected{u"[排除掉上期单双组合：]双双双双双"_s, u"过滤后余：１ 注"_s};
  for (int j = 1; j <= parityPatterns; ++j)
    expected << u"[排除掉单双组合%1：]双双双双双"_s.arg(j) << u"过滤后余：１ 注"_s;
  for (int j = 0; j <= parityPatterns; ++j)
    filter_Danshuang(run(), period, j);
  EXPECT_EQ(statusLines(), expected);
}

TEST_F(Parity, ValuesWithoutASymbolGiveNone) {
  setValue(5011, 1);
  setValue(5012, 3);
  setValue(5013, -1);
  setValue(5014, 2);
  EXPECT_EQ(getDanshuangText(workspace.store(), 5011, 5015), u"单*双"_s);
}

TEST_F(Parity, ThePreviousDrawIsWrittenAlsoWhereItsSwitchIsOff) {
  workspace.addDraws(u"11031508 01 02 03 04 06\n11031511 01 03 05 07 09"_s);
  sql("UPDATE 历史记录 SET 号码1 = 1, 号码2 = 4, 号码3 = 7, 号码4 = 8, 号码5 = 11 WHERE 期号 = 11031509");
  addRows(u"01 03 05 07 09"_s);
  EXPECT_EQ(filter_Danshuang(run(), period, 0), 0);
  EXPECT_EQ(workspace.rows("SELECT VALUE FROM 过滤条件 WHERE ID BETWEEN 5000 AND 5007 ORDER BY ID"),
            (QStringList{u"0"_s, u"1"_s, u"0"_s, u"1"_s, u"0"_s, u"1"_s, u"0"_s, u"0"_s}));
  EXPECT_EQ(ports.status, QString());
}

TEST_F(Parity, ThePreviousDrawsPatternIsReturnedAsText) {
  EXPECT_EQ(setShangqiDanshuang(workspace.store(), 11031509), u"双双双双双"_s);
}

TEST_F(Parity, RowsLikeThePreviousDrawGo) {
  use(70);
  addRows(u"02 04 06 08 10\n02 04 06 08 09"_s);
  EXPECT_EQ(filter_Danshuang(run(), period, 0), 1);
  EXPECT_EQ(numbers(), QStringList{u"02 04 06 08 09"_s});
}

TEST_F(Parity, NothingHappensAfterAStop) {
  setPattern(0, u"22222"_s);
  addRows(u"01 03 05 07 09"_s);
  driver.cmm_stop_Click();
  EXPECT_EQ(filter_Danshuang(run(), period, 0), 0);
  EXPECT_EQ(getDanshuangText(workspace.store(), 5001, 5005), u"*****"_s);
  EXPECT_EQ(survivors().size(), 1);
}

TEST_F(Parity, AStopKeepsTheRunningLine) {
  setPattern(1, u"11111"_s);
  addRows(u"01 03 05 07 09\n01 03 05 07 11"_s);
  stopAtYield(1);
  filter_Danshuang(run(), period, 1);
  EXPECT_EQ(numbers(), QStringList{u"01 03 05 07 11"_s});
  EXPECT_EQ(statusLines(), QStringList{u"[排除掉单双组合1：]过滤正在进行中．．．"_s});
}

TEST_F(Parity, NoDrawBeforeEndsTheRunWithTheRowsAsBefore) {
  sql("DELETE FROM 历史记录");
  addRows(u"01 03 05 07 09"_s);
  try {
    filter_Danshuang(run(), period, 0);
    FAIL() << "no fault";
  } catch (const MissingData& fault) {
    EXPECT_EQ(fault.message(), u"历史记录中没有上一期的开奖号码，无法得到上期单双组合。请先导入或下载开奖号码。"_s);
  }
  EXPECT_EQ(survivors(), QStringList{u"1: 01 03 05 07 09"_s});
}

TEST_F(Parity, ABadNumberEndsThePass) {
  setPattern(1, u"11111"_s);
  addRows(u"01 03 05 07 09\n01 03 05 07 13"_s);
  EXPECT_THROW(filter_Danshuang(run(), period, 1), NumberFault);
  EXPECT_EQ(survivors().size(), 2);
}

TEST_F(Parity, AStopInsideThePatternsLetsTheRestLeaveNoLine) {
  for (int j = 0; j <= parityPatterns; ++j)
    use(70 + j);
  addRows(u"01 03 05 07 09\n01 03 05 07 11"_s);
  stopAtYield(2 + 2 + 1);  // the start, the pattern of the draw before, one row of the next
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(statusLines().mid(2),
            (QStringList{u"[排除掉上期单双组合：]双双双双双"_s, u"过滤后余：２ 注"_s,
                         u"[排除掉单双组合1：]过滤正在进行中．．．"_s, u"用户中止,当前记录余：２ 注"_s}));
  EXPECT_EQ(marks(), (QStringList{u"2"_s, u"1"_s}));
}

}  // namespace elevenfive
