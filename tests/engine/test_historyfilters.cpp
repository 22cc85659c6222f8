#include "engine/historyfilters.h"

#include "engine/pipeline.h"
#include "engine/valuefilters.h"
#include "model/errors.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class HistoryFilters : public EngineTest {
 protected:
  /// What stands in the history, in the place of the fixture's one draw.
  void setHistory(const QString& lines) {
    sql("DELETE FROM 历史记录");
    workspace.addDraws(lines);
  }

  /// Rows left when only this figure is allowed.
  QStringList left(int (*filter)(const RunContext&, Qihao), int code, int firstId, int lastId, int figure,
                   const QString& rows) {
    sql("DELETE FROM 日志表");
    addRows(rows);
    use(code);
    driver.fillTiaojianValues(firstId, lastId, 0);
    setValue(firstId + figure, 1);
    filter(run(), period);
    return numbers();
  }
};

TEST_F(HistoryFilters, OverlapCountsNumbersOfTheDrawBefore) {
  const QString rows = u"01 03 05 07 09\n02 04 06 08 10\n01 02 03 04 05"_s;
  EXPECT_EQ(left(filter_Chongdie, 7, 3470, 3480, 0, rows), QStringList{u"01 03 05 07 09"_s});
  EXPECT_EQ(left(filter_Chongdie, 7, 3470, 3480, 5, rows), QStringList{u"02 04 06 08 10"_s});
  EXPECT_EQ(left(filter_Chongdie, 7, 3470, 3480, 2, rows), QStringList{u"01 02 03 04 05"_s});
}

TEST_F(HistoryFilters, TheDrawBeforeItselfIsRefusedByZeroToFour) {
  use(7);
  allow(3470, 3474);
  addRows(u"02 04 06 08 10"_s);
  EXPECT_EQ(filter_Chongdie(run(), period), 0);
  EXPECT_TRUE(survivors().isEmpty());
}

TEST_F(HistoryFilters, DiagonalsCountNeighboursOnceAndNotTheNumberItself) {
  // Every odd number stands beside an even one of the draw before; 11 beside 10; even ones are no neighbours of themselves.
  EXPECT_EQ(left(filter_Xiewei, 8, 3490, 3500, 5, u"01 03 05 07 09"_s).size(), 1);
  EXPECT_EQ(left(filter_Xiewei, 8, 3490, 3500, 0, u"02 04 06 08 10"_s).size(), 1);
  EXPECT_EQ(left(filter_Xiewei, 8, 3490, 3500, 2, u"01 02 04 06 11"_s).size(), 1);
}

TEST_F(HistoryFilters, TheReferenceIsTheDrawBeforeTheTargetNotTheNewest) {
  setHistory(u"11031508 01 02 03 04 05\n11031509 02 04 06 08 10\n11031511 07 08 09 10 11"_s);
  EXPECT_EQ(left(filter_Chongdie, 7, 3470, 3480, 5, u"02 04 06 08 10"_s).size(), 1);
  EXPECT_EQ(left(filter_Chongdie, 7, 3470, 3480, 5, u"07 08 09 10 11"_s).size(), 0);
}

TEST_F(HistoryFilters, TemperatureSumsTheHitsOfTheFiveNumbers) {
  // 01 came 3 times in the last five draws, 02 twice, 11 once; the sixth draw back does not count.
  setHistory(
      u"11031501 01 02 03 04 05\n11031502 01 06 07 08 09\n11031503 01 02 06 07 08\n11031504 01 02 08 09 10\n"
      "11031505 04 05 06 07 11\n11031506 03 04 05 06 10"_s);
  // 01: 3, 02: 2, 11: 1, 10: 2, 09: 2.
  EXPECT_EQ(left(filter_Wendu5, 46, 4160, 4179, 10, u"01 02 09 10 11"_s).size(), 1);
  EXPECT_EQ(left(filter_Wendu10, 47, 4180, 4209, 12, u"01 02 09 10 11"_s).size(), 1);
}

TEST_F(HistoryFilters, ThreeDrawsAreEnoughForATemperature) {
  setHistory(u"11031501 01 02 03 04 05\n11031502 01 02 03 04 06\n11031503 01 02 03 04 07"_s);
  EXPECT_EQ(left(filter_Wendu5, 46, 4160, 4179, 12, u"01 02 03 04 08"_s).size(), 1);
}

TEST_F(HistoryFilters, WithoutAnEarlierDrawTemperaturesAreZero) {
  setHistory(u"11031510 01 02 03 04 05"_s);
  EXPECT_EQ(left(filter_Wendu5, 46, 4160, 4179, 0, u"01 02 03 04 05"_s).size(), 1);
  EXPECT_EQ(left(filter_Wendu10, 47, 4180, 4209, 0, u"01 02 03 04 05"_s).size(), 1);
}

TEST_F(HistoryFilters, TemperatureBeyondItsStretchReadsWhatAnEarlierLoadLeft) {
  QString draws;
  for (int i = 1; i <= 5; ++i)
    draws += u"1103150%1 01 02 03 04 05\n"_s.arg(i);
  setHistory(draws);
  use(46);
  addRows(u"01 02 03 04 05"_s);  // 25 degrees, six beyond the last row of the stretch
  allow(1025, 1025);
  driver.loadTiaojianValues(1000, 1170);
  EXPECT_EQ(filter_Wendu5(run(), period), 1);
  setValue(1025, 0);
  driver.loadTiaojianValues(1000, 1170);
  EXPECT_EQ(filter_Wendu5(run(), period), 0);
}

