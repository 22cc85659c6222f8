#include "model/calculators.h"

#include <gtest/gtest.h>

#include "model/errors.h"

namespace elevenfive {
namespace {

constexpr Draw zeros{0, 0, 0, 0, 0};

TEST(KuaDu, IsTheLargestLessTheSmallest) {
  EXPECT_EQ(calc_KuaDu({1, 2, 3, 4, 5}), 4);
  EXPECT_EQ(calc_KuaDu({1, 5, 6, 7, 11}), 10);
  EXPECT_EQ(calc_KuaDu({7, 8, 9, 10, 11}), 4);
}

TEST(KuaDu, DoesNotDependOnTheOrder) {
  EXPECT_EQ(calc_KuaDu({5, 11, 2, 8, 3}), 9);
  EXPECT_EQ(calc_KuaDu({11, 8, 5, 3, 2}), 9);
}

TEST(JianJuMax, IsTheWidestGapOfNeighbours) {
  EXPECT_EQ(calc_JianJuMax({1, 2, 3, 4, 5}), 1);
  EXPECT_EQ(calc_JianJuMax({1, 2, 3, 4, 11}), 7);
  EXPECT_EQ(calc_JianJuMax({1, 4, 5, 9, 11}), 4);
}

TEST(JianJuMax, TakesTheNeighboursInTheOrderOfTheArray) {
  EXPECT_EQ(calc_JianJuMax({1, 11, 2, 10, 3}), 10);
  EXPECT_EQ(calc_JianJuMax({11, 4, 3, 2, 1}), 7);
}

TEST(AC, IsZeroForFiveNumbersInARow) {
  EXPECT_EQ(calc_AC({1, 2, 3, 4, 5}), 0);
  EXPECT_EQ(calc_AC({7, 8, 9, 10, 11}), 0);
}

TEST(AC, CountsDifferentDifferencesLessFour) {
  EXPECT_EQ(calc_AC({1, 3, 5, 7, 9}), 0);   // 2 4 6 8
  EXPECT_EQ(calc_AC({1, 2, 4, 5, 7}), 2);   // 1 2 3 4 5 6
  EXPECT_EQ(calc_AC({1, 2, 3, 4, 11}), 3);  // 1 2 3 7 8 9 10
  EXPECT_EQ(calc_AC({1, 2, 5, 8, 10}), 5);  // 1 2 3 4 5 6 7 8 9
}

TEST(AC, DoesNotDependOnTheOrder) {
  EXPECT_EQ(calc_AC({10, 1, 8, 2, 5}), 5);
}

TEST(AC, IsNotClampedAtZero) {
  EXPECT_EQ(calc_AC({3, 3, 3, 3, 3}), -3);  // the one difference 0
}

TEST(LianHaoMax, FiveInARowIsCode6) {
  EXPECT_EQ(calc_LianHaoMax({1, 2, 3, 4, 5}), 6);
}

TEST(LianHaoMax, ARunThatEndsAt11IsCounted) {
  EXPECT_EQ(calc_LianHaoMax({7, 8, 9, 10, 11}), 6);
  EXPECT_EQ(calc_LianHaoMax({1, 3, 5, 10, 11}), 1);
  EXPECT_EQ(calc_LianHaoMax({1, 2, 5, 10, 11}), 2);
  EXPECT_EQ(calc_LianHaoMax({1, 3, 9, 10, 11}), 3);
  EXPECT_EQ(calc_LianHaoMax({1, 8, 9, 10, 11}), 5);
}

TEST(LianHaoMax, NoTwoAdjacentNumbersIsCode0) {
  EXPECT_EQ(calc_LianHaoMax({1, 3, 5, 7, 9}), 0);
  EXPECT_EQ(calc_LianHaoMax({1, 4, 6, 9, 11}), 0);
}

TEST(LianHaoMax, OnePairIsCode1) {
  EXPECT_EQ(calc_LianHaoMax({1, 2, 5, 8, 10}), 1);
}

TEST(LianHaoMax, TwoPairsAreCode2) {
  EXPECT_EQ(calc_LianHaoMax({1, 2, 4, 5, 7}), 2);
}

TEST(LianHaoMax, ARunOfThreeIsCode3) {
  EXPECT_EQ(calc_LianHaoMax({2, 3, 4, 8, 11}), 3);
}

TEST(LianHaoMax, ThreeAndTwoAreCode4InEitherOrder) {
  EXPECT_EQ(calc_LianHaoMax({1, 2, 3, 5, 6}), 4);
  EXPECT_EQ(calc_LianHaoMax({1, 2, 9, 10, 11}), 4);
}

TEST(LianHaoMax, ARunOfFourIsCode5) {
  EXPECT_EQ(calc_LianHaoMax({1, 2, 3, 4, 6}), 5);
  EXPECT_EQ(calc_LianHaoMax({1, 3, 4, 5, 6}), 5);
}

TEST(LianHaoMax, DoesNotDependOnTheOrder) {
  EXPECT_EQ(calc_LianHaoMax({5, 1, 4, 2, 7}), 2);
}

TEST(LianHaoMax, ANumberOutside1To11IsAFault) {
  EXPECT_THROW(calc_LianHaoMax({0, 1, 2, 3, 4}), NumberFault);
  EXPECT_THROW(calc_LianHaoMax({1, 2, 3, 4, 12}), NumberFault);
  EXPECT_THROW(calc_LianHaoMax({-1, 2, 3, 4, 5}), NumberFault);
}

TEST(CongDie, CountsSharedNumbers) {
  EXPECT_EQ(calc_CongDie({1, 2, 3, 4, 5}, {3, 4, 5, 6, 7}), 3);
  EXPECT_EQ(calc_CongDie({1, 2, 3, 4, 5}, {1, 2, 3, 4, 5}), 5);
}

TEST(CongDie, EvenAgainstOddIsZero) {
  EXPECT_EQ(calc_CongDie({2, 4, 6, 8, 10}, {1, 3, 5, 7, 9}), 0);
}

TEST(CongDie, IsZeroWithoutAnEarlierDraw) {
  EXPECT_EQ(calc_CongDie(zeros, {1, 2, 3, 4, 5}), 0);
}

TEST(CongDie, ANumberOutsideItsTableIsAFault) {
  EXPECT_THROW(calc_CongDie({1, 2, 3, 4, 12}, {1, 2, 3, 4, 5}), NumberFault);
  EXPECT_THROW(calc_CongDie({1, 2, 3, 4, 5}, {1, 2, 3, 4, 12}), NumberFault);
}

TEST(XieWeiMa, EvenBeforeOddCountsAllFive) {
  // 01 counts through 02 alone: it has no lower neighbour.
  EXPECT_EQ(calc_XieWeiMa({2, 4, 6, 8, 10}, {1, 3, 5, 7, 9}), 5);
}

TEST(XieWeiMa, BothNeighboursDrawnCountOnce) {
  // 06 has 05 and 07; 01, 02, 03 have none; 11 has none of 10.
  EXPECT_EQ(calc_XieWeiMa({5, 6, 7, 8, 9}, {1, 2, 3, 6, 11}), 1);
}

TEST(XieWeiMa, BeingDrawnBeforeDoesNotCount) {
  EXPECT_EQ(calc_XieWeiMa({1, 3, 5, 7, 9}, {1, 3, 5, 7, 9}), 0);
}

TEST(XieWeiMa, ElevenCountsThrough10) {
  EXPECT_EQ(calc_XieWeiMa({1, 3, 5, 7, 10}, {1, 3, 5, 7, 11}), 1);
}

TEST(XieWeiMa, WithoutAnEarlierDrawOnly01Counts) {
  EXPECT_EQ(calc_XieWeiMa(zeros, {1, 2, 3, 4, 5}), 1);
  EXPECT_EQ(calc_XieWeiMa(zeros, {2, 3, 4, 5, 6}), 0);
}

TEST(XieWeiMa, ANumberOutsideItsTableIsAFault) {
  EXPECT_THROW(calc_XieWeiMa({1, 2, 3, 4, 5}, {0, 2, 3, 4, 5}), NumberFault);
  EXPECT_THROW(calc_XieWeiMa({1, 2, 3, 4, 5}, {1, 2, 3, 4, 12}), NumberFault);
  EXPECT_THROW(calc_XieWeiMa({1, 2, 3, 4, 13}, {1, 2, 3, 4, 5}), NumberFault);
}

TEST(Zhushu, AllNumbersForFivePlaces) {
  EXPECT_EQ(calc_Zhushu(11, 5, 0), 462);
}

TEST(Zhushu, TwoFixedLeaveThreePlacesFromNine) {
  EXPECT_EQ(calc_Zhushu(11, 5, 2), 84);
}

TEST(Zhushu, AsManyNumbersAsPlacesIsOne) {
  EXPECT_EQ(calc_Zhushu(5, 5, 0), 1);
}

TEST(Zhushu, FewerNumbersThanPlacesIsZero) {
  EXPECT_EQ(calc_Zhushu(4, 5, 0), 0);
  EXPECT_EQ(calc_Zhushu(4, 5, 5), 0);  // tested first
}

TEST(Zhushu, AllPlacesFixedIsOne) {
  EXPECT_EQ(calc_Zhushu(8, 5, 5), 1);
  EXPECT_EQ(calc_Zhushu(8, 5, 6), 1);
}

TEST(Zhushu, OneFreePlaceTakesEachRemainingNumber) {
  EXPECT_EQ(calc_Zhushu(11, 5, 4), 7);
}

TEST(NumberFault, NamesTheNumberAtFault) {
  const auto faultOf = [](auto&& call) {
    try {
      call();
    } catch (const NumberFault& fault) {
      return fault.message().toStdString();
    }
    return std::string("no fault");
  };
  EXPECT_EQ(faultOf([] { calc_LianHaoMax({1, 2, 3, 4, 25}); }), "号码 25 不在 01 到 11 之间，无法计算。");
  EXPECT_EQ(faultOf([] { calc_AC({2, 3, 4, 5, 25}); }), "号码 25 不在 01 到 11 之间，无法计算。");
  EXPECT_EQ(faultOf([] { calc_AC({-20, 3, 4, 5, 6}); }), "号码 -20 不在 01 到 11 之间，无法计算。");
}

}  // namespace
}  // namespace elevenfive
