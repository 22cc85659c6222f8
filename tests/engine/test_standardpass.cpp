#include "engine/standardpass.h"

#include "engine/valuefilters.h"
#include "model/errors.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class StandardPass : public EngineTest {
 protected:
  static StandardStage firstNumber() {
    return {u"[首号]"_s, 1, 1000, 1170, rowOnly([](const Draw& numbers) { return numbers[0]; })};
  }
};

TEST_F(StandardPass, AStageThatIsNotInUseLeavesEverything) {
  addRows(u"01 02 03 04 05"_s);
  for (const int value : {0, 2, -1}) {
    use(1, value);
    EXPECT_EQ(runStandardPass(run(), period, firstNumber()), 0);
  }
  EXPECT_EQ(survivors(), QStringList{u"1: 01 02 03 04 05"_s});
  EXPECT_TRUE(ports.log.isEmpty());
  EXPECT_EQ(ports.status, QString());
}

TEST_F(StandardPass, APeriodWithoutRowsLeavesNoLine) {
  use(1);
  EXPECT_EQ(runStandardPass(run(), period, firstNumber()), 0);
  EXPECT_TRUE(ports.log.isEmpty());
  EXPECT_EQ(ports.status, QString());
}

TEST_F(StandardPass, PassedRowsAreCountedAndRenumberedAndFailedRowsGo) {
  use(1);
  allow(1002, 1003);
  addRows(u"01 02 03 04 05\n02 03 04 05 06\n03 04 05 06 07\n04 05 06 07 08"_s);
  EXPECT_EQ(runStandardPass(run(), period, firstNumber()), 2);
  EXPECT_EQ(survivors(), (QStringList{u"1: 02 03 04 05 06"_s, u"2: 03 04 05 06 07"_s}));
  EXPECT_EQ(marks(), (QStringList{u"1"_s, u"1"_s}));
}

TEST_F(StandardPass, EveryValueFromOneUpAllows) {
  use(1);
  setValue(1001, 2);
  setValue(1002, -1);
  addRows(u"01 02 03 04 05\n02 03 04 05 06"_s);
  EXPECT_EQ(runStandardPass(run(), period, firstNumber()), 1);
  EXPECT_EQ(numbers(), QStringList{u"01 02 03 04 05"_s});
}

TEST_F(StandardPass, WithToleranceAFailedRowKeepsItsPlaceAndItsMark) {
  use(1);
  allow(1002, 1003);
  driver.state().rongcuoValue = 1;
  addRows(u"01 02 03 04 05\n02 03 04 05 06\n03 04 05 06 07"_s);
  EXPECT_EQ(runStandardPass(run(), period, firstNumber()), 2);
  // The failed first row keeps 序号 1 and the passed ones count from 1.
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"1: 02 03 04 05 06"_s, u"2: 03 04 05 06 07"_s}));
  EXPECT_EQ(marks(), (QStringList{u"0"_s, u"1"_s, u"1"_s}));
}

TEST_F(StandardPass, WithToleranceAStageThatAllFailTellsZeroAndTakesNothing) {
  use(1);
  driver.state().rongcuoValue = 1;
  addRows(u"01 02 03 04 05\n02 03 04 05 06"_s);
  EXPECT_EQ(runStandardPass(run(), period, firstNumber()), 0);
  EXPECT_EQ(survivors().size(), 2);
  EXPECT_EQ(statusLines(), QStringList{u"[首号]过滤后余：０ 注"_s});
}

TEST_F(StandardPass, TheRunningLineGivesWayToTheResultLine) {
  use(1);
  allow(1001, 1011);
  addRows(u"01 02 03 04 05\n02 03 04 05 06"_s);
  ports.status = u"此前"_s;
  QString during;
  ports.onYield = [&](int) { during = ports.status; };
  runStandardPass(run(), period, firstNumber());
  EXPECT_EQ(during, u"此前\r\n\r\n[首号]过滤正在进行中．．．"_s);
  EXPECT_EQ(ports.status, u"此前\r\n\r\n[首号]过滤后余：２ 注"_s);
  EXPECT_EQ(ports.log, (QStringList{u"disable Pic_subTouZhu"_s, u"progress 0..2"_s, u"enable cmm_stop"_s,
                                    u"progress hidden"_s, u"disable cmm_stop"_s, u"enable Pic_subTouZhu"_s}));
  EXPECT_EQ(ports.yields, 2);
}

TEST_F(StandardPass, AStopKeepsTheRestAndTheRunningLineAndDeletesWhatFailed) {
  use(1);
  allow(1002, 1011);
  addRows(u"01 02 03 04 05\n02 03 04 05 06\n01 03 04 05 06\n01 04 05 06 07"_s);
  stopAtYield(2);
  EXPECT_EQ(runStandardPass(run(), period, firstNumber()), 1);
  EXPECT_EQ(survivors(), (QStringList{u"1: 02 03 04 05 06"_s, u"3: 01 03 04 05 06"_s, u"4: 01 04 05 06 07"_s}));
  EXPECT_EQ(statusLines(), QStringList{u"[首号]过滤正在进行中．．．"_s});
  EXPECT_TRUE(driver.state().userStop);
}

TEST_F(StandardPass, AStopAtTheLastRowKeepsTheRunningLine) {
  use(1);
  allow(1001, 1011);
  addRows(u"01 02 03 04 05"_s);
  stopAtYield(1);
  runStandardPass(run(), period, firstNumber());
  EXPECT_EQ(statusLines(), QStringList{u"[首号]过滤正在进行中．．．"_s});
}

TEST_F(StandardPass, ABadNumberEndsThePassWithTheRowsAsBefore) {
  use(1);
  allow(1002, 1011);
  addRows(u"01 02 03 04 05\n02 03 04 05 06\n03 04 05 06 12"_s);
  try {
    runStandardPass(run(), period, firstNumber());
    FAIL() << "no fault";
  } catch (const NumberFault& fault) {
    EXPECT_EQ(fault.message(),
              u"序号 3 的号码（03 04 05 06 12）不在 01 到 11 之间，过滤已中止，请删除这一注或重新导入号码。"_s);
  }
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"2: 02 03 04 05 06"_s, u"3: 03 04 05 06 12"_s}));
  EXPECT_EQ(marks(), (QStringList{u"0"_s, u"0"_s, u"0"_s}));
  EXPECT_TRUE(ports.enabled[ControlId::Pic_subTouZhu]);
  EXPECT_FALSE(ports.enabled[ControlId::cmm_stop]);
  EXPECT_FALSE(ports.visible);
}

TEST_F(StandardPass, ARowWithoutAFigureEndsThePass) {
  use(9);
  allow(3600, 3630);
  addRows(u"05 05 05 05 05"_s);  // one difference, less 4
  EXPECT_THROW(filter_AC(run(), period), NumberFault);
  EXPECT_EQ(survivors().size(), 1);
}

TEST_F(StandardPass, RowsOfOtherPeriodsAreNotTouched) {
  use(1);
  addRows(u"01 02 03 04 05\n02 03 04 05 06"_s);
  sql("UPDATE 日志表 SET 期号 = 7 WHERE 号码1 = 1");
  EXPECT_EQ(runStandardPass(run(), period, firstNumber()), 0);
  EXPECT_EQ(workspace.rows("SELECT 期号, 序号, 过滤标记 FROM 日志表"), QStringList{u"7 1 0"_s});
}

}  // namespace elevenfive