TEST_F(HistoryFilters, ThePassOfTheSumDecidesAHotRowAsAsPartOfARun) {
  QString draws;
  for (int i = 1; i <= 5; ++i)
    draws += u"1103150%1 01 02 03 04 05\n"_s.arg(i);
  setHistory(draws);
  use(1);
  allow(1015, 1015);  // the row's own sum; slot 25 stays 0
  use(46);
  allow(4160, 4179);
  addRows(u"01 02 03 04 05"_s);
  driver.runGuolvSuoshui(period);
  EXPECT_TRUE(survivors().isEmpty());
}

TEST_F(HistoryFilters, EachStageWarnsOnceInItsWords) {
  addRows(u"01 02 03 04 05"_s);
  for (const int code : {7, 8, 46, 47})
    use(code);
  allow(3470, 3500);
  allow(4160, 4209);
  driver.runGuolvSuoshui(period);
  QStringList expected;
  for (const QString& name : {u"温度值5"_s, u"温度值10"_s, u"重叠号"_s, u"斜位码"_s})
    expected << u"注意，本次过滤使用了[%1]这个过滤条件,[%1]的设置与历史开奖记录相关！\r\n\r\n"
                "在不同的期号中由于对应的历史记录不同,有可能得出不同的结果。这是正常情况。\r\n\r\n[下次不再提示！]"_s
                    .arg(name);
  EXPECT_EQ(ports.boxTexts(), expected);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::plain);
  EXPECT_EQ(ports.boxes[0].buttons, BoxButtons::ok);
  use(7, 0);
  driver.runGuolvSuoshui(period);
  use(7, 1);
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(ports.boxes.size(), 4U);
}

TEST_F(HistoryFilters, WithoutRowsOnlyTheTemperaturesWarn) {
  for (const int code : {7, 8, 46, 47})
    use(code);
  filter_Chongdie(run(), period);
  filter_Xiewei(run(), period);
  EXPECT_TRUE(ports.boxes.empty());
  filter_Wendu5(run(), period);
  filter_Wendu10(run(), period);
  EXPECT_EQ(ports.boxes.size(), 2U);
  EXPECT_EQ(ports.status, QString());
}

TEST_F(HistoryFilters, StagesThatAreNotInUseDoNotWarn) {
  addRows(u"01 02 03 04 05"_s);
  driver.runGuolvSuoshui(period);
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(HistoryFilters, NoDrawBeforeEndsTheStageWithTheRowsAsBefore) {
  setHistory(u"11031510 01 02 03 04 05"_s);
  addRows(u"01 02 03 04 05\n02 03 04 05 06"_s);
  use(7);
  use(8);
  try {
    filter_Chongdie(run(), period);
    FAIL() << "no fault";
  } catch (const MissingData& fault) {
    EXPECT_EQ(fault.message(),
              u"历史记录中没有 11031510 期之前的开奖号码，无法使用条件[重叠号]。请先导入或下载开奖号码。"_s);
  }
  EXPECT_THROW(filter_Xiewei(run(), period), MissingData);
  EXPECT_EQ(survivors().size(), 2);
  EXPECT_EQ(marks(), (QStringList{u"0"_s, u"0"_s}));
  EXPECT_TRUE(ports.enabled[ControlId::Pic_subTouZhu]);
  EXPECT_FALSE(ports.enabled[ControlId::cmm_stop]);
  EXPECT_FALSE(ports.visible);
}

TEST_F(HistoryFilters, NoDrawBeforeAndNoRowsIsNoFault) {
  sql("DELETE FROM 历史记录");
  use(7);
  EXPECT_EQ(filter_Chongdie(run(), period), 0);
}

TEST_F(HistoryFilters, LabelsStandAsTheyAre) {
  use(7);
  use(8);
  use(46);
  use(47);
  allow(3470, 3500);
  allow(4160, 4209);
  addRows(u"01 02 03 04 05"_s);
  filter_Chongdie(run(), period);
  filter_Xiewei(run(), period);
  filter_Wendu5(run(), period);
  filter_Wendu10(run(), period);
  EXPECT_EQ(statusLines(), (QStringList{u"[重叠号]过滤后余：１ 注"_s, u"[斜位码]过滤后余：１ 注"_s,
                                        u"[温度值5]过滤后余：１ 注"_s, u"[温度值10]过滤后余：１ 注"_s}));
}

TEST_F(HistoryFilters, TheHottestRowOfTenDrawsReadsTheFiftiethSlotOfAnEarlierLoad) {
  QString draws;
  for (int i = 0; i < 10; ++i)
    draws += u"1103150%1 01 02 03 04 05\n"_s.arg(i);
  setHistory(draws);
  use(47);
  allow(4180, 4209);
  addRows(u"01 02 03 04 05"_s);  // ten hits of each number
  setValue(1050, 1);
  driver.loadTiaojianValues(1000, 1170);
  EXPECT_EQ(filter_Wendu10(run(), period), 1);
  setValue(1050, 0);
  driver.loadTiaojianValues(1000, 1170);
  EXPECT_EQ(filter_Wendu10(run(), period), 0);
  EXPECT_TRUE(survivors().isEmpty());
}

TEST_F(HistoryFilters, TheBarStandsBeforeTheOverlapWarns) {
  use(7);
  allow(3470, 3480);
  addRows(u"01 02 03 04 05"_s);
  filter_Chongdie(run(), period);
  ASSERT_GE(ports.log.size(), 4);
  EXPECT_EQ(ports.log[1], u"progress 0..1"_s);
  EXPECT_TRUE(ports.log[2].startsWith(u"plain [] 注意"_s));
  EXPECT_EQ(ports.log[3], u"enable cmm_stop"_s);
}

}  // namespace elevenfive
