#include "conditions/parityexclusion.h"

#include <gtest/gtest.h>

#include "conditions/conditionpanel.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class Parity : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  ConditionPanel panel{workspace.store()};
  ParityPanel parity{workspace.store(), panel};
};

TEST_F(Parity, RowsBearTheirCaptionsAndFactoryPatterns) {
  const auto rows = parity.rows();
  EXPECT_EQ(rows[0].caption, u"排除掉上一期的单双组合形式："_s);
  EXPECT_EQ(rows[1].caption, u"排除掉1："_s);
  EXPECT_EQ(rows[5].caption, u"排除掉5："_s);
  EXPECT_TRUE(rows[0].checked);
  EXPECT_FALSE(rows[1].checked);
  EXPECT_EQ(parityPattern(workspace.store(), 1), u"单单单单单"_s);
  EXPECT_EQ(parityPattern(workspace.store(), 2), u"双单单单*"_s);
  EXPECT_EQ(parityPattern(workspace.store(), 5), u"双双双双双"_s);
}

TEST_F(Parity, OpeningTakesTheNewestDraw) {
  workspace.addDraws(u"11031510 01 02 03 04 05\n11031511 02 03 06 08 11"_s);
  parity.open();
  EXPECT_EQ(parityPattern(workspace.store(), 0), u"双单双双单"_s);
  EXPECT_EQ(workspace.rows("SELECT ID, VALUE FROM 过滤条件 WHERE ID BETWEEN 5000 AND 5009 ORDER BY ID").join(u'|'),
            u"5000 0|5001 0|5002 1|5003 0|5004 0|5005 1|5006 2|5007 2|5008 0|5009 0"_s);
}

TEST_F(Parity, OpeningWithoutHistoryLeavesRowZero) {
  const QString before = parityPattern(workspace.store(), 0);
  parity.open();
  EXPECT_EQ(parityPattern(workspace.store(), 0), before);
}

TEST_F(Parity, ChoiceIsStoredAndTicksItsRow) {
  parity.choose(3, 2, 2);
  EXPECT_EQ(parityPattern(workspace.store(), 3), u"双*双双双"_s);
  EXPECT_EQ(parity.rows()[3].values[1], 2);
  EXPECT_TRUE(parity.rows()[3].checked);
  EXPECT_EQ(workspace.rows("SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 73"), QStringList{u"1"_s});
}

TEST_F(Parity, BoxOfARowWritesItsCode) {
  parity.clickRow(0, false);
  parity.clickRow(5, true);
  EXPECT_EQ(workspace.rows("SELECT 条件, 使用情况 FROM 过滤条件使用情况 WHERE 条件 >= 70 ORDER BY 条件").join(u'|'),
            u"70 0|71 0|72 0|73 0|74 0|75 1"_s);
}

TEST_F(Parity, ARowTellsItsPatternAsItsFiveSignsJoined) {
  parity.choose(2, 1, 2);
  parity.choose(2, 4, 0);
  EXPECT_EQ(parity.rows()[2].pattern, u"*单单双*"_s);
  EXPECT_EQ(parity.rows()[1].pattern, u"单单单单单"_s);
}

TEST_F(Parity, ThePanelIsInUseWithAnyOfItsRows) {
  for (int row = 0; row < parityRowCount; ++row)
    parity.clickRow(row, false);
  EXPECT_FALSE(parity.inUse());
  for (const int row : {0, 5}) {
    parity.clickRow(row, true);
    EXPECT_TRUE(parity.inUse()) << row;
    parity.clickRow(row, false);
  }
}

TEST_F(Parity, WhileThePanelIsFilledNothingIsWritten) {
  panel.loadingPanel = true;
  parity.choose(3, 2, 2);
  parity.clickRow(5, true);
  EXPECT_EQ(parityPattern(workspace.store(), 3), u"双双双双双"_s);
  EXPECT_FALSE(parity.rows()[3].checked);
  EXPECT_FALSE(parity.rows()[5].checked);
}

TEST_F(Parity, CellsOutsideThePanelAreNotWritten) {
  const auto before = workspace.rows("SELECT * FROM 过滤条件 ORDER BY ID");
  parity.choose(6, 1, 1);
  parity.choose(1, 0, 1);
  parity.choose(1, 6, 1);
  EXPECT_EQ(workspace.rows("SELECT * FROM 过滤条件 ORDER BY ID"), before);
}

TEST(ParityItems, StandAsOddEvenAnyAndStoreOneZeroTwo) {
  for (std::size_t i = 0; i < std::size(parityItems); ++i)
    EXPECT_EQ(paritySign(parityItemValues[i]).toString(), parityItems[i].toString());
  EXPECT_EQ(parityItems[0].toString(), u"单"_s);
  EXPECT_EQ(parityItemValues[1], 0);
}

}  // namespace

}  // namespace elevenfive
