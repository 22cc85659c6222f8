#include "history/miss.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cfenv>
#include <cmath>

#include "model/errors.h"
#include "tests/history/historytools.h"
#include "tests/history/slowhistory.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class Miss : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  RecordingPorts ports;
  RecordingPanels panels;

  YilouNow& now() { return workspace.workspace().yilouNow; }

  MissLabels labels(Qihao q) { return calcYilou(workspace.store(), q, true, now(), &ports, ports); }

  /// The current misses at q, "0 | 1 2 .. 11".
  QString current(Qihao q) {
    calcYilou(workspace.store(), q, false, now(), nullptr, ports);
    return shownNow();
  }

  QString shownNow() {
    QStringList texts;
    for (const int miss : now())
      texts << QString::number(miss);
    texts.insert(1, u"|"_s);
    return texts.join(u' ');
  }

  QStringList scratch() { return workspace.rows("SELECT 总期号, 遗漏数据 FROM 历史记录 ORDER BY 期号"); }
};

/// Draws in which number 1 comes at the indexes 2, 3 and 7 of ten; the fillers are 6 7 8 9 10 and 2 in its place elsewhere.
constexpr QStringView tenDraws =
    u"11031501 02 07 08 09 10\n11031502 02 07 08 09 10\n11031503 01 07 08 09 10\n11031504 01 07 08 09 10\n"
    u"11031584 02 07 08 09 10\n11031601 02 07 08 09 10\n11031602 02 07 08 09 10\n11031603 01 07 08 09 10\n"
    u"11031604 02 07 08 09 10\n11031605 02 07 08 09 10";

TEST_F(Miss, FiguresOfANumberCountDrawsFromTheStartOfTheHistory) {
  workspace.addDraws(tenDraws.toString());
  const MissFigures one = labels(11031605).numbers[1];
  // gaps 2, 0, 3: longest 3, sum 5 by 2 is 2.5, to the even 2
  EXPECT_EQ(one, (MissFigures{3, 2, 2, 3, 3}));
}

TEST_F(Miss, TheAverageOfTwoHitsIsTheSumOfBothGaps) {
  workspace.addDraws(tenDraws.toString());
  // up to the fourth draw: hits at 2 and 3, gaps 2 and 0, divided by one
  EXPECT_EQ(labels(11031504).numbers[1], (MissFigures{2, 2, 0, 2, 0}));
}

TEST_F(Miss, HalvesRoundToTheEvenNeighbour) {
  // number 1 at 1, 2, 5 of six: gaps 1, 0, 2 by 2 is 1.5, to the even 2
  workspace.addDraws(
      u"11031501 02 07 08 09 10\n11031502 01 07 08 09 10\n11031503 01 07 08 09 10\n11031504 02 07 08 09 10\n"
      u"11031505 02 07 08 09 10\n11031506 01 07 08 09 10"_s);
  EXPECT_EQ(labels(11031506).numbers[1].average, 2);
}

TEST_F(Miss, ATwoAndAHalfRoundsDownToTwo) {
  // number 1 at 3, 4, 7 of eight: gaps 3, 0, 2 by 2
  workspace.addDraws(
      u"11031501 02 07 08 09 10\n11031502 02 07 08 09 10\n11031503 02 07 08 09 10\n11031504 01 07 08 09 10\n"
      u"11031505 01 07 08 09 10\n11031506 02 07 08 09 10\n11031507 02 07 08 09 10\n11031508 01 07 08 09 10"_s);
  EXPECT_EQ(labels(11031508).numbers[1], (MissFigures{3, 2, 0, 3, 2}));
}

TEST_F(Miss, AHalfRoundsDownToZero) {
  // number 1 at 1, 2, 3 of four: gaps 1, 0, 0 by 2
  workspace.addDraws(
      u"11031501 02 07 08 09 10\n11031502 01 07 08 09 10\n11031503 01 07 08 09 10\n11031504 01 07 08 09 10"_s);
  EXPECT_EQ(labels(11031504).numbers[1], (MissFigures{1, 0, 0, 3, 0}));
}

TEST_F(Miss, ANumberOfTheNewestDrawHasNone) {
  workspace.addDraws(tenDraws.toString());
  EXPECT_EQ(labels(11031605).numbers[7].current, 0);
  EXPECT_EQ(labels(11031603).numbers[1].current, 0);
}

