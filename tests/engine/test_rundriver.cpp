#include "engine/rundriver.h"

#include "model/errors.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class RunDriverTest : public EngineTest {};

TEST_F(RunDriverTest, TheButtonsBearTheirCaptionsAndTips) {
  QStringList captions;
  for (const RunButton& button : RunDriver::buttons())
    captions << button.caption.toString();
  EXPECT_EQ(captions, (QStringList{u"第一步：初始化"_s, u"第二步：过滤缩水"_s, u"精选号码"_s, u"导出"_s, u"导入"_s,
                                   u"删除"_s, u"开奖核对"_s}));
  EXPECT_EQ(RunDriver::buttons()[0].tip, u"第一步：展开所选号码的全部组合");
  EXPECT_EQ(RunDriver::buttons()[1].tip, u"第二步：按照设定的条件过滤");
}

TEST_F(RunDriverTest, ExpandAsksThePeriodWithTheNextOneAsDefault) {
  driver.cmmTouZhu_Click(0);
  ASSERT_EQ(ports.inputs.size(), 1U);
  EXPECT_EQ(ports.inputs[0].title, QString());
  EXPECT_EQ(ports.inputs[0].prompt,
            u"[注意,只需要输入8位数字(如,11041510)的期号！]\r\n\r\n请输入你要过滤或者要核对的期号："_s);
  EXPECT_EQ(ports.inputs[0].defaultText, u"11031510"_s);
  EXPECT_EQ(survivors().size(), 462);
  EXPECT_EQ(ports.status, u"初始化选号完成!共 ４６２ 注！\r\n\r\n\r\n"_s);
}

TEST_F(RunDriverTest, ExpandKeepsThePanelAndTheUserMenuShutUntilItsEnd) {
  driver.cmmTouZhu_Click(0);
  EXPECT_EQ(ports.log.first(), u"disable Pic_subTouZhu"_s);
  EXPECT_EQ(ports.log.last(), u"enable Pic_subTouZhu"_s);
  EXPECT_EQ(ports.log[2], u"disable mnu_UserQiehuan"_s);
  EXPECT_EQ(ports.log[ports.log.size() - 2], u"enable mnu_UserQiehuan"_s);
  EXPECT_EQ(ports.log.filter(u"Pic_subTouZhu"_s).size(), 2);
}

TEST_F(RunDriverTest, ACancelledExpandEmptiesTheTableAllTheSame) {
  addRows(u"01 02 03 04 05"_s);
  ports.typed = {QString()};
  driver.cmmTouZhu_Click(0);
  EXPECT_TRUE(survivors().isEmpty());
  EXPECT_EQ(ports.status, u"表格中号码全部删除已完成．"_s);
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(RunDriverTest, WordsAndNegativeNumbersReadAsPeriodZero) {
  for (const QString& typed : {u"abc"_s, u"-11031510"_s, u" "_s}) {
    ports.typed = {typed};
    driver.cmmTouZhu_Click(0);
    EXPECT_TRUE(workspace.rows("SELECT ID FROM 日志表").isEmpty()) << typed.toStdString();
  }
}

TEST_F(RunDriverTest, TheRunOffersThePeriodOfTheGridsRow) {
  view.current = 11031508;
  driver.cmmTouZhu_Click(1);
  ASSERT_EQ(ports.inputs.size(), 2U);
  EXPECT_EQ(ports.inputs[0].prompt, u"要过滤哪期的号码 ？"_s);
  EXPECT_EQ(ports.inputs[0].defaultText, u"11031508"_s);
  EXPECT_EQ(ports.status, u"\r\n\r\n表格中无[１１０３１５０８]期数据．"_s);
}

TEST_F(RunDriverTest, TheRunOffersTheNextPeriodWhereTheGridHasNone) {
  view.current = 0;
  driver.cmmTouZhu_Click(1);
  EXPECT_EQ(ports.inputs[0].defaultText, u"11031510"_s);
}

TEST_F(RunDriverTest, ACancelledRunStillAsksTheToleranceAndSaysNothing) {
  addRows(u"01 02 03 04 05"_s);
  sql("UPDATE 日志表 SET 过滤标记 = 7, 临时数据 = 999");
  ports.status = u"此前"_s;
  ports.typed = {QString(), QString()};
  driver.cmmTouZhu_Click(1);
  EXPECT_EQ(ports.inputs.size(), 2U);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(ports.status, u"此前"_s);
  EXPECT_EQ(workspace.rows("SELECT 序号, 过滤标记, 临时数据 FROM 日志表"), QStringList{u"1 7 999"_s});
  EXPECT_TRUE(ports.enabled[ControlId::Pic_subTouZhu]);
  EXPECT_TRUE(ports.enabled[ControlId::mnu_UserQiehuan]);
}

TEST_F(RunDriverTest, TheToleranceIsAskedWithItsRange) {
  use(1);
  use(4);
  use(38);
  ports.typed = {u"11031510"_s, u" 2 注"_s};
  driver.cmmTouZhu_Click(1);
  ASSERT_EQ(ports.inputs.size(), 2U);
  EXPECT_EQ(ports.inputs[1].title, u"过滤条件容错设置"_s);
  EXPECT_EQ(ports.inputs[1].prompt, u"容错说明\r\n\r\n（范围在 0-1之间，建议在２以内，推荐设为０）"_s);
  EXPECT_EQ(ports.inputs[1].defaultText, u"0"_s);
  EXPECT_EQ(driver.state().rongcuoValue, 2);
}

TEST_F(RunDriverTest, WithoutConditionsTheRangeEndsAtMinusOne) {
  driver.cmmTouZhu_Click(1);
  EXPECT_TRUE(ports.inputs[1].prompt.contains(u"（范围在 0--1之间"_s));
}

TEST_F(RunDriverTest, AFaultOfARunIsOneCriticalBox) {
  addRows(u"01 02 03 04 12"_s);
  use(1);
  driver.cmmTouZhu_Click(1);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_TRUE(ports.boxes[0].text.contains(u"01 02 03 04 12"_s));
  EXPECT_EQ(ports.log.last(), u"enable Pic_subTouZhu"_s);
}

TEST_F(RunDriverTest, DeleteAsksFirst) {
  addRows(u"01 02 03 04 05"_s);
  ports.answers = {Answer::no};
  driver.cmmTouZhu_Click(5);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].text, u"确认要删除全部记录吗？"_s);
  EXPECT_EQ(ports.boxes[0].buttons, BoxButtons::okCancel);
  EXPECT_EQ(survivors().size(), 1);
  ports.answers = {Answer::yes};
  driver.cmmTouZhu_Click(5);
  EXPECT_TRUE(survivors().isEmpty());
  EXPECT_EQ(ports.boxes.back().text, u"删除记录完成！"_s);
  EXPECT_EQ(ports.status, u"表格中号码全部删除已完成．"_s);
}

