#include "engine/analysis.h"

#include "model/errors.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

/// With the one earlier draw in the tenth place, a row's score is told by its sum alone: 23 to 35 is best, then 36 to 38, 21 to
/// 22, above 38, 15 to 20.
class AnalysisTest : public EngineTest {
 protected:
  void addFiveSums() { addRows(u"07 08 09 10 11\n01 02 03 04 05\n01 02 03 04 11\n04 05 07 09 11\n01 02 03 06 11"_s); }
};

TEST_F(AnalysisTest, TheLowestScoresStay) {
  addFiveSums();
  analyseHaoma(run(), period, 1);
  EXPECT_EQ(survivors(), (QStringList{u"5: 01 02 03 06 11"_s}));
}

TEST_F(AnalysisTest, AsManyRowsStayAsWereAskedFor) {
  addFiveSums();
  analyseHaoma(run(), period, 3);
  EXPECT_EQ(survivors(), (QStringList{u"3: 01 02 03 04 11"_s, u"4: 04 05 07 09 11"_s, u"5: 01 02 03 06 11"_s}));
  EXPECT_EQ(workspace.rows("SELECT 临时数据 FROM 日志表"), (QStringList{u"999"_s, u"999"_s, u"999"_s}));
}

TEST_F(AnalysisTest, ACountOfAllRowsAndAboveKeepsEveryRow) {
  addFiveSums();
  analyseHaoma(run(), period, 5);
  EXPECT_EQ(survivors().size(), 5);
  analyseHaoma(run(), period, 999999999);
  EXPECT_EQ(survivors().size(), 5);
}

TEST_F(AnalysisTest, FiveOfAllCombinationsStay) {
  addAllRows();
  analyseHaoma(run(), period, 5);
  EXPECT_EQ(survivors().size(), 5);
}

TEST_F(AnalysisTest, OfEqualScoresTheSmallerXuhaoStays) {
  addRows(u"01 02 03 07 11\n01 02 03 08 11"_s);
  sql("UPDATE 日志表 SET 序号 = 3 - 序号");
  analyseHaoma(run(), period, 1);
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 08 11"_s}));
}

TEST_F(AnalysisTest, OfEqualScoresAndXuhaoTheSmallerIdStays) {
  addRows(u"01 02 03 07 11\n01 02 03 08 11"_s);
  sql("UPDATE 日志表 SET 序号 = 1");
  analyseHaoma(run(), period, 1);
  EXPECT_EQ(numbers(), (QStringList{u"01 02 03 07 11"_s}));
}

TEST_F(AnalysisTest, TheSumOfTheTenthDrawCountsAgainstARow) {
  sql("UPDATE 历史记录 SET 和值 = 30");
  addRows(u"02 04 06 08 10\n04 05 07 09 11"_s);  // 30: -13 + 10; 36: -8
  analyseHaoma(run(), period, 1);
  EXPECT_EQ(numbers(), (QStringList{u"04 05 07 09 11"_s}));
}

TEST_F(AnalysisTest, RowsOfOtherPeriodsStay) {
  addFiveSums();
  sql("INSERT INTO 日志表 (序号, 期号, 号码1, 号码2, 号码3, 号码4, 号码5) VALUES (1, 11031599, 1, 2, 3, 4, 5)");
  analyseHaoma(run(), period, 1);
  EXPECT_EQ(workspace.rows("SELECT 期号 FROM 日志表 ORDER BY 期号"), (QStringList{u"11031510"_s, u"11031599"_s}));
}

TEST_F(AnalysisTest, TellsItsStartAndItsEndInTheStatusText) {
  addFiveSums();
  ports.status = u"旧"_s;
  QString running;
  ports.onYield = [&](int) { running = ports.status; };
  analyseHaoma(run(), period, 2);
  EXPECT_EQ(running, u"旧\r\n\r\n[ 号码分析 ]分析正在进行中．．．"_s);
  EXPECT_EQ(ports.status, u"旧\r\n\r\n[ 号码分析 ] 完 成 "_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"精选号码完成！"_s});
  EXPECT_EQ(view.gridShown, 1);
}

TEST_F(AnalysisTest, ShowsProgressYieldsAfterEachRowAndFreesTheControls) {
  addFiveSums();
  analyseHaoma(run(), period, 2);
  EXPECT_EQ(ports.log,
            (QStringList{u"disable Pic_subTouZhu"_s, u"progress 0..5"_s, u"enable cmm_stop"_s, u"progress hidden"_s,
                         u"disable cmm_stop"_s, u"enable Pic_subTouZhu"_s, u"plain [] 精选号码完成！"_s}));
  EXPECT_EQ(ports.yields, 5);
  EXPECT_EQ(ports.value, 5);
}

