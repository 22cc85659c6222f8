#include "engine/scoring.h"

#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

/// Ten equal draws.
EarlierDraws tenTimes(const Draw& draw) {
  EarlierDraws earlier;
  for (std::size_t back = 1; back <= 10; ++back)
    earlier.numbers[back] = draw;
  return earlier;
}

/// Ten draws of which no two are equal, with their sums.
EarlierDraws tenDifferent() {
  EarlierDraws earlier;
  earlier.numbers = {{{},
                      {1, 3, 5, 8, 10},
                      {2, 4, 6, 8, 11},
                      {1, 4, 7, 9, 10},
                      {3, 5, 6, 9, 11},
                      {2, 3, 4, 7, 10},
                      {1, 2, 6, 8, 9},
                      {4, 5, 7, 8, 11},
                      {1, 3, 6, 10, 11},
                      {2, 5, 8, 9, 10},
                      {3, 4, 7, 9, 11}}};
  earlier.sums = {0, 27, 31, 31, 34, 26, 26, 35, 31, 34, 34};
  return earlier;
}

/// The score of a row against no draw at all: every difference of the row's vector is its number negated or a pair, none 0, so
/// only the 228 slots that neither vector reaches count.
int scoreOfSum(const Draw& row) {
  return HaomaScorer(EarlierDraws()).score(row);
}

}  // namespace

TEST(HaomaScorer, CountsTheSlotsThatNeitherVectorReachesAndTheBandOfTheSum) {
  EXPECT_EQ(scoreOfSum({1, 2, 3, 4, 5}), 228 + 7);    // 15
  EXPECT_EQ(scoreOfSum({1, 2, 3, 4, 10}), 228 + 7);   // 20
  EXPECT_EQ(scoreOfSum({1, 2, 3, 4, 11}), 228 + 5);   // 21
  EXPECT_EQ(scoreOfSum({1, 2, 3, 5, 11}), 228 + 5);   // 22
  EXPECT_EQ(scoreOfSum({1, 2, 3, 6, 11}), 228 - 13);  // 23
  EXPECT_EQ(scoreOfSum({3, 5, 7, 9, 11}), 228 - 13);  // 35
  EXPECT_EQ(scoreOfSum({4, 5, 7, 9, 11}), 228 - 8);   // 36
  EXPECT_EQ(scoreOfSum({5, 6, 7, 9, 11}), 228 - 8);   // 38
  EXPECT_EQ(scoreOfSum({5, 6, 8, 9, 11}), 228 + 6);   // 39
  EXPECT_EQ(scoreOfSum({7, 8, 9, 10, 11}), 228 + 6);  // 45
}

TEST(HaomaScorer, ComparesTheVectorsSlotBySlotFromTheSecondOn) {
  // Slots 0 to 99 agree all: less slot 0, 99. Slots 100 to 109 hold the pairs -1 -2 -3 -4 -1 -2 -3 -1 -2 -1 against
  // 0 -1 -2 -3 -4 1 0 -1 -2 -3 of the fifth block: 2 agree. From 110 on a 0 of the row counts: 3 in the rest of that block, 5
  // in each of the four that follow. Then the 228, and the sum of 15.
  EXPECT_EQ(HaomaScorer(tenTimes({1, 2, 3, 4, 5})).score({1, 2, 3, 4, 5}), 99 + 2 + 23 + 228 + 7);
}

TEST(HaomaScorer, TenDifferentDrawsAreComparedOnBothPlans) {
  // A slot of the first 100 agrees where a draw's step from the next newer one, place by place, equals a difference of the
  // newest draw and the row. Those differences are -1 -1 -1 0 0. The steps: 1 1 1 0 1 from the newest to the second, -1 0 1 1 -1,
  // 2 1 -1 0 1 and -1 -2 -2 -2 -1 to the fifth. So 1 zero x 2; 2 x 3 + 1 x 2; 1 x 3 + 1 x 2; 2 x 3.
  const int steps = 2 + 8 + 5 + 6;
  // The pairs of the newest, -2 -4 -7 -9 -2 -5 -7 -3 -5 -2, meet 02 and 03 of the fifth draw less the row: 0 -2 -4 -6 -8
  // 1 -1 -3 -5 -7.
  const int pairs = 2;
  // From there on a slot agrees where the row shares a number: with 04 07 10 of the fifth draw, and with the sixth to the ninth.
  const int shared = 2 + 3 + 2 + 2 + 3;
  // Then the slots that neither reaches, and a sum of 30, which no old draw has.
  EXPECT_EQ(HaomaScorer(tenDifferent()).score({2, 4, 6, 8, 10}), steps + pairs + shared + 228 - 13);
}

TEST(HaomaScorer, ASumBelowFifteenCountsAsOneAboveThirtyEight) {
  // 12; the difference of the two equal numbers is 0, like the slot beside it.
  EXPECT_EQ(scoreOfSum({5, 1, 2, 3, 1}), 228 + 1 + 6);
}

TEST(HaomaScorer, ScoresOneRowAfterTheOtherOnTheSameVector) {
  HaomaScorer scorer(tenTimes({1, 2, 3, 4, 5}));
  const int first = scorer.score({1, 2, 3, 4, 5});
  scorer.score({7, 8, 9, 10, 11});
  EXPECT_EQ(scorer.score({1, 2, 3, 4, 5}), first);
}

