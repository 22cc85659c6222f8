#include "engine/expansion.h"

#include "model/errors.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class Expansion : public EngineTest {
 protected:
  void pick(std::initializer_list<int> tuo, std::initializer_list<int> dan) {
    driver.fillTiaojianValues(1, 11, 0);
    for (const int n : tuo)
      setValue(n, 1);
    for (const int n : dan)
      setValue(n, 2);
  }
};

TEST_F(Expansion, AllElevenNumbersGive462RowsInRisingOrder) {
  EXPECT_EQ(driver.initXuanhao(period), 462);
  const QStringList rows = survivors();
  ASSERT_EQ(rows.size(), 462);
  EXPECT_EQ(rows.first(), u"1: 01 02 03 04 05"_s);
  EXPECT_EQ(rows[1], u"2: 01 02 03 04 06"_s);
  EXPECT_EQ(rows.last(), u"462: 07 08 09 10 11"_s);
  EXPECT_EQ(workspace.rows("SELECT DISTINCT 过滤标记, 买中个数, 缩水标记, 精选标记, 临时数据 FROM 日志表"),
            QStringList{u"0 - - - -"_s});
  EXPECT_EQ(workspace.rows("SELECT MIN(ID), MAX(ID) FROM 日志表"), QStringList{u"1 462"_s});
}

TEST_F(Expansion, EachRowHoldsTheBanker) {
  pick({1, 2, 3, 4, 5}, {11});
  EXPECT_EQ(driver.initXuanhao(period), 5);  // C(6 - 1, 5 - 1)
  EXPECT_EQ(numbers(), (QStringList{u"01 02 03 04 11"_s, u"01 02 03 05 11"_s, u"01 02 04 05 11"_s, u"01 03 04 05 11"_s,
                                    u"02 03 04 05 11"_s}));
}

TEST_F(Expansion, ABankerAndFourDragsGiveOneRow) {
  pick({1, 2, 3, 4}, {11});
  EXPECT_EQ(driver.initXuanhao(period), 1);
  EXPECT_EQ(numbers(), QStringList{u"01 02 03 04 11"_s});
}

TEST_F(Expansion, FiveBankersGiveExactlyOneRow) {
  pick({1, 2}, {3, 5, 7, 9, 11});
  driver.showXuanhaoTip();
  EXPECT_EQ(driver.state().zuheTotal, 1);
  EXPECT_EQ(driver.initXuanhao(period), 1);
  EXPECT_EQ(numbers(), QStringList{u"03 05 07 09 11"_s});
}

TEST_F(Expansion, TheSecondFieldHasNoEffect) {
  pick({1, 2, 3, 4, 5}, {});
  driver.fillTiaojianValues(101, 111, 2);
  EXPECT_EQ(driver.initXuanhao(period), 1);
}

TEST_F(Expansion, CountingLinesStandInFullWidthDigits) {
  pick({1, 2, 3, 4, 5, 6, 7, 8, 9}, {10, 11});
  driver.showXuanhaoTip();
  EXPECT_EQ(driver.countTuoma(), 9);
  EXPECT_EQ(driver.countDanma(), 2);
  EXPECT_EQ(driver.state().zuheTotal, 84);
  EXPECT_EQ(view.tip, u"已选“拖码”个数： ９\r\n\r\n已选“胆码”个数： ２\r\n过滤缩水前全部号码组合： ８４  注"_s);
}

TEST_F(Expansion, TooFewPicksAreToldAndThePickingPageShown) {
  pick({1, 2, 3, 4}, {});
  addRows(u"01 02 03 04 05"_s);
  EXPECT_EQ(driver.initXuanhao(period), 0);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"号码还没有选取,或者已选的号码个数太少!请先选取号码！"_s});
  EXPECT_EQ(view.pickingPagesShown, 1);
  EXPECT_EQ(survivors().size(), 1);
}

TEST_F(Expansion, TheCheckIsSilentOnRequest) {
  pick({}, {});
  EXPECT_FALSE(driver.checkHaomaXuanqu(false));
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(view.pickingPagesShown, 0);
  pick({1, 2, 3, 4, 5}, {});
  EXPECT_TRUE(driver.checkHaomaXuanqu(true));
}

TEST_F(Expansion, PeriodsBelowOneAreRefusedInSilence) {
  EXPECT_EQ(driver.initXuanhao(0), 0);
  EXPECT_EQ(driver.initXuanhao(-5), 0);
  EXPECT_TRUE(ports.log.isEmpty());
  EXPECT_TRUE(survivors().isEmpty());
}