TEST_F(AnalysisTest, WithoutRowsOnlyTheMessageComes) {
  analyseHaoma(run(), period, 5);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"表中无第１１０３１５１０ 期的数据！"_s});
  EXPECT_EQ(ports.status, QString());
  EXPECT_EQ(view.gridShown, 0);
}

TEST_F(AnalysisTest, AStopStillChoosesAndDeletesAndKeepsTheRunningLine) {
  addFiveSums();
  stopAtYield(2);
  analyseHaoma(run(), period, 2);
  // The two rows scored hold 234 and 235; the others still hold 0 and come first.
  EXPECT_EQ(survivors(), (QStringList{u"3: 01 02 03 04 11"_s, u"4: 04 05 07 09 11"_s}));
  EXPECT_EQ(ports.status, u"\r\n\r\n[ 号码分析 ]分析正在进行中．．．"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"精选号码完成！"_s});
  EXPECT_FALSE(driver.state().userStop);
}

TEST_F(AnalysisTest, AStopStraightAfterAnExpansionLeavesMoreRowsThanWereAskedFor) {
  addFiveSums();
  sql("UPDATE 日志表 SET 临时数据 = NULL");  // as an expansion or an import leaves them
  stopAtYield(2);
  analyseHaoma(run(), period, 2);
  // Rows without a score come first, so two of them are chosen; the third has none to be deleted for.
  EXPECT_EQ(survivors(), (QStringList{u"3: 01 02 03 04 11"_s, u"4: 04 05 07 09 11"_s, u"5: 01 02 03 06 11"_s}));
  EXPECT_EQ(workspace.rows("SELECT 临时数据 FROM 日志表 ORDER BY 序号"), (QStringList{u"999"_s, u"999"_s, u"-"_s}));
}

TEST_F(AnalysisTest, RowsThatWereChosenBeforeAreScoredAnew) {
  addFiveSums();
  analyseHaoma(run(), period, 3);
  EXPECT_EQ(workspace.rows("SELECT DISTINCT 临时数据 FROM 日志表"), QStringList{u"999"_s});
  analyseHaoma(run(), period, 1);
  EXPECT_EQ(survivors(), QStringList{u"5: 01 02 03 06 11"_s});
}

TEST_F(AnalysisTest, AStopOverRowsThatWereChosenBeforeKeepsThoseNotReached) {
  addFiveSums();
  sql("UPDATE 日志表 SET 临时数据 = 999");
  stopAtYield(2);
  analyseHaoma(run(), period, 1);
  // Of the two scored, 234 and 235, the lower is chosen; the three others still hold 999.
  EXPECT_EQ(survivors(), (QStringList{u"1: 07 08 09 10 11"_s, u"3: 01 02 03 04 11"_s, u"4: 04 05 07 09 11"_s,
                                      u"5: 01 02 03 06 11"_s}));
}

TEST_F(AnalysisTest, TheRunBehindItSetsTheScoresBackAndWorksOnWhatIsLeft) {
  addFiveSums();
  analyseHaoma(run(), period, 2);
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(workspace.rows("SELECT 临时数据 FROM 日志表"), (QStringList{u"0"_s, u"0"_s}));
}

TEST_F(AnalysisTest, WithNoDrawAtAllItStillScores) {
  sql("DELETE FROM 历史记录");
  addFiveSums();
  analyseHaoma(run(), period, 1);
  EXPECT_EQ(numbers(), (QStringList{u"01 02 03 06 11"_s}));
}

TEST_F(AnalysisTest, AFaultLeavesTheRowsAndFreesThePanel) {
  addFiveSums();
  sql("CREATE TRIGGER refuse BEFORE DELETE ON 日志表 BEGIN SELECT RAISE(ABORT, 'full'); END");
  ports.status = u"此前"_s;
  EXPECT_THROW(analyseHaoma(run(), period, 1), StoreError);
  EXPECT_EQ(ports.status, u"此前"_s);
  EXPECT_EQ(workspace.rows("SELECT SUM(临时数据), COUNT(*) FROM 日志表"), (QStringList{u"0 5"_s}));
  EXPECT_TRUE(ports.enabled[ControlId::Pic_subTouZhu]);
  EXPECT_FALSE(ports.enabled[ControlId::cmm_stop]);
}

