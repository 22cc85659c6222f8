#include "model/navigators.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <limits>
#include <set>
#include <vector>

#include "model/daycount.h"
#include "model/errors.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

constexpr Qihao newestPossible = std::numeric_limits<Qihao>::max();

/// Periods with gaps: 10 20 30, each with numbers of its own.
void addThree(TestWorkspace& w) {
  w.addDraws(u"10 01 02 03 04 05\n20 02 03 04 05 06\n30 03 04 05 06 07"_s);
}

TEST(LastQihao, IsZeroInAnEmptyHistory) {
  TestWorkspace w;
  EXPECT_EQ(getLastQihao(w.store()), 0);
}

TEST(LastQihao, IsTheHighestWhateverTheOrderOfEntry) {
  TestWorkspace w;
  w.addDraws(u"30 01 02 03 04 05\n9 01 02 03 04 05\n100 01 02 03 04 05\n20 01 02 03 04 05"_s);
  EXPECT_EQ(getLastQihao(w.store()), 100);
}

TEST(NextQihao, IsZeroInAnEmptyHistory) {
  TestWorkspace w;
  EXPECT_EQ(getNextQihao(w.store()), 0);
}

TEST(NextQihao, IsTheLastPlusOneWithoutRollingOverADay) {
  TestWorkspace w;
  w.addDraws(u"11031599 01 02 03 04 05"_s);
  EXPECT_EQ(getNextQihao(w.store()), 11031600);
}

TEST(NextQihao, BelowOneIsTheLastItself) {
  TestWorkspace w;
  w.addDraws(u"-7 01 02 03 04 05"_s);
  EXPECT_EQ(getNextQihao(w.store()), -7);
}

TEST(NextQihao, StaysAtTheHighestPeriodThereCanBe) {
  TestWorkspace w;
  w.addDraws(u"2147483647 01 02 03 04 05"_s);
  EXPECT_EQ(getNextQihao(w.store()), newestPossible);
}

TEST(FirstQihao, IsTheLowest) {
  TestWorkspace w;
  EXPECT_EQ(getFirstQihao(w.store()), 0);
  addThree(w);
  EXPECT_EQ(getFirstQihao(w.store()), 10);
}

TEST(PrevQihao, OfTheFirstPeriodIsTheConstant) {
  TestWorkspace w;
  addThree(w);
  EXPECT_EQ(getPrevQihao(w.store(), 10, 1), 2003001);
}

TEST(PrevQihao, InAnEmptyHistoryIsTheConstant) {
  TestWorkspace w;
  EXPECT_EQ(getPrevQihao(w.store(), 11031510, 1), 2003001);
  EXPECT_EQ(getPrevQihao(w.store(), 11031510, 10), 2003001);
}

TEST(PrevQihao, StepsOverGaps) {
  TestWorkspace w;
  addThree(w);
  EXPECT_EQ(getPrevQihao(w.store(), 30, 1), 20);
  EXPECT_EQ(getPrevQihao(w.store(), 30, 2), 10);
  EXPECT_EQ(getPrevQihao(w.store(), 25, 1), 20);  // the period itself need not be there
  EXPECT_EQ(getPrevQihao(w.store(), 99, 1), 30);
}

TEST(PrevQihao, IsTheEarliestWhereFewerLieBefore) {
  TestWorkspace w;
  addThree(w);
  EXPECT_EQ(getPrevQihao(w.store(), 30, 10), 10);
}

TEST(QihaoBack, WithoutStepsIsTheNewestNotAfter) {
  TestWorkspace w;
  addThree(w);
  EXPECT_EQ(getQihaoBack(w.store(), 20, 0), 20);
  EXPECT_EQ(getQihaoBack(w.store(), 29, 0), 20);
}

TEST(QihaoBack, StepsBackAndStopsAtTheEarliest) {
  TestWorkspace w;
  addThree(w);
  EXPECT_EQ(getQihaoBack(w.store(), 30, 1), 20);
  EXPECT_EQ(getQihaoBack(w.store(), 30, 2), 10);
  EXPECT_EQ(getQihaoBack(w.store(), 30, 3), 10);
}

TEST(QihaoBack, IsZeroWhereNothingIsNotAfter) {
  TestWorkspace w;
  EXPECT_EQ(getQihaoBack(w.store(), 30, 0), 0);
  addThree(w);
  EXPECT_EQ(getQihaoBack(w.store(), 9, 0), 0);
  EXPECT_EQ(getQihaoBack(w.store(), 9, 5), 0);
}

TEST(QihaoForward, WithoutStepsIsTheFirstNotBefore) {
  TestWorkspace w;
  addThree(w);
  EXPECT_EQ(getQihaoForward(w.store(), 20, 0), 20);
  EXPECT_EQ(getQihaoForward(w.store(), 11, 0), 20);
}

