#include "engine/pipeline.h"

#include <functional>

#include "engine/matchfilter.h"
#include "engine/parity.h"
#include "engine/positionfilter.h"
#include "engine/reduction.h"
#include "engine/valuefilters.h"
#include "model/errors.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class Pipeline : public EngineTest {};

TEST_F(Pipeline, TheStagesStandInTheirOrder) {
  QStringList names;
  for (const PipelineStage& stage : pipelineStages())
    names << stage.name.toString();
  EXPECT_EQ(names.join(u' '),
            u"和值 头数和值 尾数和值 奇数和值 偶数和值 奇数个数 偶数个数 大数个数 小数个数 高尾码个数 低尾码个数 "
            u"温度值5 温度值10 "
            "区间 自定义组 跨度 最大间距 连号 AC值 重叠号 斜位码 尾数形式 头数形式 单双组合"_s);
}

TEST_F(Pipeline, APeriodWithoutRowsIsToldAndEndsTheRun) {
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(ports.status, u"\r\n\r\n表格中无[１１０３１５１０]期数据．"_s);
  EXPECT_EQ(ports.log, (QStringList{u"disable mnu_UserQiehuan"_s, u"enable mnu_UserQiehuan"_s, u"disable cmm_stop"_s}));
  EXPECT_EQ(view.gridShown, 0);
}

TEST_F(Pipeline, PeriodZeroSaysNothing) {
  driver.runGuolvSuoshui(0);
  EXPECT_EQ(ports.status, QString());
}

TEST_F(Pipeline, TheStartSetsAllMarksBack) {
  addRows(u"01 02 03 04 05\n02 03 04 05 06"_s);
  sql("UPDATE 日志表 SET 过滤标记 = 9, 缩水标记 = -1, 精选标记 = NULL, 临时数据 = 77");
  EXPECT_TRUE(driver.resetRizhiBiaoji(period));
  EXPECT_EQ(workspace.rows("SELECT 过滤标记, 缩水标记, 精选标记, 临时数据 FROM 日志表"),
            (QStringList{u"0 0 0 0"_s, u"0 0 0 0"_s}));
  EXPECT_EQ(ports.status, u"\r\n\r\n正读取数据[１１０３１５１０期]．．．\r\n\r\n过滤缩水之前共：２注．"_s);
  EXPECT_EQ(ports.log.filter(u"progress"_s), (QStringList{u"progress 0..4"_s, u"progress hidden"_s}));
  EXPECT_EQ(ports.value, 4);
  EXPECT_EQ(ports.yields, 2);
}

TEST_F(Pipeline, AStatusTextOfThirtyCharactersStaysAndALongerOneGoes) {
  addRows(u"01 02 03 04 05"_s);
  const QString lines = u"\r\n\r\n正读取数据[１１０３１５１０期]．．．\r\n\r\n过滤缩水之前共：１注．"_s;
  ports.status = QString(30, u'x');
  driver.resetRizhiBiaoji(period);
  EXPECT_EQ(ports.status, QString(30, u'x') + lines);
  ports.status = QString(31, u'x');
  driver.resetRizhiBiaoji(period);
  EXPECT_EQ(ports.status, lines);
}

TEST_F(Pipeline, AStopInTheStartEndsTheRunWithoutASummary) {
  addRows(u"01 02 03 04 05\n02 03 04 05 06"_s);
  sql("UPDATE 日志表 SET 过滤标记 = 9");
  stopAtYield(1);
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(marks(), (QStringList{u"0"_s, u"9"_s}));
  EXPECT_EQ(ports.status, u"\r\n\r\n正读取数据[１１０３１５１０期]．．．"_s);
  EXPECT_FALSE(driver.state().userStop);
  EXPECT_EQ(view.gridShown, 0);
}

