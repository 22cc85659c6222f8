#include "engine/drawcheck.h"

#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class DrawCheckTest : public EngineTest {
 protected:
  DrawCheckTest() { workspace.addDraws(u"11031510 01 03 05 07 09"_s); }

  QStringList hits() { return workspace.rows("SELECT 买中个数 FROM 日志表 ORDER BY ID"); }
};

TEST_F(DrawCheckTest, WritesTheHitsOfEveryRow) {
  addRows(u"01 03 05 07 09\n01 03 05 07 10\n01 03 05 08 10\n01 03 06 08 10\n01 04 06 08 10\n02 04 06 08 10"_s);
  EXPECT_TRUE(checkKaijiang(run(), period));
  EXPECT_EQ(hits(), (QStringList{u"5"_s, u"4"_s, u"3"_s, u"2"_s, u"1"_s, u"0"_s}));
}

TEST_F(DrawCheckTest, TellsHowManyRowsHitFiveAndFour) {
  addRows(u"01 03 05 07 09\n01 03 05 07 10\n01 03 05 07 11\n02 04 06 08 10"_s);
  ports.status = u"旧"_s;
  checkKaijiang(run(), period);
  EXPECT_EQ(ports.status, u"旧\r\n\r\n开奖核对结果如下——\r\n\r\n中五个号： １ 注\r\n\r\n中四个号： ２ 注"_s);
  EXPECT_EQ(ports.caretMoves, 1);
}

TEST_F(DrawCheckTest, RefreshesTheGridAndHandsItTheDraw) {
  addRows(u"01 03 05 07 09"_s);
  checkKaijiang(run(), period);
  EXPECT_EQ(view.gridShown, 1);
  EXPECT_EQ(view.drawn, (Draw{1, 3, 5, 7, 9}));
}

TEST_F(DrawCheckTest, LeavesTheMarksAndCanBeRepeated) {
  addRows(u"01 03 05 07 09"_s);
  sql("UPDATE 日志表 SET 过滤标记 = 7, 缩水标记 = 3, 临时数据 = 999");
  checkKaijiang(run(), period);
  EXPECT_TRUE(checkKaijiang(run(), period));
  EXPECT_EQ(workspace.rows("SELECT 买中个数, 过滤标记, 缩水标记, 临时数据 FROM 日志表"), (QStringList{u"5 7 3 999"_s}));
}

TEST_F(DrawCheckTest, TheOrderOfTheNumbersInARowDoesNotMatter) {
  addRows(u"09 07 05 03 01"_s);
  checkKaijiang(run(), period);
  EXPECT_EQ(hits(), QStringList{u"5"_s});
}

TEST_F(DrawCheckTest, ADrawnNumberThatARowRepeatsHitsEachTime) {
  addRows(u"01 01 03 05 07\n01 01 01 02 04"_s);
  EXPECT_TRUE(checkKaijiang(run(), period));
  EXPECT_EQ(hits(), (QStringList{u"5"_s, u"3"_s}));
  EXPECT_TRUE(ports.status.contains(u"中五个号： １ 注"_s));
}

TEST_F(DrawCheckTest, ANumberAboveElevenIsNoHit) {
  addRows(u"01 03 05 07 99"_s);
  EXPECT_TRUE(checkKaijiang(run(), period));
  EXPECT_EQ(hits(), QStringList{u"4"_s});
}

TEST_F(DrawCheckTest, AZeroThatALenientImportLeftInTheDrawIsNoHit) {
  sql("UPDATE 历史记录 SET 号码5 = 0 WHERE 期号 = 11031510");
  addRows(u"00 01 03 05 07"_s);
  EXPECT_TRUE(checkKaijiang(run(), period));
  EXPECT_EQ(hits(), QStringList{u"4"_s});
}

TEST_F(DrawCheckTest, WithoutADrawOfThePeriodNothingIsWritten) {
  addRows(u"01 03 05 07 09"_s);
  sql("DELETE FROM 历史记录 WHERE 期号 = 11031510");
  EXPECT_FALSE(checkKaijiang(run(), period));
  EXPECT_EQ(hits(), QStringList{u"-"_s});
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].title, u"出错啦!"_s);
  EXPECT_EQ(ports.boxes[0].text, u"第11031510期的日志记录或历史记录不完整！\r\n无法核对哦^_^！！"_s);
  EXPECT_EQ(ports.status, QString());
}

TEST_F(DrawCheckTest, WithoutRowsOfThePeriodTheSameMessageComes) {
  EXPECT_FALSE(checkKaijiang(run(), period));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"第11031510期的日志记录或历史记录不完整！\r\n无法核对哦^_^！！"_s});
}

TEST_F(DrawCheckTest, PeriodZeroAsksToPickFirst) {
  EXPECT_FALSE(checkKaijiang(run(), 0));
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].title, u"出错啦!"_s);
  EXPECT_EQ(ports.boxes[0].text, u"没有要核对的号码！请先选号！"_s);
}

TEST_F(DrawCheckTest, TheButtonAsksThePeriodAndTellsWhereToLook) {
  addRows(u"01 03 05 07 09"_s);
  view.current = period;
  driver.cmmTouZhu_Click(6);
  ASSERT_EQ(ports.inputs.size(), 1U);
  EXPECT_EQ(ports.inputs[0].prompt, u"您要核对哪期的数据?"_s);
  EXPECT_EQ(ports.inputs[0].defaultText, u"11031510"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"开奖核对完成,结果请查看右边的操作提示！"_s});
}

TEST_F(DrawCheckTest, ACancelledButtonDoesNothing) {
  addRows(u"01 03 05 07 09"_s);
  ports.typed = {QString()};
  driver.cmmTouZhu_Click(6);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(hits(), QStringList{u"-"_s});
}

TEST_F(DrawCheckTest, AWordReadsAsPeriodZero) {
  ports.typed = {u"abc"_s};
  driver.cmmTouZhu_Click(6);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"没有要核对的号码！请先选号！"_s});
}

}  // namespace elevenfive
