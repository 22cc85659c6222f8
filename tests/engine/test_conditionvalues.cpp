#include "engine/conditionvalues.h"

#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class ConditionValues : public EngineTest {};

TEST_F(ConditionValues, LoadBeginsAtTheSlotOfTheLastDigit) {
  setValue(5011, 1);
  setValue(5015, 2);
  driver.loadTiaojianValues(5011, 5015);
  EXPECT_EQ(driver.state().tiaojianValue[0], 0);
  EXPECT_EQ(driver.state().tiaojianValue[1], 1);
  EXPECT_EQ(driver.state().tiaojianValue[5], 2);
}

TEST_F(ConditionValues, LoadKeepsTheSlotsItDoesNotReach) {
  driver.state().tiaojianValue.fill(7);
  driver.loadTiaojianValues(1000, 1170);
  EXPECT_EQ(driver.state().tiaojianValue[0], 0);
  EXPECT_EQ(driver.state().tiaojianValue[170], 0);
  EXPECT_EQ(driver.state().tiaojianValue[171], 7);
  EXPECT_EQ(driver.state().tiaojianValue[199], 7);
}

TEST_F(ConditionValues, OneRowLoadsIntoSlotZero) {
  driver.loadTiaojianValues(3900, 3900);
  EXPECT_EQ(driver.state().tiaojianValue[0], 5);
  EXPECT_EQ(driver.state().tiaojianValue[1], 0);
}

TEST_F(ConditionValues, FillWritesOneValueToTheRowsOfTheRangeOnly) {
  driver.fillTiaojianValues(3640, 3642, 1);
  EXPECT_EQ(workspace.rows("SELECT ID FROM 过滤条件 WHERE ID BETWEEN 3600 AND 3700 AND VALUE = 1 ORDER BY ID"),
            (QStringList{u"3640"_s, u"3641"_s, u"3642"_s}));
}

TEST_F(ConditionValues, OnlyTheSwitchValueOneMeansInUse) {
  EXPECT_FALSE(conditionInUse(workspace.store(), 1));
  use(1, 1);
  EXPECT_TRUE(conditionInUse(workspace.store(), 1));
  use(1, 2);
  EXPECT_FALSE(conditionInUse(workspace.store(), 1));
}

TEST_F(ConditionValues, CountedConditionsLeaveOutPositionsSpacingAndTheOptimisationBox) {
  sql("UPDATE 过滤条件使用情况 SET 使用情况 = 1");
  // 63 codes less 30-36 (7), 38-41 (4) and 45 (1).
  EXPECT_EQ(driver.countRongcuoTiaojian(), 51);
}

TEST_F(ConditionValues, TheFactorySetHasNineCountedConditions) {
  sql("UPDATE 过滤条件使用情况 SET 使用情况 = (SELECT d.使用情况 FROM 默认过滤条件使用情况 d"
      " WHERE d.条件 = 过滤条件使用情况.条件)");
  // 1, 4, 5, 7, 8, 9, 46, 47, 70.
  EXPECT_EQ(driver.countRongcuoTiaojian(), 9);
}

}  // namespace elevenfive