TEST_F(Miss, ANumberThatNeverCameShowsTheOneBeforeIt) {
  workspace.addDraws(tenDraws.toString());
  const MissLabels all = labels(11031605);
  MissFigures expected = all.numbers[2];
  expected.hits = 0;
  EXPECT_EQ(all.numbers[3], expected);
  EXPECT_EQ(all.numbers[6], expected);
}

TEST_F(Miss, ANumberThatCameOnceShowsTheOneBeforeItToo) {
  workspace.addDraws(
      u"11031501 01 02 03 04 05\n11031502 01 02 03 04 06\n11031503 01 07 08 09 10\n11031504 01 07 08 09 10"_s);
  const MissLabels all = labels(11031504);
  EXPECT_EQ(all.numbers[4], (MissFigures{0, 0, 2, 2, 0}));
  EXPECT_EQ(all.numbers[5], (MissFigures{0, 0, 2, 1, 0}));  // came once, three draws ago
}

TEST_F(Miss, NumberOneThatNeverCameShowsZero) {
  workspace.addDraws(u"11031501 02 03 04 05 06\n11031502 07 08 09 10 11"_s);
  EXPECT_EQ(labels(11031502).numbers[1], MissFigures{});
  EXPECT_EQ(current(11031502), u"0 | 0 0 0 0 0 0 0 0 0 0 0"_s);  // no number came twice
}

TEST_F(Miss, TheCurrentOnesAndTheirLargestGoToTheWindow) {
  workspace.addDraws(tenDraws.toString());
  EXPECT_EQ(current(11031605), u"2 | 2 0 0 0 0 0 0 0 0 0 0"_s);
  EXPECT_EQ(current(11031603), u"1 | 0 1 1 1 1 1 0 0 0 0 0"_s);
}

TEST_F(Miss, LabelsLeaveTheCurrentOnesOfTheWindow) {
  workspace.addDraws(tenDraws.toString());
  now() = {99, 5, 4, 3, 2, 1, 0, 0, 0, 0, 0, 0};
  labels(11031605);
  EXPECT_EQ(shownNow(), u"5 | 5 4 3 2 1 0 0 0 0 0 0"_s);
}

TEST_F(Miss, TheLongestOfAllIsForScaling) {
  workspace.addDraws(tenDraws.toString());
  EXPECT_EQ(labels(11031605).longestAll, 3);
}

TEST_F(Miss, OfAMissingPeriodComesOutNegative) {
  workspace.addDraws(tenDraws.toString());
  EXPECT_EQ(current(11031604 + 50), u"-7 | -7 -9 -9 -9 -9 -9 -9 -9 -9 -9 -9"_s);
}

TEST_F(Miss, OfAnEmptyHistoryIsZero) {
  now() = {9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9};
  EXPECT_EQ(current(11031501), u"0 | 0 0 0 0 0 0 0 0 0 0 0"_s);
}

TEST_F(Miss, RowsAreNumberedFromZeroAndMarkedWithTheirLargestNumber) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031584 02 03 04 05 11\n11031601 01 06 07 08 09"_s);
  labels(11031601);
  EXPECT_EQ(scratch(), (QStringList{u"0 5"_s, u"1 11"_s, u"2 9"_s}));
}

TEST_F(Miss, RowsAreMarkedAlikeWhateverTheirNeighboursAndTheOrderOfTheirNumbers) {
  QString lines;
  QStringList expected;
  for (int i = 0; i < 700;
       ++i) {  // 600 periods in a row, then gaps; now and then a draw that is not sorted or lacks a number
    const Qihao period = 11030000 + i + (i > 600 ? i * 3 : 0);
    const bool odd = i % 50 == 7;
    lines += QString::number(period) + (odd ? (i % 100 == 7 ? u" 09 02 03 04 05\n"_s : u" 01 02 03 04 00\n"_s)
                                            : u" 01 02 03 04 %1\n"_s.arg(5 + i % 7, 2, 10, QChar(u'0')));
    expected << u"%1 %2"_s.arg(i).arg(odd ? (i % 100 == 7 ? 9 : 4) : 5 + i % 7);
  }
  workspace.addDraws(lines);
  workspace.store().execute("test",
                            "UPDATE 历史记录 SET 总期号 = 期号 - 11030000, 遗漏数据 = 号码5 WHERE 期号 % 9 = 0");
  labels(2147483647);
  EXPECT_EQ(scratch(), expected);
}