TEST(HaomaScorer, ASumOfTheThreeOldestDrawsCountsAgainstTheRow) {
  const Draw row{1, 2, 3, 4, 5};  // 228 + 7 without
  EarlierDraws earlier;
  earlier.sums[10] = 15;
  EXPECT_EQ(HaomaScorer(earlier).score(row), 235 + 10);
  earlier.sums[9] = 15;
  EXPECT_EQ(HaomaScorer(earlier).score(row), 235 + 8);
  earlier.sums[8] = 15;
  EXPECT_EQ(HaomaScorer(earlier).score(row), 235 + 6);
}

TEST(HaomaScorer, SumsOfNewerDrawsDoNotMatter) {
  EarlierDraws earlier;
  for (std::size_t back = 1; back <= 7; ++back)
    earlier.sums[back] = 15;
  EXPECT_EQ(HaomaScorer(earlier).score({1, 2, 3, 4, 5}), 235);
}

TEST(YouhuaScorer, BothVectorsOnOnePlanAgreeInAllSlotsForARowLikeTheNewestDraw) {
  // 235 slots and the one that nothing reaches; units digits 15 exceed 2.
  EXPECT_EQ(YouhuaScorer(tenTimes({1, 2, 3, 4, 5}), {}).score({1, 2, 3, 4, 5}), 236 + 50);
}

TEST(YouhuaScorer, TenDifferentDrawsAreComparedOnOnePlan) {
  // The newest draw 01 03 05 08 10 agrees with the row in two places, in every number of nine draws: 2 x 45 slots. The pairs
  // -2 -4 -7 -9 -2 -5 -7 -3 -5 -2 and -2 -4 -6 -8 -2 -4 -6 -2 -4 -2 agree four times; one slot is reached by neither.
  const Draw row{2, 4, 6, 8, 10};  // units digits 20
  EXPECT_EQ(YouhuaScorer(tenDifferent(), {}).score(row), 90 + 4 + 1 + 50);
  EXPECT_EQ(YouhuaScorer(tenDifferent(), {20, 33}).score(row), 90 + 4 + 1 + 100);
}

TEST(YouhuaScorer, TheUnitsDigitsCountAgainstMissesAndUnitsOfTheDrawBefore) {
  const EarlierDraws earlier = tenTimes({1, 2, 3, 4, 5});
  EXPECT_EQ(YouhuaScorer(earlier, {15, 14}).score({1, 2, 3, 4, 5}), 236 + 100);
  EXPECT_EQ(YouhuaScorer(earlier, {14, 15}).score({1, 2, 3, 4, 5}), 236 + 100);
  EXPECT_EQ(YouhuaScorer(earlier, {15, 15}).score({1, 2, 3, 4, 5}), 236 + 150);
}

class ScoringTest : public EngineTest {};

TEST_F(ScoringTest, FewerThanTenDrawsFillFromTheTenthDownward) {
  workspace.addDraws(u"11031508 01 03 05 07 09\n11031510 07 08 09 10 11"_s);
  sql("UPDATE 历史记录 SET 和值 = 25 WHERE 期号 = 11031508");
  const EarlierDraws earlier = readEarlierDraws(workspace.store(), period);
  EXPECT_EQ(earlier.numbers[10], (Draw{1, 3, 5, 7, 9}));
  EXPECT_EQ(earlier.sums[10], 25);
  EXPECT_EQ(earlier.numbers[9], (Draw{2, 4, 6, 8, 10}));
  EXPECT_EQ(earlier.sums[9], 0);
  EXPECT_EQ(earlier.numbers[8], Draw{});
}

TEST_F(ScoringTest, TenDrawsPutTheNewestFirstAndLeaveOlderOnesOut) {
  workspace.addDraws(
      u"11031498 06 07 08 09 10\n11031499 01 02 03 04 05\n11031500 01 02 03 04 06\n11031501 01 02 03 04 07\n"
      "11031502 01 02 03 04 08\n11031503 01 02 03 04 09\n11031504 01 02 03 04 10\n11031505 01 02 03 04 11\n"
      "11031506 01 02 03 05 06\n11031507 01 02 03 05 07"_s);
  const EarlierDraws earlier = readEarlierDraws(workspace.store(), period);
  EXPECT_EQ(earlier.numbers[1], (Draw{2, 4, 6, 8, 10}));
  EXPECT_EQ(earlier.numbers[2], (Draw{1, 2, 3, 5, 7}));
  EXPECT_EQ(earlier.numbers[10], (Draw{1, 2, 3, 4, 5}));
}

TEST_F(ScoringTest, WithoutADrawBeforeThereIsNoFigureToCompareWith) {
  sql("DELETE FROM 历史记录");
  const PreviousFigures previous = readPreviousFigures(workspace.store(), period);
  EXPECT_FALSE(previous.units.has_value());
  EXPECT_FALSE(previous.misses.has_value());
  EXPECT_EQ(readEarlierDraws(workspace.store(), period).numbers[10], Draw{});
}

}  // namespace elevenfive
