#include "conditions/picking.h"

#include "model/errors.h"
#include "tests/conditions/pickingfixture.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int tuo = 1;
constexpr int dan = 2;

using Picking = PickingTest;

TEST_F(Picking, ClickStoresTheModeAndPaintsTheButton) {
  picking.clickNumber(3, tuo);
  picking.clickNumber(4, dan);
  EXPECT_EQ(pick(3), 1);
  EXPECT_EQ(pick(4), 2);
  EXPECT_EQ(view.painted, (std::map<int, int>{{3, 1}, {4, 2}}));
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(Picking, SecondClickWithTheSameModeTakesThePickBack) {
  for (const int mode : {tuo, dan}) {
    picking.clickNumber(3, mode);
    picking.clickNumber(3, mode);
    EXPECT_EQ(pick(3), 0);
    EXPECT_EQ(view.painted[3], 0);
  }
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(Picking, ChangeToBankerIsAsked) {
  setPick(7, tuo);
  ports.answers = {Answer::yes};
  picking.clickNumber(7, dan);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::question);
  EXPECT_EQ(ports.boxes[0].buttons, BoxButtons::yesNo);
  EXPECT_EQ(ports.boxes[0].text, u"号码：07之前已经被设为拖码，现在要把它改为胆码吗？"_s);
  EXPECT_EQ(pick(7), 2);
  EXPECT_EQ(view.painted[7], 2);
}

TEST_F(Picking, ChangeToDragIsAsked) {
  setPick(11, dan);
  ports.answers = {Answer::yes};
  picking.clickNumber(11, tuo);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"号码：11之前已经被设为胆码，现在要把它改为拖码吗？"_s});
  EXPECT_EQ(pick(11), 1);
}

TEST_F(Picking, NoOnTheChangeQuestionLeavesNumberAndColour) {
  setPick(7, tuo);
  ports.answers = {Answer::no};
  picking.clickNumber(7, dan);
  EXPECT_EQ(pick(7), 1);
  EXPECT_EQ(view.painted[7], 1);
}

TEST_F(Picking, FifthBankerIsRefused) {
  for (const int n : {1, 2, 3, 4})
    picking.clickNumber(n, dan);
  EXPECT_TRUE(ports.boxes.empty());
  picking.clickNumber(5, dan);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::information);
  EXPECT_EQ(ports.boxes[0].text, u"“胆码”最多只设 ４ 个."_s);
  EXPECT_EQ(pick(5), 0);
  EXPECT_EQ(view.painted[5], 0);
  EXPECT_EQ(pick(4), 2);
}

TEST_F(Picking, RefusedBankerThatWasADragIsADragAgain) {
  for (const int n : {1, 2, 3, 4})
    setPick(n, dan);
  setPick(5, tuo);
  ports.answers = {Answer::yes};
  picking.clickNumber(5, dan);
  EXPECT_EQ(ports.boxTexts(),
            (QStringList{u"号码：05之前已经被设为拖码，现在要把它改为胆码吗？"_s, u"“胆码”最多只设 ４ 个."_s}));
  EXPECT_EQ(pick(5), 1);
  EXPECT_EQ(view.painted[5], 1);
}

TEST_F(Picking, RefusedBankerIsNotCounted) {
  for (const int n : {1, 2, 3, 4})
    setPick(n, dan);
  setPick(6, tuo);
  picking.clickNumber(5, dan);
  EXPECT_TRUE(runView.tip.contains(u"已选“胆码”个数： ４"_s)) << runView.tip.toStdString();
  EXPECT_EQ(driver.state().zuheTotal, 1);
}

TEST_F(Picking, CountsFollowEachClick) {
  for (const int n : {1, 2, 3, 4})
    picking.clickNumber(n, dan);
  EXPECT_EQ(driver.state().zuheTotal, 0);
  picking.clickNumber(5, tuo);
  EXPECT_EQ(driver.state().zuheTotal, 1);
  EXPECT_TRUE(runView.tip.endsWith(u"过滤缩水前全部号码组合： １  注"_s)) << runView.tip.toStdString();
}

TEST_F(Picking, SecondFieldHoldsOneBanker) {
  picking.clickNumber(101, dan);
  picking.clickNumber(111, dan);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"后区“胆码”最多只设 １ 个."_s});
  EXPECT_EQ(pick(101), 2);
  EXPECT_EQ(pick(111), 0);
  EXPECT_EQ(view.painted, (std::map<int, int>{{101, 2}, {111, 0}}));
}

TEST_F(Picking, BankersOfOneFieldDoNotCountInTheOther) {
  for (const int n : {1, 2, 3, 4})
    picking.clickNumber(n, dan);
  picking.clickNumber(103, dan);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(pick(103), 2);
}

TEST_F(Picking, ChangeQuestionOfTheSecondFieldNamesTheNumber) {
  setPick(105, dan);
  ports.answers = {Answer::no};
  picking.clickNumber(105, tuo);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"号码：05之前已经被设为胆码，现在要把它改为拖码吗？"_s});
}