TEST_F(Miss, ThePeriodsAtBothEndsOfTheRangeAreMarked) {
  workspace.addDraws(u"2147483646 01 02 03 04 05\n2147483647 02 03 04 05 06"_s);
  workspace.addDraws(u"-2147483648 01 02 03 04 07\n-2147483647 02 03 04 05 08"_s);
  labels(2147483647);
  EXPECT_EQ(scratch(), (QStringList{u"0 7"_s, u"1 8"_s, u"2 5"_s, u"3 6"_s}));
}

TEST_F(Miss, RowsAfterThePeriodKeepTheirIndexAndMark) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031584 02 03 04 05 11\n11031601 01 06 07 08 09"_s);
  workspace.store().execute("test", "UPDATE 历史记录 SET 总期号 = 77, 遗漏数据 = 3");
  labels(11031584);
  EXPECT_EQ(scratch(), (QStringList{u"0 5"_s, u"1 11"_s, u"77 3"_s}));
}

TEST_F(Miss, RenumberingClearsTheMarksUpToThePeriod) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031584 02 03 04 05 11\n11031601 01 06 07 08 09"_s);
  workspace.store().execute("test", "UPDATE 历史记录 SET 总期号 = 77, 遗漏数据 = 3");
  resetZongQihao(workspace.store(), 11031584, ports);
  EXPECT_EQ(scratch(), (QStringList{u"0 0"_s, u"1 0"_s, u"77 3"_s}));
  EXPECT_EQ(ports.yields, 2);
}

TEST_F(Miss, TheBarIsShownForLabelsOnly) {
  workspace.addDraws(tenDraws.toString());
  calcYilou(workspace.store(), 11031605, false, now(), &ports, ports);
  EXPECT_TRUE(ports.log.isEmpty());
  labels(11031605);
  EXPECT_EQ(ports.log, (QStringList{u"progress 0..11"_s, u"progress hidden"_s}));
}

