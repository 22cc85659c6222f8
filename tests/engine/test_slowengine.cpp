// Hand-worked cases of the slow engine, so that what the engine is compared with stands on its own feet.
#include <gtest/gtest.h>

#include "model/defaultrows.h"
#include "tests/engine/slowengine.h"
#include "tests/support/testworkspace.h"

namespace elevenfive::slow {

namespace {

using namespace Qt::StringLiterals;

constexpr Qihao target = 11031520;

/// All numbers picked, every condition off, two earlier draws.
SlowEngine quietEngine() {
  SlowEngine engine;
  for (int id : conditionIds())
    engine.values[id] = defaultConditionValue(id);
  for (int code : conditionCodes())
    engine.uses[code] = 0;
  for (const AttributeColumn& column : attributeColumns())
    engine.attributes[column.name] = column.members;
  for (int k = 1; k <= 20; ++k)
    engine.aliases[k] = u"自定义组%1"_s.arg(k);
  engine.match.inUse = 0;
  engine.history = {{11031510, {1, 2, 3, 4, 5}}, {11031511, {2, 4, 6, 8, 10}}};
  return engine;
}

void addRows(SlowEngine& engine, const QStringList& numbers) {
  int id = 0;
  for (const QString& line : numbers) {
    ++id;
    engine.rows.push_back({id, id, target, drawFrom(line), 0, {}, {}, {}});
  }
}

QStringList shown(const SlowEngine& engine) {
  QStringList lines;
  for (const Row& row : engine.rows) {
    QString line = QString::number(row.xuhao) + u":"_s;
    for (int number : row.numbers)
      line += u' ' + QString::number(number);
    lines << line;
  }
  return lines;
}

TEST(SlowAttributes, OfTheLowestCombination) {
  const Draw row{1, 2, 3, 4, 5};
  EXPECT_EQ(sum(row), 15);
  EXPECT_EQ(sumOfOdd(row), 9);
  EXPECT_EQ(sumOfEven(row), 6);
  EXPECT_EQ(sumOfTens(row), 0);
  EXPECT_EQ(sumOfUnits(row), 15);
  EXPECT_EQ(countOdd(row), 3);
  EXPECT_EQ(countEven(row), 2);
  EXPECT_EQ(span(row), 4);
  EXPECT_EQ(largestGap(row), 1);
  EXPECT_EQ(runCode(row), 6);
  EXPECT_EQ(acValue(row), 0);
}

TEST(SlowAttributes, OfTheHighestCombination) {
  const Draw row{7, 8, 9, 10, 11};
  EXPECT_EQ(sum(row), 45);
  EXPECT_EQ(sumOfTens(row), 2);
  EXPECT_EQ(sumOfUnits(row), 25);
  EXPECT_EQ(span(row), 4);
  EXPECT_EQ(runCode(row), 6);
}

TEST(SlowAttributes, NeighboursOfTheDrawBeforeCountOnce) {
  EXPECT_EQ(countBeside({1, 3, 5, 7, 9}, {2, 4, 6, 8, 10}), 5);
  EXPECT_EQ(countIn({1, 3, 5, 7, 9}, {2, 4, 6, 8, 10}), 0);
  EXPECT_EQ(countBeside({1, 2, 3, 4, 11}, {5, 6, 7, 8, 9}), 1);
}

TEST(SlowScoring, OfNoDrawAtAllOnlyUnreachedSlotsAndTheSumCount) {
  EXPECT_EQ(haomaScore({}, {1, 2, 3, 4, 5}), 228 + 7);
  EXPECT_EQ(haomaScore({}, {7, 8, 9, 10, 11}), 228 + 6);
  EXPECT_EQ(youhuaScore({}, -1, -1, {1, 2, 3, 4, 5}), 1 + 50);
}

TEST(SlowScoring, OfTenEqualDraws) {
  TenDraws past;
  for (std::size_t place = 1; place <= 10; ++place)
    past.numbers[place] = {1, 2, 3, 4, 5};
  past.sums[8] = past.sums[9] = 15;
  // All slots up to 99 but the first, two of the pairs, 23 shared numbers, the rest; then the sum and the eighth draw's.
  EXPECT_EQ(haomaScore(past, {1, 2, 3, 4, 5}), 99 + 2 + 23 + 228 + 7 + 6);
  EXPECT_EQ(youhuaScore(past, 15, 15, {1, 2, 3, 4, 5}), 236 + 150);
}

TEST(SlowEngine, AChoiceKeepsTheLowestScores) {
  SlowEngine engine = quietEngine();
  engine.history.clear();
  addRows(engine, {u"01 02 03 04 05"_s, u"01 02 03 06 11"_s, u"07 08 09 10 11"_s});  // +7, -13, +6
  engine.analyseHaoma(target, 2);
  EXPECT_EQ(shown(engine), (QStringList{u"2: 1 2 3 6 11"_s, u"3: 7 8 9 10 11"_s}));
  EXPECT_EQ(engine.rows.front().linshi, 999);
  EXPECT_EQ(engine.boxes, QStringList{u"精选号码完成！"_s});
}

TEST(SlowEngine, AnOptimisationSetsThreeOfFiveBackToZero) {
  SlowEngine engine = quietEngine();
  engine.uses[45] = 1;
  engine.history.clear();
  addRows(engine,
          {u"01 02 03 04 05"_s, u"01 02 03 06 11"_s, u"07 08 09 10 11"_s, u"01 02 03 04 06"_s, u"01 02 03 04 07"_s});
  engine.zhinengYouhua(target, 3);
  QStringList scores;
  for (const Row& row : engine.rows)
    scores << QString::number(row.linshi.value_or(-1));
  EXPECT_EQ(scores.join(u' '), u"0 0 0 51 51"_s);
}

TEST(SlowEngine, ExpandsAllPicksIn462Rows) {
  SlowEngine engine = quietEngine();
  EXPECT_EQ(engine.initXuanhao(target), 462);
  EXPECT_EQ(engine.rows.front().numbers, (Draw{1, 2, 3, 4, 5}));
  EXPECT_EQ(engine.rows.back().numbers, (Draw{7, 8, 9, 10, 11}));
  EXPECT_EQ(engine.boxes, QStringList{u"初始化选号完成!共 ４６２ 注！"_s});
  EXPECT_EQ(engine.status, u"初始化选号完成!共 ４６２ 注！\r\n\r\n\r\n"_s);
}

TEST(SlowEngine, ABankerIsInEveryRowOfTheExpansion) {
  SlowEngine engine = quietEngine();
  for (int number = 1; number <= 11; ++number)
    engine.values[number] = number >= 8 ? 1 : 0;
  engine.values[11] = 2;
  engine.values[1] = 1;
  engine.values[2] = 1;
  EXPECT_EQ(engine.initXuanhao(target), 5);  // C(6 - 1, 5 - 1)
  for (const Row& row : engine.rows)
    EXPECT_EQ(row.numbers[4], 11);
}

TEST(SlowEngine, AStopLeavesTheExpansionAfterItsRow) {
  SlowEngine engine = quietEngine();
  engine.stopAtYield = 7;
  EXPECT_EQ(engine.initXuanhao(target), 7);
  EXPECT_EQ(engine.rows.size(), 7u);
  EXPECT_TRUE(engine.boxes.empty());
  EXPECT_FALSE(engine.stop);
}

TEST(SlowEngine, AnOffEngineLeavesAllRowsAndWritesFourLines) {
  SlowEngine engine = quietEngine();
  addRows(engine, {u"01 02 03 04 05"_s, u"01 02 03 04 06"_s});
  EXPECT_TRUE(engine.runGuolvSuoshui(target));
  EXPECT_EQ(engine.status,
            u"\r\n\r\n正读取数据[１１０３１５２０期]．．．\r\n\r\n过滤缩水之前共：２注．"
            u"\r\n\r\n[保五型]缩水后余：２ 注\r\n\r\n全部过滤缩水完成,余：２ 注"_s);
  EXPECT_EQ(engine.yields, 3);  // two rows reset, one at the end
}

TEST(SlowEngine, TheSumFilterRenumbersAndDeletes) {
  SlowEngine engine = quietEngine();
  engine.uses[1] = 1;
  addRows(engine, {u"01 02 03 04 05"_s, u"01 02 03 04 09"_s, u"07 08 09 10 11"_s, u"02 04 06 08 10"_s});
  EXPECT_TRUE(engine.runGuolvSuoshui(target));
  EXPECT_EQ(shown(engine), (QStringList{u"1: 1 2 3 4 9"_s, u"2: 2 4 6 8 10"_s}));
  EXPECT_TRUE(engine.status.contains(u"\r\n\r\n[ 和 值 ]过滤后余：２ 注\r\n\r\n[保五型]"_s));
}

TEST(SlowEngine, WithAToleranceAFailedRowKeepsItsNumberAndStaysWithinIt) {
  SlowEngine engine = quietEngine();
  engine.uses[1] = 1;  // 19 to 40
  engine.uses[6] = 1;  // all forms but a run of five
  engine.tolerance = 1;
  // fails both; fails the sum; passes both.
  addRows(engine, {u"01 02 03 04 05"_s, u"01 02 03 05 06"_s, u"01 03 05 07 09"_s});
  EXPECT_TRUE(engine.runGuolvSuoshui(target));
  // The sum gives 1 to the third row alone; the run form then meets the rows in the order of 序号 1 (ID 1), 1 (ID 3), 2.
  EXPECT_EQ(shown(engine), (QStringList{u"2: 1 2 3 5 6"_s, u"1: 1 3 5 7 9"_s}));
  EXPECT_TRUE(engine.status.contains(u"[ 和 值 ]过滤后余：１ 注\r\n\r\n[连号]过滤后余：２ 注"_s));
  EXPECT_TRUE(engine.status.contains(u"以上条件容错１后余：２ 注\r\n\r\n\r\n\r\n[保五型]"_s));
}

TEST(SlowEngine, ReductionToThreeKeepsTwoOfFour) {
  SlowEngine engine = quietEngine();
  engine.values[3900] = 3;
  addRows(engine, {u"01 02 03 04 05"_s, u"01 02 03 04 06"_s, u"01 02 03 07 08"_s, u"06 07 08 09 10"_s});
  EXPECT_TRUE(engine.runGuolvSuoshui(target));
  EXPECT_EQ(shown(engine), (QStringList{u"1: 1 2 3 4 5"_s, u"2: 6 7 8 9 10"_s}));
  // Four reset, three rows behind the first keeper and its look-up, the look-up behind the last, the end of the run.
  EXPECT_EQ(engine.yields, 4 + 3 + 1 + 1 + 1);
}

TEST(SlowEngine, ReductionToFourKeepsThreeOfFour) {
  SlowEngine engine = quietEngine();
  engine.values[3900] = 4;
  addRows(engine, {u"01 02 03 04 05"_s, u"01 02 03 04 06"_s, u"01 02 03 07 08"_s, u"06 07 08 09 10"_s});
  EXPECT_TRUE(engine.runGuolvSuoshui(target));
  EXPECT_EQ(shown(engine), (QStringList{u"1: 1 2 3 4 5"_s, u"2: 1 2 3 7 8"_s, u"3: 6 7 8 9 10"_s}));
}

TEST(SlowEngine, TheMatchFilterDropsWhatSharesFourWithARecentDraw) {
  SlowEngine engine = quietEngine();
  engine.match = {1, 5, 4};
  addRows(engine, {u"01 02 03 04 11"_s, u"01 02 03 06 08"_s, u"02 04 06 08 11"_s});
  EXPECT_TRUE(engine.runGuolvSuoshui(target));
  EXPECT_EQ(shown(engine), QStringList{u"1: 1 2 3 6 8"_s});
  EXPECT_TRUE(engine.status.contains(u"[历史数据过滤]过滤后余：１ 注"_s));
}

TEST(SlowEngine, APatternOfStarsExcludesThePeriod) {
  SlowEngine engine = quietEngine();
  engine.uses[71] = 1;
  for (int id = 5011; id <= 5015; ++id)
    engine.values[id] = 2;
  addRows(engine, {u"01 02 03 04 05"_s});
  EXPECT_TRUE(engine.runGuolvSuoshui(target));
  EXPECT_TRUE(engine.rows.empty());
  EXPECT_TRUE(engine.status.contains(u"[排除掉单双组合1：]*****\r\n\r\n过滤后余：０ 注"_s));
}

TEST(SlowEngine, WithoutAnEarlierDrawTheRunEndsAtTheParityOfTheDrawBefore) {
  SlowEngine engine = quietEngine();
  engine.history.clear();
  addRows(engine, {u"01 02 03 04 05"_s});
  EXPECT_FALSE(engine.runGuolvSuoshui(target));
  EXPECT_EQ(shown(engine), QStringList{u"1: 1 2 3 4 5"_s});
}

}  // namespace

}  // namespace elevenfive::slow