TEST_F(Pipeline, AtToleranceZeroEachLineTellsTheRowsLeft) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06\n01 03 05 07 09\n02 04 06 08 10"_s);
  use(1);
  allow(1015, 1025);  // sums 15, 16, 25, 30: the last goes
  use(4);
  allow(3304, 3304);  // spans 4, 5, 8: only the first stays
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(survivors(), QStringList{u"1: 01 02 03 04 05"_s});
  const QStringList lines = statusLines();
  EXPECT_EQ(lines[1], u"过滤缩水之前共：４注．"_s);
  EXPECT_EQ(lines[2], u"[ 和 值 ]过滤后余：３ 注"_s);
  EXPECT_EQ(lines[3], u"[ 跨 度 ]过滤后余：１ 注"_s);
  EXPECT_EQ(lines.last(), u"全部过滤缩水完成,余：１ 注"_s);
  EXPECT_EQ(view.gridShown, 1);
}

TEST_F(Pipeline, AStageThatAllFailEmptiesThePeriodAndTheNextSayNothing) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06"_s);
  use(1);
  use(4);
  driver.runGuolvSuoshui(period);
  EXPECT_TRUE(survivors().isEmpty());
  EXPECT_EQ(statusLines().filter(u"跨"_s).size(), 0);
  EXPECT_TRUE(statusLines().contains(u"[ 和 值 ]过滤后余：０ 注"_s));
  EXPECT_EQ(statusLines().last(), u"全部过滤缩水完成,余：０ 注"_s);
}

TEST_F(Pipeline, AStopInAStageSkipsTheRestAndIsTold) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06\n01 02 03 04 07"_s);
  use(3);
  allow(3000, 3170);
  use(4);
  stopAtYield(3 + 2);  // three rows of the start, then the second of the stage
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(survivors().size(), 3);
  EXPECT_EQ(statusLines().mid(2), (QStringList{u"[偶数和值]过滤正在进行中．．．"_s, u"用户中止,当前记录余：３ 注"_s}));
  EXPECT_FALSE(driver.state().userStop);
  EXPECT_EQ(view.gridShown, 1);
}

TEST_F(Pipeline, ASecondRunStartsFromWhatTheFirstLeft) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06\n01 02 03 04 07"_s);
  use(1);
  allow(1016, 1017);
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 06"_s, u"2: 01 02 03 04 07"_s}));
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 06"_s, u"2: 01 02 03 04 07"_s}));
  EXPECT_TRUE(statusLines().contains(u"过滤缩水之前共：２注．"_s));
}

TEST_F(Pipeline, AFaultReachesTheCallerAndLeavesTheControlsUsable) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06\n01 02 03 04 12"_s);
  use(4);
  allow(3300, 3340);
  EXPECT_THROW(driver.runGuolvSuoshui(period), NumberFault);
  EXPECT_EQ(survivors().size(), 3);
  EXPECT_EQ(marks(), (QStringList{u"0"_s, u"0"_s, u"0"_s}));
  EXPECT_TRUE(ports.enabled[ControlId::Pic_subTouZhu]);
  EXPECT_TRUE(ports.enabled[ControlId::mnu_UserQiehuan]);
  EXPECT_FALSE(ports.enabled[ControlId::cmm_stop]);
  EXPECT_FALSE(ports.visible);
  EXPECT_FALSE(driver.state().userStop);
}

TEST_F(Pipeline, EveryStageInUseTellsItsLineInTheOrderOfTheRun) {
  addRows(u"01 02 03 04 05\n01 03 05 07 09"_s);
  sql("UPDATE 过滤条件使用情况 SET 使用情况 = 1 WHERE 条件 NOT BETWEEN 30 AND 36");
  sql("UPDATE 过滤条件 SET VALUE = 1 WHERE ID BETWEEN 1000 AND 4599 AND ID NOT IN (3900, 3901)");
  sql("UPDATE 历史数据过滤 SET 使用状态 = 1, 最小值 = 1, 匹配值 = 5");
  use(30);
  sql("UPDATE 号码特性 SET 第1位 = 1");
  driver.runGuolvSuoshui(period);
  QStringList labels;
  for (const QString& line : statusLines())
    if (line.startsWith(u'['))
      labels << line.mid(1, line.indexOf(u']') - 1);
  QStringList expected{u" 和 值 "_s,    u"头数和值"_s, u"尾数和值"_s, u"奇数和值"_s, u"偶数和值"_s,
                       u"奇数个数"_s,   u"偶数个数"_s, u"大数个数"_s, u"小数个数"_s, u"高尾码个数"_s,
                       u"低尾码个数"_s, u"温度值5"_s,  u"温度值10"_s};
  for (int k = 1; k <= 4; ++k)
    expected << u"区间%1"_s.arg(k);
  for (int k = 1; k <= 20; ++k)
    expected << u"自定义组%1"_s.arg(k);
  expected << u" 跨 度 "_s << u"最大间距"_s << u"连号"_s << u"AC值"_s << u"重叠号"_s << u"斜位码"_s << u"尾数形式"_s
           << u"头数形式"_s << u"排除掉上期单双组合："_s;
  for (int j = 1; j <= 5; ++j)
    expected << u"排除掉单双组合%1："_s.arg(j);
  expected << u"号码定位,容错值=０"_s << u"历史数据过滤"_s << u"保五型"_s;
  EXPECT_EQ(labels, expected);
  EXPECT_EQ(survivors().size(), 2);
  // The match filter overwrote the 50 conditions passed.
  EXPECT_EQ(marks(), (QStringList{u"1"_s, u"1"_s}));
}