TEST_F(Miss, TheBarCountsFromOneToTheElevenNumbersAndEventsRunForEachRowAndNumber) {
  workspace.addDraws(tenDraws.toString());
  QList<int> values;
  ports.onYield = [&](int) { values << ports.value; };
  labels(11031605);
  EXPECT_EQ(values, (QList<int>{1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
  EXPECT_EQ(ports.value, 11);
}

TEST_F(Miss, TheSumOfADrawIsTheMissesOfItsNumbersOneDrawBefore) {
  workspace.addDraws(
      u"11031501 01 02 03 04 05\n11031502 01 02 03 04 05\n11031503 07 08 09 10 11\n11031504 07 08 09 10 11\n"
      u"11031505 01 02 03 07 08"_s);
  calcYilouSum(workspace.store(), 1, 11031505, now(), &ports, ports, &panels);
  // before the third draw 06 to 11 have come less than twice and show what 05 shows: 0; before the fourth 07 to 11 have come
  // once and show the miss of 05: 1 each; before the last 01 to 03 are absent for two draws, 07 and 08 have just come
  EXPECT_EQ(workspace.rows("SELECT 遗漏值总和 FROM 历史记录 ORDER BY 期号"),
            (QStringList{u"-"_s, u"0"_s, u"0"_s, u"5"_s, u"6"_s}));
  EXPECT_EQ(ports.log, (QStringList{u"progress 0..5"_s, u"progress hidden"_s}));
  EXPECT_EQ(panels.log, (QStringList{u"2:  ■■■■■  正在统计各期号码的遗漏值。。。。。。  "_s, u"2:"_s}));
}

TEST_F(Miss, ANumberZeroCountsForTheLargestMiss) {
  workspace.addDraws(
      u"11031501 01 02 03 04 05\n11031502 01 02 03 04 05\n11031503 07 08 09 10 11\n11031504 07 08 09 10 11\n"
      u"11031505 04 07 08 09 10\n11031506 04 07 08 09 00"_s);
  calcYilouSum(workspace.store(), 11031506, 11031506, now(), nullptr, ports);
  // before the last draw 04 and 07 to 09 have just come, 01 to 03 are absent for three draws, which no number exceeds
  EXPECT_EQ(workspace.rows("SELECT 遗漏值总和 FROM 历史记录 WHERE 期号 = 11031506"), QStringList{u"3"_s});
}

TEST_F(Miss, TheSumOfARangeOfTheFirstRowAloneWritesNothing) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031502 01 02 03 04 05"_s);
  calcYilouSum(workspace.store(), 11031501, 11031501, now(), nullptr, ports);
  EXPECT_EQ(workspace.rows("SELECT 遗漏值总和, 总期号, 遗漏数据 FROM 历史记录"), (QStringList{u"- - -"_s, u"- - -"_s}));
}

TEST_F(Miss, TheSumOfARowWithANumberAboveElevenIsAFault) {
  workspace.addDraws(u"11031501 01 02 03 04 05\n11031502 01 02 03 04 12"_s);
  EXPECT_THROW(calcYilouSum(workspace.store(), 1, 11031502, now(), &ports, ports), NumberFault);
  EXPECT_FALSE(ports.visible);
}

/// The figures of all numbers at draw q, number by number over lists of hits.
MissLabels slowFigures(const SlowHistory& history, std::size_t last, int zongNow) {
  MissLabels labels;
  MissFigures figures;
  for (int n = 1; n <= numberCount; ++n) {
    std::vector<int> hits;
    for (std::size_t i = 0; i <= last; ++i)
      if (history[i].numbers.count(n) > 0)
        hits.push_back(static_cast<int>(i));
    figures.hits = static_cast<int>(hits.size());
    if (hits.size() > 1) {
      std::vector<int> gaps{hits[0]};
      for (std::size_t h = 1; h < hits.size(); ++h)
        gaps.push_back(hits[h] - hits[h - 1] - 1);
      double sum = 0;
      for (const int gap : gaps)
        sum += gap;
      figures.longest = *std::max_element(gaps.begin(), gaps.end());
      figures.average = static_cast<int>(std::nearbyint(sum / static_cast<double>(hits.size() - 1)));
      figures.current = zongNow - hits.back();
      figures.lastGap = gaps.back();
    }
    labels.numbers[static_cast<std::size_t>(n)] = figures;
    labels.longestAll = std::max(labels.longestAll, figures.longest);
  }
  return labels;
}

TEST_F(Miss, FiguresAgreeWithTheListsOfHits) {
  ASSERT_EQ(std::fegetround(), FE_TONEAREST);
  EXPECT_TRUE(rc::check("any period of a random history", [&] {
    const SlowHistory history = anyHistory(1, 30);
    workspace.store().execute("test", "DELETE FROM 历史记录");
    workspace.addDraws(textOf(history));
    const auto i = *rc::gen::inRange<std::size_t>(0, history.size());
    const MissLabels expected = slowFigures(history, i, static_cast<int>(i));
    const MissLabels got = labels(history[i].qihao);
    RC_ASSERT(got.numbers == expected.numbers);
    RC_ASSERT(got.longestAll == expected.longestAll);
    calcYilou(workspace.store(), history[i].qihao, false, now(), nullptr, ports);
    for (std::size_t n = 1; n < now().size(); ++n)
      RC_ASSERT(now()[n] == expected.numbers[n].current);
    RC_ASSERT(now()[0] == *std::max_element(now().begin() + 1, now().end()));
  }));
}

TEST_F(Miss, SumsAgreeWithAskingForTheMissesBeforeEachDraw) {
  EXPECT_TRUE(rc::check("any range of a random history", [&] {
    const SlowHistory history = anyHistory(2, 25);
    workspace.store().execute("test", "DELETE FROM 历史记录");
    workspace.addDraws(textOf(history));
    const auto a = *rc::gen::inRange<std::size_t>(1, history.size());
    const auto b = *rc::gen::inRange<std::size_t>(a, history.size());
    calcYilouSum(workspace.store(), history[a].qihao, history[b].qihao, now(), nullptr, ports);
    const QStringList rows = workspace.rows("SELECT 遗漏值总和, 总期号, 遗漏数据 FROM 历史记录 ORDER BY 期号");
    for (std::size_t i = 0; i < history.size(); ++i) {
      QString sum = u"-"_s;
      if (i >= a && i <= b) {
        const MissLabels before = slowFigures(history, i - 1, static_cast<int>(i) - 1);
        int total = 0;
        for (const int n : history[i].numbers)
          total += before.numbers[static_cast<std::size_t>(n)].current;
        sum = QString::number(total);
      }
      const QString marks = i > b ? u"- -"_s : u"%1 %2"_s.arg(i).arg(*history[i].numbers.rbegin());
      RC_ASSERT(rows[static_cast<qsizetype>(i)].toStdString() == (sum + u' ' + marks).toStdString());
    }
    const MissLabels last = slowFigures(history, b, static_cast<int>(b));
    for (std::size_t n = 1; n < now().size(); ++n)
      RC_ASSERT(now()[n] == last.numbers[n].current);
  }));
}

}  // namespace
}  // namespace elevenfive