TEST_F(RunDriverTest, DeletingOnePeriodKeepsTheOthers) {
  addRows(u"01 02 03 04 05\n02 03 04 05 06"_s);
  sql("UPDATE 日志表 SET 期号 = 7 WHERE 号码1 = 1");
  ports.status = u"此前"_s;
  const int caretMoves = ports.caretMoves;
  driver.deleteRizhi(period);
  EXPECT_EQ(workspace.rows("SELECT 期号 FROM 日志表"), QStringList{u"7"_s});
  EXPECT_EQ(ports.status, u"此前表格中号码全部删除已完成．"_s);
  EXPECT_EQ(ports.caretMoves, caretMoves + 1);
  EXPECT_EQ(view.gridShown, 1);
}

TEST_F(RunDriverTest, ShowTipReplacesOrStandsAhead) {
  ports.status = u"旧"_s;
  driver.showTip(u"新"_s, true);
  EXPECT_EQ(ports.status, u"新\r\n\r\n旧"_s);
  driver.showTip(u"新"_s, false);
  EXPECT_EQ(ports.status, u"新\r\n\r\n"_s);
}

TEST_F(RunDriverTest, ButtonsBeyondTheRowDoNothing) {
  driver.cmmTouZhu_Click(-1);
  driver.cmmTouZhu_Click(7);
  EXPECT_TRUE(ports.log.isEmpty());
}

TEST_F(RunDriverTest, TheRunOffersTheNextPeriodWhereTheGridIsEmpty) {
  view.current = std::nullopt;
  driver.cmmTouZhu_Click(1);
  EXPECT_EQ(ports.inputs[0].defaultText, u"11031510"_s);
}

TEST_F(RunDriverTest, WordsAndNegativeNumbersReadAsToleranceZero) {
  for (const QString& typed : {u"-1"_s, u"abc"_s}) {
    driver.state().rongcuoValue = 3;
    ports.typed = {u"11031510"_s, typed};
    driver.cmmTouZhu_Click(1);
    EXPECT_EQ(driver.state().rongcuoValue, 0) << typed.toStdString();
  }
}

TEST_F(RunDriverTest, ASecondClickTakesNothingByTheFiltersButTheReductionMayThinFurther) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06\n01 02 03 07 08\n06 07 08 09 10"_s);
  use(1);
  allow(1000, 1170);
  setValue(3900, 4);
  driver.cmmTouZhu_Click(1);
  EXPECT_EQ(numbers(), (QStringList{u"01 02 03 04 05"_s, u"01 02 03 07 08"_s, u"06 07 08 09 10"_s}));
  setValue(3900, 3);
  driver.cmmTouZhu_Click(1);
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"2: 06 07 08 09 10"_s}));
  EXPECT_TRUE(statusLines().contains(u"[ 和 值 ]过滤后余：３ 注"_s));
  driver.cmmTouZhu_Click(1);
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"2: 06 07 08 09 10"_s}));
}

TEST_F(RunDriverTest, ASecondClickFinishesAReductionThatWasStopped) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06\n01 02 03 07 08\n06 07 08 09 10"_s);
  use(1);
  allow(1000, 1170);
  setValue(3900, 3);
  stopAtYield(4 + 4 + 1);  // the start, the sum, one row against the first kept one
  driver.cmmTouZhu_Click(1);
  EXPECT_EQ(numbers(), (QStringList{u"01 02 03 04 05"_s, u"01 02 03 07 08"_s, u"06 07 08 09 10"_s}));
  // The reduction tells the rows that it kept, the end of the run those that are left.
  EXPECT_EQ(statusLines().mid(1), (QStringList{u"过滤缩水之前共：４注．"_s, u"[ 和 值 ]过滤后余：４ 注"_s,
                                               u"[保三型]缩水后余：１ 注"_s, u"用户中止,当前记录余：３ 注"_s}));
  driver.cmmTouZhu_Click(1);
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"2: 06 07 08 09 10"_s}));
  EXPECT_EQ(statusLines().mid(1), (QStringList{u"过滤缩水之前共：３注．"_s, u"[ 和 值 ]过滤后余：３ 注"_s,
                                               u"[保三型]缩水后余：２ 注"_s, u"全部过滤缩水完成,余：２ 注"_s}));
}

}  // namespace elevenfive
