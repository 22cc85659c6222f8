#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "history/temperature.h"
#include "model/errors.h"
#include "tests/history/historytools.h"
#include "tests/history/slowhistory.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class Temperature : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  RecordingPorts ports;
  RecordingPanels panels;

  QString stored() { return workspace.rows("SELECT 温度值5, 温度值10 FROM 历史记录 ORDER BY 期号").join(u'|'); }
};

TEST_F(Temperature, OfTheOldestDrawIsZero) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031502 01 02 03 04 05"_s);
  EXPECT_EQ(calc_WenDu(workspace.store(), 11031501, 5), 0);
}

TEST_F(Temperature, OfAPeriodThatIsNotThereIsZero) {
  workspace.addDraws(u"11031501 01 02 03 04 05"_s);
  EXPECT_EQ(calc_WenDu(workspace.store(), 11031502, 5), 0);
}

TEST_F(Temperature, Reaches25WhereFiveDrawsBeforeWereTheSame) {
  workspace.addDraws(
      u"11031501 01 02 03 04 05\n11031502 01 02 03 04 05\n11031503 01 02 03 04 05\n"
      u"11031504 01 02 03 04 05\n11031505 01 02 03 04 05\n11031506 01 02 03 04 05\n11031507 01 02 03 04 05"_s);
  EXPECT_EQ(calc_WenDu(workspace.store(), 11031507, 5), 25);
  EXPECT_EQ(calc_WenDu(workspace.store(), 11031507, 10), 30);
  calcWenDuRange(workspace.store(), 1, 11031507, nullptr, ports);
  EXPECT_EQ(stored(), u"- -|5 5|10 10|15 15|20 20|25 25|25 30"_s);
}

TEST_F(Temperature, CountsTheDrawsBeforeAcrossGapsOfThePeriods) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031584 01 06 07 08 09\n11031601 01 02 06 10 11"_s);
  // 01 came twice, 02 and 06 once each
  EXPECT_EQ(calc_WenDu(workspace.store(), 11031601, 5), 4);
  EXPECT_EQ(calc_WenDu(workspace.store(), 11031601, 1), 2);
}

TEST_F(Temperature, ANumberThatARowHoldsTwiceCountsOnce) {
  workspace.addDraws(u"11031501 01 01 01 01 01\n11031502 01 02 03 04 05"_s);
  EXPECT_EQ(calc_WenDu(workspace.store(), 11031502, 5), 1);
  calcWenDuRange(workspace.store(), 11031502, 11031502, nullptr, ports);
  EXPECT_EQ(stored(), u"- -|1 1"_s);
}

TEST_F(Temperature, ARangeOfTheFirstRowAloneWritesNothing) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031502 01 02 03 04 06"_s);
  calcWenDuRange(workspace.store(), 11031501, 11031501, nullptr, ports);
  EXPECT_EQ(stored(), u"- -|- -"_s);
}

TEST_F(Temperature, AnEmptyRangeWritesNothingAndHidesTheBar) {
  calcWenDuRange(workspace.store(), 1, 5, &ports, ports);
  EXPECT_FALSE(ports.visible);
  EXPECT_EQ(stored(), u""_s);
}

TEST_F(Temperature, TheBarCountsRowsAndThePanelNamesThem) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031502 01 02 03 04 06\n11031503 01 02 03 04 07"_s);
  calcWenDuRange(workspace.store(), 1, 11031503, &ports, ports, &panels);
  EXPECT_EQ(ports.log, (QStringList{u"progress 0..3"_s, u"progress hidden"_s}));
  EXPECT_EQ(ports.value, 3);
  EXPECT_EQ(panels.log, (QStringList{u"2:   正在统计 11031502 期号码的温度值。。。。。。  "_s,
                                     u"2:   正在统计 11031503 期号码的温度值。。。。。。  "_s, u"2:"_s}));
}

TEST_F(Temperature, WithoutABarThePanelKeepsTheLastPeriod) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031502 01 02 03 04 06"_s);
  calcWenDuRange(workspace.store(), 1, 11031502, nullptr, ports, &panels);
  EXPECT_EQ(panels.log, QStringList{u"2:   正在统计 11031502 期号码的温度值。。。。。。  "_s});
}

TEST_F(Temperature, ANumberOutsideIsAFaultThatNamesThePeriod) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031502 01 02 03 04 12"_s);
  EXPECT_THROW(calc_WenDu(workspace.store(), 11031502, 5), NumberFault);
  EXPECT_THROW(calcWenDuRange(workspace.store(), 1, 11031502, &ports, ports), NumberFault);
  EXPECT_FALSE(ports.visible);
}

TEST_F(Temperature, OfEachDrawAgreesWithCountingTheDrawsBefore) {
  EXPECT_TRUE(rc::check("any period of a random history, over any span", [&] {
    const SlowHistory history = anyHistory(1, 30);
    workspace.store().execute("test", "DELETE FROM 历史记录");
    workspace.addDraws(textOf(history));
    const auto i = *rc::gen::inRange<std::size_t>(0, history.size());
    const auto n = *rc::gen::inRange(1, 13);
    RC_ASSERT(calc_WenDu(workspace.store(), history[i].qihao, n) ==
              slowTemperature(history, i, static_cast<std::size_t>(n)));
  }));
}

TEST_F(Temperature, ARangeAgreesWithCountingTheDrawsBefore) {
  EXPECT_TRUE(rc::check("any range of a random history", [&] {
    const SlowHistory history = anyHistory(2, 30);
    workspace.store().execute("test", "DELETE FROM 历史记录");
    workspace.addDraws(textOf(history));
    const auto a = *rc::gen::inRange<std::size_t>(1, history.size());
    const auto b = *rc::gen::inRange<std::size_t>(a, history.size());
    calcWenDuRange(workspace.store(), history[a].qihao, history[b].qihao, nullptr, ports);
    const QStringList rows = workspace.rows("SELECT 温度值5, 温度值10 FROM 历史记录 ORDER BY 期号");
    for (std::size_t i = 0; i < history.size(); ++i) {
      const QString expected =
          i < a || i > b ? u"- -"_s
                         : u"%1 %2"_s.arg(slowTemperature(history, i, 5)).arg(slowTemperature(history, i, 10));
      RC_ASSERT(rows[static_cast<qsizetype>(i)] == expected);
    }
  }));
}

}  // namespace
}  // namespace elevenfive
