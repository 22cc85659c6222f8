#include "engine/tolerance.h"

#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class Tolerance : public EngineTest {
 protected:
  void addRowsWithMarks(std::initializer_list<int> values) {
    QString lines;
    for (std::size_t i = 0; i < values.size(); ++i)
      lines += u"01 02 03 04 05\n"_s;
    addRows(lines);
    int id = 0;
    for (const int mark : values)
      workspace.store().execute("test", "UPDATE 日志表 SET 过滤标记 = ? WHERE ID = ?", mark, ++id);
  }
};

TEST_F(Tolerance, OfFiveConditionsOneMayFail) {
  for (const int code : {1, 2, 3, 4, 5})
    use(code);
  addRowsWithMarks({5, 4, 3, 0});
  EXPECT_EQ(applyRongcuo(run(), period, 1), 2);
  EXPECT_EQ(marks(), (QStringList{u"5"_s, u"4"_s}));
  EXPECT_EQ(ports.status, u"\r\n\r\n以上条件容错１后余：２ 注\r\n\r\n"_s);
}

TEST_F(Tolerance, WithoutConditionsNothingGoes) {
  addRowsWithMarks({0, 0});
  EXPECT_EQ(applyRongcuo(run(), period, 1), 2);
  EXPECT_EQ(marks().size(), 2);
}

TEST_F(Tolerance, AToleranceOfAllConditionsKeepsEveryRowAndIsTold) {
  use(1);
  addRowsWithMarks({1, 0});
  EXPECT_EQ(applyRongcuo(run(), period, 12), 2);
  EXPECT_EQ(ports.status, u"\r\n\r\n以上条件容错１２后余：２ 注\r\n\r\n"_s);
}

TEST_F(Tolerance, AfterAStopItDeletesInSilence) {
  for (const int code : {1, 2})
    use(code);
  addRowsWithMarks({2, 0});
  driver.cmm_stop_Click();
  EXPECT_EQ(applyRongcuo(run(), period, 1), 1);
  EXPECT_EQ(marks(), QStringList{u"2"_s});
  EXPECT_EQ(ports.status, QString());
}

TEST_F(Tolerance, ARunWithToleranceForgivesWhicheverConditionFails) {
  driver.state().rongcuoValue = 1;
  use(1);
  allow(1015, 1016);  // sums 15 and 16
  use(4);
  allow(3304, 3304);  // span 4
  addRows(u"01 02 03 04 05\n01 02 03 04 06\n07 08 09 10 11\n01 03 05 07 09"_s);
  driver.runGuolvSuoshui(period);
  // Both passed, only the sum, only the span; the last fails both and goes.
  EXPECT_EQ(numbers(), (QStringList{u"01 02 03 04 05"_s, u"01 02 03 04 06"_s, u"07 08 09 10 11"_s}));
  EXPECT_TRUE(statusLines().contains(u"[ 和 值 ]过滤后余：２ 注"_s));
  EXPECT_TRUE(statusLines().contains(u"[ 跨 度 ]过滤后余：２ 注"_s));
  EXPECT_TRUE(statusLines().contains(u"以上条件容错１后余：３ 注"_s));
  EXPECT_EQ(statusLines().last(), u"全部过滤缩水完成,余：３ 注"_s);
}

TEST_F(Tolerance, SurvivorsKeepTheXuhaoOfTheLastStageTheyPassed) {
  driver.state().rongcuoValue = 1;
  use(1);
  allow(1016, 1016);
  addRows(u"01 02 03 04 05\n01 02 03 04 06"_s);
  driver.runGuolvSuoshui(period);
  // The first failed and kept its 1, the second passed as the first of its stage.
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"1: 01 02 03 04 06"_s}));
}

TEST_F(Tolerance, ItRunsAfterAStopAndTakesTheRowsThatWereNotReached) {
  driver.state().rongcuoValue = 1;
  for (const int code : {1, 4}) {
    use(code);
  }
  allow(1000, 1170);
  allow(3300, 3340);
  addRows(u"01 02 03 04 05\n01 02 03 04 06\n01 02 03 04 07"_s);
  stopAtYield(3 + 2);  // three rows of the start, two of the first stage
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(numbers(), (QStringList{u"01 02 03 04 05"_s, u"01 02 03 04 06"_s}));
  EXPECT_EQ(statusLines().last(), u"用户中止,当前记录余：２ 注"_s);
  EXPECT_FALSE(ports.status.contains(u"容错"_s));
}

TEST_F(Tolerance, LinesGoUpAgainAndOnlyItsOwnTellsTheRowsLeft) {
  driver.state().rongcuoValue = 2;
  use(1);
  setValue(1015, 1);
  use(10);
  setValue(3643, 1);
  use(4);
  setValue(3305, 1);
  // The first has the sum and three odd numbers, the second the span, the third three odd numbers, the last nothing.
  addRows(u"01 02 03 04 05\n01 02 03 04 06\n07 08 09 10 11\n01 03 05 07 09"_s);
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(statusLines().mid(2), (QStringList{u"[ 和 值 ]过滤后余：１ 注"_s, u"[奇数个数]过滤后余：２ 注"_s,
                                               u"[ 跨 度 ]过滤后余：１ 注"_s, u"以上条件容错２后余：３ 注"_s,
                                               u"[保五型]缩水后余：３ 注"_s, u"全部过滤缩水完成,余：３ 注"_s}));
  EXPECT_FALSE(numbers().contains(u"01 03 05 07 09"_s));
}

TEST_F(Tolerance, AStopInTheFifthStageLeavesWhatHadPassedEnoughByThen) {
  driver.state().rongcuoValue = 1;
  for (const int code : {1, 3, 4})
    use(code);
  allow(1000, 1170);
  allow(3000, 3170);
  allow(3300, 3340);
  addRows(u"01 02 03 04 05\n01 02 03 04 06\n01 02 03 04 07"_s);
  stopAtYield(3 + 3 + 2);  // the start, the sum, two rows of the even sum
  driver.runGuolvSuoshui(period);
  // Two of the three conditions are needed: the third row had only the sum.
  EXPECT_EQ(numbers(), (QStringList{u"01 02 03 04 05"_s, u"01 02 03 04 06"_s}));
  EXPECT_EQ(statusLines().mid(2), (QStringList{u"[ 和 值 ]过滤后余：３ 注"_s, u"[偶数和值]过滤正在进行中．．．"_s,
                                               u"用户中止,当前记录余：２ 注"_s}));
}

}  // namespace elevenfive