TEST_F(Pipeline, MarksCountTheConditionsPassed) {
  addRows(u"01 02 03 04 05"_s);
  sql("UPDATE 过滤条件使用情况 SET 使用情况 = 1 WHERE 条件 NOT BETWEEN 30 AND 36");
  sql("UPDATE 过滤条件 SET VALUE = 1 WHERE ID BETWEEN 1000 AND 4599 AND ID NOT IN (3900, 3901)");
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(marks(), QStringList{QString::number(driver.countRongcuoTiaojian())});
}

TEST_F(Pipeline, AStopInTheZonesSkipsGroupsAndAllBehindThem) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06"_s);
  for (const int code : {16, 17, 20, 4, 70})
    use(code);
  sql("UPDATE 过滤条件 SET VALUE = 1 WHERE ID BETWEEN 3300 AND 3899");
  sql("UPDATE 历史数据过滤 SET 使用状态 = 1");
  stopAtYield(2 + 1);
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(statusLines().mid(2), (QStringList{u"[区间1]过滤正在进行中．．．"_s, u"用户中止,当前记录余：２ 注"_s}));
  EXPECT_EQ(marks(), (QStringList{u"1"_s, u"0"_s}));
}

TEST_F(Pipeline, AStopInThePositionFilterSkipsMatchAndReduction) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06"_s);
  use(30);
  sql("UPDATE 号码特性 SET 第1位 = 1");
  sql("UPDATE 历史数据过滤 SET 使用状态 = 1");
  setValue(3900, 3);
  stopAtYield(2 + 1);
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(statusLines().mid(2), (QStringList{u"[号码定位]过滤正在进行中．．．"_s, u"用户中止,当前记录余：２ 注"_s}));
}

TEST_F(Pipeline, WithoutADrawBeforeTheRunEndsAtTheParityStage) {
  sql("DELETE FROM 历史记录");
  addRows(u"01 02 03 04 05\n01 02 03 04 06"_s);
  use(1);
  allow(1015, 1015);
  EXPECT_THROW(driver.runGuolvSuoshui(period), MissingData);
  // What the stages before did stays.
  EXPECT_EQ(survivors(), QStringList{u"1: 01 02 03 04 05"_s});
  EXPECT_EQ(view.gridShown, 1);
  EXPECT_TRUE(ports.enabled[ControlId::mnu_UserQiehuan]);
}

TEST_F(Pipeline, ABadRowEndsTheRunAlsoWhereNoStageLooksAtIt) {
  addRows(u"01 02 03 04 05\n01 02 03 04 12\n00 02 03 04 05"_s);
  sql("UPDATE 日志表 SET 过滤标记 = 9");
  try {
    driver.runGuolvSuoshui(period);
    FAIL() << "no fault";
  } catch (const NumberFault& fault) {
    EXPECT_EQ(fault.message(),
              u"序号 2 的号码（01 02 03 04 12）不在 01 到 11 之间，过滤已中止，请删除这一注或重新导入号码。"_s);
  }
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"2: 01 02 03 04 12"_s, u"3: 00 02 03 04 05"_s}));
  EXPECT_EQ(marks(), (QStringList{u"0"_s, u"0"_s, u"0"_s}));
  EXPECT_EQ(statusLines().last(), u"过滤缩水之前共：３注．"_s);
  EXPECT_FALSE(ports.enabled[ControlId::cmm_stop]);
}