TEST_F(AnalysisTest, TheButtonAsksThePeriodAndTheCount) {
  addFiveSums();
  ports.typed = {u"11031510"_s, u"2"_s};
  driver.cmmTouZhu_Click(2);
  ASSERT_EQ(ports.inputs.size(), 2U);
  EXPECT_EQ(ports.inputs[0].prompt, u"要精选哪期的号码 ？"_s);
  EXPECT_EQ(ports.inputs[0].defaultText, u"11031510"_s);
  EXPECT_EQ(ports.inputs[1].prompt, u"要精选出多少注 ？"_s);
  EXPECT_EQ(ports.inputs[1].defaultText, u"5"_s);
  EXPECT_EQ(survivors().size(), 2);
}

TEST_F(AnalysisTest, TheButtonOffersThePeriodOfTheGridsRow) {
  view.current = 11031499;
  driver.cmmTouZhu_Click(2);
  EXPECT_EQ(ports.inputs[0].defaultText, u"11031499"_s);
}

TEST_F(AnalysisTest, ACancelledPeriodIsThePeriodZero) {
  addFiveSums();
  ports.typed = {QString(), u"5"_s};
  driver.cmmTouZhu_Click(2);
  EXPECT_EQ(ports.inputs.size(), 2U);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"表中无第０ 期的数据！"_s});
  EXPECT_EQ(survivors().size(), 5);
}

TEST_F(AnalysisTest, ACountOfZeroDoesNothing) {
  addFiveSums();
  for (const QString& count : {u"0"_s, u"五"_s, QString()}) {
    ports.typed = {u"11031510"_s, count};
    driver.cmmTouZhu_Click(2);
  }
  EXPECT_EQ(survivors().size(), 5);
  EXPECT_TRUE(ports.boxes.empty());
}

class YouhuaTest : public EngineTest {
 protected:
  QStringList scores() { return workspace.rows("SELECT 临时数据 FROM 日志表 ORDER BY ID"); }
};

TEST_F(YouhuaTest, RunsOnlyWithItsSwitchAndATypeThatReduces) {
  addRows(u"01 02 03 04 05"_s);
  EXPECT_EQ(zhinengYouhua(run(), period, 3), 0);
  use(45);
  EXPECT_EQ(zhinengYouhua(run(), period, 5), 0);
  EXPECT_EQ(ports.status, QString());
  EXPECT_EQ(zhinengYouhua(run(), period, 4), 1);
}

TEST_F(YouhuaTest, SetsTheBetterSixtyPercentBackToZero) {
  use(45);
  // The draw in the tenth place, 02 04 06 08 10, meets the zeros of the newest place in the reference: 9 blocks of zeros less a
  // row's numbers never agree; the tenth block, number less number against number less zero, never either; pairs are never 0.
  // So each row scores 1 for the slot beyond and 50 for its units digits; the row with the draw's own 20 units gets 50 more.
  sql("UPDATE 历史记录 SET 尾数和值 = 20, 遗漏值总和 = 33");
  addRows(u"02 04 06 08 10\n01 02 03 04 05\n01 02 03 04 06\n01 02 03 04 07"_s);  // units 20, 15, 16, 17
  EXPECT_EQ(zhinengYouhua(run(), period, 3), 4);
  // 60 percent of four rows are three: those of 51; the one of 101 keeps its score.
  EXPECT_EQ(scores(), (QStringList{u"101"_s, u"0"_s, u"0"_s, u"0"_s}));
  EXPECT_EQ(survivors().size(), 4);
}

TEST_F(YouhuaTest, PassesOverRowsThatAreMarkedForDeletion) {
  use(45);
  addRows(u"01 02 03 04 05\n01 02 03 04 06"_s);
  sql("UPDATE 日志表 SET 过滤标记 = -1, 临时数据 = 300 WHERE 序号 = 2");
  EXPECT_EQ(zhinengYouhua(run(), period, 3), 1);
}

TEST_F(YouhuaTest, TellsItsStartAndItsEnd) {
  use(45);
  addRows(u"01 02 03 04 05"_s);
  QString running;
  ports.onYield = [&](int) { running = ports.status; };
  zhinengYouhua(run(), period, 3);
  EXPECT_EQ(running, u"\r\n\r\n[ 智能优化 ]优化正在进行中．．．"_s);
  EXPECT_EQ(ports.status, u"\r\n\r\n[ 智能优化 ] 完 成 "_s);
}

}  // namespace elevenfive