TEST(QihaoForward, StepsOnAndStopsAtTheNewest) {
  TestWorkspace w;
  addThree(w);
  EXPECT_EQ(getQihaoForward(w.store(), 10, 2), 30);
  EXPECT_EQ(getQihaoForward(w.store(), 10, 3), 30);
}

TEST(QihaoForward, BehindTheNewestIsTheNewestAllTheSame) {
  TestWorkspace w;
  EXPECT_EQ(getQihaoForward(w.store(), 5, 0), 0);
  addThree(w);
  EXPECT_EQ(getQihaoForward(w.store(), 31, 0), 30);
}

TEST(LastDate, IsNothingInAnEmptyHistory) {
  TestWorkspace w;
  EXPECT_FALSE(getLastDate(w.store()).has_value());
}

TEST(LastDate, IsTheLatestDateNotThatOfTheNewestPeriod) {
  TestWorkspace w;
  addThree(w);
  w.store().execute("test", "UPDATE 历史记录 SET 开奖日期 = ? WHERE 期号 = 20", dayCountOf(QDate(2024, 2, 29)) + 0.75);
  EXPECT_EQ(getLastDate(w.store()), QDate(2024, 2, 29));
}

TEST(LastDate, PassesOverRowsWithoutADate) {
  TestWorkspace w;
  addThree(w);
  w.store().execute("test", "UPDATE 历史记录 SET 开奖日期 = NULL");
  EXPECT_FALSE(getLastDate(w.store()).has_value());
  w.store().execute("test", "UPDATE 历史记录 SET 开奖日期 = 2 WHERE 期号 = 10");
  EXPECT_EQ(getLastDate(w.store()), QDate(1900, 1, 1));
}

TEST(DrawOf, GivesTheNumbersOrNothing) {
  TestWorkspace w;
  addThree(w);
  EXPECT_EQ(drawOf(w.store(), 20), drawFrom(u"02 03 04 05 06"_s));
  EXPECT_FALSE(drawOf(w.store(), 21).has_value());
}

TEST(Navigators, NameTheirPurposeWhenTheHistoryIsGone) {
  TestWorkspace w;
  w.store().execute("test", "DROP TABLE 历史记录");
  try {
    getLastQihao(w.store());
    FAIL() << "no fault";
  } catch (const StoreError& fault) {
    EXPECT_TRUE(fault.message().startsWith(u"查找期号失败："_s)) << fault.message().toStdString();
  }
}

/// What a block holds at a slot, as a draw.
Draw slotOf(const LookBackBlock& block, int slot) {
  Draw draw{};
  for (int position = 1; position <= drawSize; ++position)
    draw[static_cast<std::size_t>(position - 1)] = block.at(position, slot);
  return draw;
}

LookBackBlock filledWith(std::int16_t mark) {
  LookBackBlock block;
  for (int slot = 1; slot <= LookBackBlock::depth; ++slot)
    for (int position = 1; position <= drawSize; ++position)
      block.at(position, slot) = mark;
  return block;
}

constexpr Draw untouched{99, 99, 99, 99, 99};

TEST(HistoryRecord, HoldsTheNearestPeriodInSlot1AndTheTenthInSlot10) {
  TestWorkspace w;
  for (int period = 1; period <= 12; ++period)
    w.addDraws(u"%1 %2 08 09 10 11"_s.arg(period * 10).arg(period % 7 + 1));
  LookBackBlock block = filledWith(99);
  EXPECT_EQ(getHistoryRecord(w.store(), block, 120), 10);
  EXPECT_EQ(slotOf(block, 1), drawFrom(u"05 08 09 10 11"_s));   // period 110
  EXPECT_EQ(slotOf(block, 2), drawFrom(u"04 08 09 10 11"_s));   // period 100
  EXPECT_EQ(slotOf(block, 10), drawFrom(u"03 08 09 10 11"_s));  // period 20
}

TEST(HistoryRecord, WithFewerThanTenStillFillsFromSlot10) {
  TestWorkspace w;
  addThree(w);
  LookBackBlock block = filledWith(99);
  EXPECT_EQ(getHistoryRecord(w.store(), block, 31), 3);
  EXPECT_EQ(slotOf(block, 10), drawFrom(u"01 02 03 04 05"_s));
  EXPECT_EQ(slotOf(block, 9), drawFrom(u"02 03 04 05 06"_s));
  EXPECT_EQ(slotOf(block, 8), drawFrom(u"03 04 05 06 07"_s));
  for (int slot = 1; slot <= 7; ++slot)
    EXPECT_EQ(slotOf(block, slot), untouched) << slot;
}