TEST_F(Pipeline, ABadRowOfAnotherPeriodIsNoConcernOfTheRun) {
  addRows(u"01 02 03 04 05\n01 02 03 04 12"_s);
  sql("UPDATE 日志表 SET 期号 = 7 WHERE 号码5 = 12");
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(statusLines().last(), u"全部过滤缩水完成,余：１ 注"_s);
}

TEST_F(Pipeline, AReductionThatWasNeverChosenEndsTheRunBeforeARowIsLost) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06"_s);
  use(1);  // no sum is allowed: the stage would take both rows
  for (const int type : {0, 2, -1}) {
    setValue(3900, type);
    try {
      driver.runGuolvSuoshui(period);
      FAIL() << "no fault";
    } catch (const MissingData& fault) {
      EXPECT_EQ(fault.message(), u"还没有选择缩水类型，请先在“缩水设置”中选择保三型到保七型中的一种。"_s);
    }
    EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"2: 01 02 03 04 06"_s}));
    EXPECT_EQ(statusLines().last(), u"过滤缩水之前共：２注．"_s);
  }
}

TEST_F(Pipeline, AFaultTakesBackTheRunningLineOfItsStageAlone) {
  addRows(u"01 02 03 04 05\n05 05 05 05 05"_s);  // the second row has no AC value
  use(1);
  allow(1015, 1025);
  use(9);
  allow(3600, 3630);
  EXPECT_THROW(driver.runGuolvSuoshui(period), NumberFault);
  EXPECT_EQ(statusLines().mid(1), (QStringList{u"过滤缩水之前共：２注．"_s, u"[ 和 值 ]过滤后余：２ 注"_s}));
  EXPECT_EQ(view.gridShown, 1);
}

TEST_F(Pipeline, EveryStageWithALineOfItsOwnTakesItBackOnAFault) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06\n01 02 03 04 12"_s);
  use(1);
  allow(1000, 1170);
  use(71);
  use(30);
  sql("UPDATE 号码特性 SET 第1位 = 1");
  sql("UPDATE 历史数据过滤 SET 使用状态 = 1, 最小值 = 1, 匹配值 = 5");
  const std::function<int()> calls[] = {
      [this] { return filter_Hezhi(run(), period); }, [this] { return filter_Danshuang(run(), period, 1); },
      [this] { return filter_Dingwei(run(), period); }, [this] { return filter_Lishi(run(), period); },
      [this] { return runSuoshui(run(), 3, period); }};
  for (const auto& call : calls) {
    ports.status = u"此前"_s;
    QString during;
    ports.onYield = [&](int) { during = ports.status; };
    EXPECT_THROW(call(), NumberFault);
    EXPECT_TRUE(during.startsWith(u"此前\r\n\r\n["_s)) << during.toStdString();
    EXPECT_EQ(ports.status, u"此前"_s) << during.toStdString();
  }
}

TEST_F(Pipeline, AFaultInTheStartTakesItsReadingLineBack) {
  addRows(u"01 02 03 04 05"_s);
  ports.status = QString(31, u'x');
  sql("CREATE TRIGGER locked BEFORE UPDATE ON 日志表 BEGIN SELECT RAISE(ABORT, 'locked'); END");
  EXPECT_THROW(driver.resetRizhiBiaoji(period), StoreError);
  EXPECT_EQ(ports.status, QString(31, u'x'));
}

TEST_F(Pipeline, AStopAtTheLastRowOfTheStartEndsTheRunAllTheSame) {
  addRows(u"01 02 03 04 05\n02 03 04 05 06"_s);
  sql("UPDATE 日志表 SET 过滤标记 = 9");
  stopAtYield(2);
  EXPECT_FALSE(driver.resetRizhiBiaoji(period));
  EXPECT_EQ(marks(), (QStringList{u"0"_s, u"0"_s}));
  EXPECT_EQ(ports.status, u"\r\n\r\n正读取数据[１１０３１５１０期]．．．"_s);
}

}  // namespace elevenfive
