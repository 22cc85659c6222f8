#include "engine/candidates.h"

#include "model/errors.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class Candidates : public EngineTest {};

TEST_F(Candidates, RowsComeByXuhaoAndThenById) {
  addRows(u"01 02 03 04 05\n02 03 04 05 06\n03 04 05 06 07"_s);
  sql("UPDATE 日志表 SET 序号 = 1 WHERE 号码1 = 3");
  QList<int> first;
  for (const Candidate& row : readCandidates(workspace.store(), period))
    first << row.numbers[0];
  EXPECT_EQ(first, (QList<int>{1, 3, 2}));
}

TEST_F(Candidates, RowsOfOtherPeriodsAndMarkedRowsStayOut) {
  addRows(u"01 02 03 04 05\n02 03 04 05 06\n03 04 05 06 07"_s);
  sql("UPDATE 日志表 SET 期号 = 5 WHERE 号码1 = 1");
  sql("UPDATE 日志表 SET 过滤标记 = -1 WHERE 号码1 = 2");
  const auto rows = readCandidates(workspace.store(), period);
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0].numbers, drawFrom(u"03 04 05 06 07"_s));
  EXPECT_EQ(countCandidates(workspace.store(), period), 2);
}

TEST_F(Candidates, ANumberBeyondElevenIsToldWithItsRow) {
  try {
    requireNumbers({.id = 9, .xuhao = 4, .numbers = {1, 2, 3, 4, 12}, .mark = 0});
    FAIL() << "no fault";
  } catch (const NumberFault& fault) {
    EXPECT_TRUE(fault.message().contains(u"序号 4"_s));
    EXPECT_TRUE(fault.message().contains(u"01 02 03 04 12"_s));
  }
  EXPECT_THROW(requireNumbers({.id = 1, .xuhao = 1, .numbers = {0, 2, 3, 4, 5}, .mark = 0}), NumberFault);
  EXPECT_NO_THROW(requireNumbers({.id = 1, .xuhao = 1, .numbers = {11, 1, 3, 4, 5}, .mark = 0}));
}

}  // namespace elevenfive