TEST(HistoryRecord, LeavesTheBlockAloneBeforeTheFirstPeriod) {
  TestWorkspace w;
  addThree(w);
  LookBackBlock block = filledWith(99);
  EXPECT_EQ(getHistoryRecord(w.store(), block, 10), 0);
  for (int slot = 1; slot <= 10; ++slot)
    EXPECT_EQ(slotOf(block, slot), untouched) << slot;
}

TEST(HistoryRecord, TheConstantIsAnOrdinaryPeriodWhereItExists) {
  // Nothing lies before 2003001, so both ends of the range are the constant, and its own row answers.
  TestWorkspace w;
  w.addDraws(u"2003001 01 02 03 04 05"_s);
  LookBackBlock block = filledWith(99);
  EXPECT_EQ(getHistoryRecord(w.store(), block, 2003001), 1);
  EXPECT_EQ(slotOf(block, 10), drawFrom(u"01 02 03 04 05"_s));
}

TEST(LookBackBlock, RefusesSlotsAndPositionsThatDoNotExist) {
  LookBackBlock block;
  EXPECT_THROW(static_cast<void>(block.at(1, 0)), std::out_of_range);
  EXPECT_THROW(static_cast<void>(block.at(1, 11)), std::out_of_range);
  EXPECT_THROW(static_cast<void>(block.at(0, 5)), std::out_of_range);
  EXPECT_THROW(static_cast<void>(block.at(6, 5)), std::out_of_range);
}

/// A history with gaps, and a period to ask for that stands in it, beside it or far from it.
struct Asked {
  std::vector<Qihao> periods;  ///< ascending
  Qihao period;
  int steps;
};

Asked arbitraryQuestion(Store& store) {
  const auto chosen = *rc::gen::container<std::set<Qihao>>(rc::gen::inRange(1, 60));
  store.execute("test", "DELETE FROM 历史记录");
  Statement insert = store.query("test",
                                 "INSERT INTO 历史记录 (期号, 号码1, 号码2, 号码3, 号码4, 号码5)"
                                 " VALUES (?, 1, 2, 3, 4, ?)");
  for (const Qihao period : chosen)
    insert.run(period, 5 + period % 7);
  return {{chosen.begin(), chosen.end()}, *rc::gen::inRange(0, 62), *rc::gen::inRange(0, 14)};
}

TEST(RandomHistories, NavigatorsAgreeWithASortedList) {
  TestWorkspace w;
  StoreTransaction transaction(w.store());
  EXPECT_TRUE(rc::check("navigators find what counting in a sorted list finds", [&w] {
    const Asked asked = arbitraryQuestion(w.store());
    const auto& all = asked.periods;
    const int size = static_cast<int>(all.size());
    const auto at = [&](int index) { return all[static_cast<std::size_t>(index)]; };
    int before = 0;  // periods below the one asked for
    int upTo = 0;    // and with it
    for (const Qihao p : all) {
      before += p < asked.period ? 1 : 0;
      upTo += p <= asked.period ? 1 : 0;
    }
    const int n = asked.steps;
    RC_ASSERT(getLastQihao(w.store()) == (size == 0 ? 0 : all.back()));
    RC_ASSERT(getNextQihao(w.store()) == (size == 0 ? 0 : all.back() + 1));
    RC_ASSERT(getFirstQihao(w.store()) == (size == 0 ? 0 : all.front()));
    RC_ASSERT(getPrevQihao(w.store(), asked.period, n + 1) ==
              (before == 0 ? 2003001 : at(std::max(0, before - (n + 1)))));
    RC_ASSERT(getQihaoBack(w.store(), asked.period, n) == (upTo == 0 ? 0 : at(std::max(0, upTo - 1 - n))));
    RC_ASSERT(getQihaoForward(w.store(), asked.period, n) == (size == 0 ? 0 : at(std::min(size - 1, before + n))));
  }));
}

TEST(RandomHistories, TheLookBackBlockHoldsTheTenPeriodsBefore) {
  TestWorkspace w;
  StoreTransaction transaction(w.store());
  EXPECT_TRUE(rc::check("slots fall from 10 with the rows, oldest first", [&w] {
    const Asked asked = arbitraryQuestion(w.store());
    std::vector<Qihao> before;
    for (const Qihao p : asked.periods)
      if (p < asked.period)
        before.push_back(p);
    if (before.size() > 10)
      before.erase(before.begin(), before.end() - 10);
    LookBackBlock block = filledWith(99);
    RC_ASSERT(getHistoryRecord(w.store(), block, asked.period) == static_cast<int>(before.size()));
    for (int slot = 1; slot <= 10; ++slot) {
      const auto row = static_cast<std::size_t>(10 - slot);
      RC_ASSERT(block.at(5, slot) == (row < before.size() ? 5 + before[row] % 7 : 99));
    }
  }));
}

}  // namespace
}  // namespace elevenfive