TEST_F(Expansion, TheEndIsToldOnceInABoxAndRestartsTheStatusText) {
  ports.status = u"旧"_s;
  driver.initXuanhao(period);
  EXPECT_EQ(ports.log, (QStringList{u"disable Pic_subTouZhu"_s, u"progress 0..462"_s, u"enable cmm_stop"_s,
                                    u"progress hidden"_s, u"disable cmm_stop"_s, u"enable Pic_subTouZhu"_s,
                                    u"plain [] 初始化选号完成!共 ４６２ 注！"_s}));
  EXPECT_EQ(ports.status, u"初始化选号完成!共 ４６２ 注！\r\n\r\n\r\n"_s);
  EXPECT_EQ(view.gridShown, 1);
  EXPECT_EQ(ports.value, 462);
  EXPECT_EQ(ports.yields, 462);
}

TEST_F(Expansion, RowsOfOtherPeriodsGoFirstAndIdsCountOn) {
  addRows(u"01 02 03 04 05\n02 03 04 05 06"_s);
  sql("UPDATE 日志表 SET 期号 = 11031509 WHERE 号码1 = 2");
  sql("UPDATE 日志表 SET ID = 70 WHERE 号码1 = 1");
  pick({1, 2, 3, 4, 5}, {});
  ports.answers = {Answer::yes};
  EXPECT_EQ(driver.initXuanhao(period), 1);
  EXPECT_EQ(workspace.rows("SELECT ID, 序号, 期号 FROM 日志表"), QStringList{u"71 1 11031510"_s});
}

TEST_F(Expansion, StandingRowsOfThePeriodAreKeptOnNo) {
  addRows(u"07 08 09 10 11"_s);
  pick({1, 2, 3, 4, 5}, {});
  ports.answers = {Answer::no};
  EXPECT_EQ(driver.initXuanhao(period), 2);
  ASSERT_GE(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::question);
  EXPECT_EQ(ports.boxes[0].buttons, BoxButtons::yesNo);
  EXPECT_EQ(ports.boxes[0].title, u"信息提示"_s);
  EXPECT_EQ(ports.boxes[0].text, u"该期数已有记录存在日志表中!要删除它吗？\r\n按'是',删除它;按'否'保留它!"_s);
  EXPECT_EQ(survivors(), (QStringList{u"1: 07 08 09 10 11"_s, u"1: 01 02 03 04 05"_s}));
  EXPECT_EQ(ports.boxes[1].text, u"初始化选号完成!共 ２ 注！"_s);
}

TEST_F(Expansion, StandingRowsOfThePeriodGoOnYes) {
  addRows(u"07 08 09 10 11"_s);
  pick({1, 2, 3, 4, 5}, {});
  ports.answers = {Answer::yes};
  EXPECT_EQ(driver.initXuanhao(period), 1);
  EXPECT_EQ(survivors(), QStringList{u"1: 01 02 03 04 05"_s});
}

TEST_F(Expansion, AStopKeepsTheRowsSoFarAndSaysNothing) {
  ports.status = u"旧"_s;
  stopAtYield(10);
  EXPECT_EQ(driver.initXuanhao(period), 10);
  EXPECT_EQ(survivors().size(), 10);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(view.gridShown, 0);
  EXPECT_EQ(ports.status, u"旧"_s);
  EXPECT_FALSE(driver.state().userStop);
  EXPECT_TRUE(ports.enabled[ControlId::Pic_subTouZhu]);
  EXPECT_FALSE(ports.enabled[ControlId::cmm_stop]);
  EXPECT_FALSE(ports.visible);
}

TEST_F(Expansion, AFaultLeavesTheTableAsItWasAndTheControlsUsable) {
  addRows(u"07 08 09 10 11"_s);
  sql("UPDATE 日志表 SET 期号 = 11031509");
  sql("CREATE TRIGGER full BEFORE INSERT ON 日志表 WHEN NEW.序号 = 100 BEGIN SELECT RAISE(ABORT, 'full'); END");
  EXPECT_THROW(driver.initXuanhao(period), StoreError);
  EXPECT_EQ(workspace.rows("SELECT 序号, 期号, 号码1 FROM 日志表"), QStringList{u"1 11031509 7"_s});
  EXPECT_TRUE(ports.enabled[ControlId::Pic_subTouZhu]);
  EXPECT_FALSE(ports.enabled[ControlId::cmm_stop]);
  EXPECT_FALSE(ports.visible);
  EXPECT_FALSE(driver.state().userStop);
}

}  // namespace elevenfive
