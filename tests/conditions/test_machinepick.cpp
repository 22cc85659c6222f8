#include "conditions/machinepick.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <deque>
#include <random>
#include <set>

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

TEST(MachinePick, QuestionHasItsTexts) {
  const InputBox box = machinePickQuestion();
  EXPECT_EQ(box.prompt, u"您需要生成几注号码？(最多5注)"_s);
  EXPECT_EQ(box.title, u"请输入您需要的注数"_s);
  EXPECT_EQ(box.defaultText, u"5"_s);
}

TEST(MachinePick, CountsBelowOneGiveNone) {
  EXPECT_EQ(machineTicketCount(QString()), 0);
  EXPECT_EQ(machineTicketCount(u"0"_s), 0);
  EXPECT_EQ(machineTicketCount(u"-1"_s), 0);
  EXPECT_EQ(machineTicketCount(u"abc"_s), 0);
}

TEST(MachinePick, CountsAboveFiveGiveFive) {
  EXPECT_EQ(machineTicketCount(u"7"_s), 5);
  EXPECT_EQ(machineTicketCount(u"5"_s), 5);
  EXPECT_EQ(machineTicketCount(u" 3 "_s), 3);
  EXPECT_EQ(machineTicketCount(u"99999999999999"_s), 5);
  EXPECT_EQ(machineTicketCount(u"0000000003"_s), 3);
  EXPECT_EQ(machineTicketCount(u"000000000000"_s), 0);
}

TEST(MachinePick, FractionsBecomeNumbersAndRepeatsAreDrawnAgain) {
  // The integer part of fraction x 11 + 1: 0 -> 1, 0.5 -> 6, 0.99 -> 11, 0.1 -> 2, 0.2 -> 3.
  std::deque<double> fractions{0.99, 0.0, 0.0, 0.99, 0.5, 0.1, 0.2};
  const auto tickets = machinePick(1, [&] {
    const double fraction = fractions.front();
    fractions.pop_front();
    return fraction;
  });
  EXPECT_EQ(tickets, (std::vector<Draw>{{11, 1, 6, 2, 3}}));
  EXPECT_TRUE(fractions.empty());
}

TEST(MachinePick, TicketsHoldFiveDifferentNumbersEach) {
  EXPECT_TRUE(rc::check("five different numbers of 1 to 11", [](unsigned seed) {
    const int count = *rc::gen::inRange(0, mostMachineTickets + 1);
    std::mt19937 engine(seed);
    std::uniform_real_distribution<double> fraction(0.0, 1.0);
    const auto tickets = machinePick(count, [&] { return fraction(engine); });
    RC_ASSERT(tickets.size() == static_cast<std::size_t>(count));
    for (const Draw& ticket : tickets) {
      RC_ASSERT(std::set<int>(ticket.begin(), ticket.end()).size() == 5U);
      RC_ASSERT(*std::min_element(ticket.begin(), ticket.end()) >= 1);
      RC_ASSERT(*std::max_element(ticket.begin(), ticket.end()) <= 11);
    }
  }));
}

}  // namespace

}  // namespace elevenfive