TEST_F(Picking, NumberOfLowChanceIsAskedFirst) {
  view.marks[9] = true;
  view.period = u"11041510"_s;
  ports.answers = {Answer::no, Answer::yes};
  picking.clickNumber(9, tuo);
  EXPECT_EQ(ports.boxTexts(),
            QStringList{u"根据概率统计,号码 ０９ 在１１０４１５１０期中开出的机率很低！确实想要选取这个号码吗？\r\n\r\n"
                        u"[注意,此概率算法以历史开奖记录为依据来分析,请确保历史记录的完整及正确！]"_s});
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::question);
  EXPECT_EQ(pick(9), 0);
  EXPECT_TRUE(view.painted.empty());
  picking.clickNumber(9, tuo);
  EXPECT_EQ(pick(9), 1);
}

TEST_F(Picking, PickedNumberIsTakenBackWithoutTheLowChanceQuestion) {
  view.marks[9] = true;
  setPick(9, tuo);
  picking.clickNumber(9, tuo);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(pick(9), 0);
}

TEST_F(Picking, MissingRowEndsTheClick) {
  workspace.store().execute("test", "DELETE FROM 过滤条件 WHERE ID = 6");
  EXPECT_THROW(picking.clickNumber(6, tuo), MissingData);
  EXPECT_THROW(picking.clickNumber(12, tuo), MissingData);
  EXPECT_THROW(picking.clickNumber(0, tuo), MissingData);
  EXPECT_THROW(picking.clickNumber(112, tuo), MissingData);
}

TEST_F(Picking, SelectAllMakesElevenDrags) {
  setPick(3, dan);
  picking.selectAllTuo();
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM 过滤条件 WHERE VALUE = 1 AND ID < 200"), QStringList{u"11"_s});
  EXPECT_EQ(pick(12), 0);
  EXPECT_EQ(view.painted.size(), 11U);
  EXPECT_EQ(view.painted[11], 1);
  EXPECT_EQ(driver.state().zuheTotal, 462);
}

TEST_F(Picking, ClearFrontAlsoClearsTheRowsWithoutButtons) {
  for (const int n : {1, 12, 39, 40, 101})
    setPick(n, tuo);
  picking.clearFront();
  EXPECT_EQ(workspace.rows("SELECT ID FROM 过滤条件 WHERE VALUE = 1 AND ID < 200 ORDER BY ID"),
            (QStringList{u"40"_s, u"101"_s}));
  EXPECT_EQ(view.painted.size(), 11U);
  EXPECT_EQ(view.painted[1], 0);
}

TEST_F(Picking, ClearBackClearsTheSecondField) {
  for (const int n : {1, 101, 116})
    setPick(n, tuo);
  picking.clearBack();
  EXPECT_EQ(workspace.rows("SELECT ID FROM 过滤条件 WHERE VALUE = 1 AND ID < 200"), QStringList{u"1"_s});
  EXPECT_EQ(view.painted.size(), 11U);
  EXPECT_EQ(view.painted[111], 0);
}

TEST_F(Picking, ButtonsArePaintedFromTheirRows) {
  setPick(2, tuo);
  setPick(11, dan);
  setPick(102, tuo);
  picking.paintPickButtons();
  EXPECT_EQ(view.painted.size(), 22U);
  EXPECT_EQ(view.painted[1], 0);
  EXPECT_EQ(view.painted[2], 1);
  EXPECT_EQ(view.painted[11], 2);
  EXPECT_EQ(view.painted[102], 1);
  EXPECT_EQ(view.painted[111], 0);
}

TEST_F(Picking, PicksAreCountedByFieldAndValue) {
  for (const int n : {1, 2, 3, 39})
    setPick(n, tuo);
  setPick(4, dan);
  setPick(101, dan);
  setPick(102, tuo);
  setPick(103, tuo);
  setPick(40, tuo);
  const auto counts = picking.countPicks();
  EXPECT_EQ(counts.frontTuo, 4);
  EXPECT_EQ(counts.frontDan, 1);
  EXPECT_EQ(counts.backTuo, 2);
  EXPECT_EQ(counts.backDan, 1);
}

TEST_F(Picking, TabsOfTheModeTellWhatAClickDoes) {
  picking.announceMode(tuo, false);
  picking.announceMode(dan, false);
  picking.announceMode(tuo, true);
  picking.announceMode(dan, true);
  EXPECT_EQ(ports.boxTexts(), (QStringList{
                                  u"现在点击数字按钮可以把相应的数设为“拖码”。"_s,
                                  u"现在点击数字按钮可以把相应的数设为“胆码”。"_s,
                                  u"现在点击数字按钮可以把相应的数设为后区的“拖码”。"_s,
                                  u"现在点击数字按钮可以把相应的数设为后区的“胆码”。"_s,
                              }));
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::plain);
}

TEST(PickColours, AreFaceGreenRed) {
  EXPECT_EQ(pickColors[0], 0x8000000FU);
  EXPECT_EQ(pickColors[1], 0x00C000U);
  EXPECT_EQ(pickColors[2], 0x0000C0U);
}

}  // namespace

}  // namespace elevenfive
