#include "acquire/pagetext.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "history/historytable.h"
#include "model/daycount.h"
#include "model/errors.h"
#include "model/texts.h"
#include "tests/history/historytools.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

const QDate today(2011, 3, 16);

class PageText : public ::testing::Test {
 protected:
  PageCounts scan(const QString& text, Qihao lastQihao = 2003001) {
    return scanPage(data.store(), text, today, lastQihao, ports);
  }

  QStringList draws() {
    return data.rows("SELECT 期号, 号码1, 号码2, 号码3, 号码4, 号码5 FROM 历史记录 ORDER BY 期号");
  }

  TestWorkspace data;
  RecordingPorts ports;
};

TEST_F(PageText, ALineGivesThePeriodWithItsZeroAndTheNumbersAscending) {
  scan(u"11031510\t07\t03\t11\t01\t05\t03-15 17:50"_s);
  EXPECT_EQ(draws(), QStringList{u"110315010 1 3 5 7 11"_s});
}

TEST_F(PageText, ALineOf31CharactersIsADrawAndOneOf30IsNot) {
  const QString line31 = u"11031510 01 02 03 04 05 12:3456"_s;
  ASSERT_EQ(line31.size(), 31);
  EXPECT_TRUE(readPageLine(line31));
  EXPECT_FALSE(readPageLine(line31.chopped(1)));
}

TEST_F(PageText, OnlyTheLast25CharactersAreHeldToTheirForm) {
  const QString tail = u"1510 01 02 03 04 05 12:34"_s;
  ASSERT_EQ(tail.size(), 25);
  EXPECT_EQ(readPageLine(u"第 1103 "_s + tail)->qihao, 110315010);
  EXPECT_FALSE(readPageLine(u"第1103期"_s + tail + u"分"_s));
  EXPECT_FALSE(readPageLine(u"11031510期 01 02 03 04 05 12:34:56"_s));  // 期 is the 25th from the end
  EXPECT_FALSE(readPageLine(u"1103"_s + tail.chopped(1) + u'．' + u"99"_s));
}

TEST_F(PageText, FullWidthDigitsAndOtherBlanksDoNotMakeALine) {
  EXPECT_FALSE(readPageLine(u"11031510 01 02 03 04 05 12:34:5６"_s));
  EXPECT_FALSE(readPageLine(u"11031510 01 02 03 04 05 12:34:56\u00A0"_s));
}

TEST_F(PageText, FurtherDigitsOfALineCountForNothing) {
  EXPECT_EQ(readPageLine(u"11031510 01 02 03 04 05 06 07 08 09 10 11"_s)->numbers, drawFrom(u"01 02 03 04 05"_s));
}

TEST_F(PageText, ATwelveCountsAsEleven) {
  EXPECT_EQ(readPageLine(u"11031510 12 02 03 04 05 17:50:00"_s)->numbers, drawFrom(u"02 03 04 05 11"_s));
  EXPECT_EQ(readPageLine(u"11031510 99 02 03 04 05 17:50:00"_s)->numbers, drawFrom(u"02 03 04 05 11"_s));
}

TEST_F(PageText, ATwelveBesideAnElevenLeavesFourNumbersAndNoRecord) {
  const PageCounts counts = scan(u"11031510 11 12 03 04 05 17:50:00"_s);
  EXPECT_EQ(counts.qualified, 1);
  EXPECT_EQ(counts.rowsDone, 0);
  EXPECT_EQ(draws(), QStringList());
}

TEST_F(PageText, ARepeatedNumberAndAZeroLeaveNoRecord) {
  EXPECT_FALSE(readPageLine(u"11031510 03 02 03 04 05 17:50:00"_s)->numbers);
  EXPECT_FALSE(readPageLine(u"11031510 00 02 03 04 05 17:50:00"_s)->numbers);
}

TEST_F(PageText, ALineWithTooFewDigitsQualifiesWithoutARecord) {
  const PageCounts counts = scan(u"2011-03-15                     "_s);
  EXPECT_EQ(counts.qualified, 1);
  EXPECT_EQ(counts.rowsDone, 0);
}

TEST_F(PageText, APeriodOfZeroMakesNoRecord) {
  const std::optional<PageLine> line = readPageLine(u"00000000 01 02 03 04 05 17:50:00"_s);
  EXPECT_TRUE(line->numbers);
  EXPECT_EQ(line->qihao, 0);
  EXPECT_EQ(scan(u"00000000 01 02 03 04 05 17:50:00"_s).rowsDone, 0);
}

TEST_F(PageText, TabsReadAsBlanksAndEveryKindOfLineEndAsOne) {
  EXPECT_EQ(scanText(u"a\tb\nc\r\nd"_s), u"a b\r\nc\r\nd"_s);
  const PageCounts counts =
      scan(u"广东11选5\n11031510\t01\t02\t03\t04\t05\t17:50:00\r\n\n11031511\t01\t02\t03\t04\t06\t18:00:00"_s);
  EXPECT_EQ(counts.lines, 4);
  EXPECT_EQ(counts.rowsDone, 2);
}

TEST_F(PageText, AllDrawsTakeTheDayOfTheDownload) {
  data.addDraws(u"110315010 07 08 09 10 11"_s);
  scan(u"11031510 01 02 03 04 05 03-15 17:50\n11031401 01 02 03 04 06 03-14 09:00"_s);
  EXPECT_EQ(draws(), (QStringList{u"110314001 1 2 3 4 6"_s, u"110315010 1 2 3 4 5"_s}));
  EXPECT_EQ(data.store().value("test", "SELECT COUNT(*) FROM 历史记录 WHERE 开奖日期 = ?", dayCountOf(today)), 2);
}

TEST_F(PageText, TheCountersHoldTheSmallestAndLargestPeriod) {
  const PageCounts counts = scan(
      u"11031512 01 02 03 04 05 17:50:00\n11031510 01 02 03 04 06 17:50:00\n11031511 01 02 03 04 07 17:50:00\nrest"_s);
  EXPECT_EQ(counts.lines, 4);
  EXPECT_EQ(counts.qualified, 3);
  EXPECT_EQ(counts.rowsDone, 3);
  EXPECT_EQ(counts.lowQihao, 110315010);
  EXPECT_EQ(counts.highQihao, 110315012);
}

TEST_F(PageText, TheLargestPeriodBeginsWithWhatItWasHanded) {
  const PageCounts counts = scan(u"11031510 01 02 03 04 05 17:50:00"_s, 120101001);
  EXPECT_EQ(counts.lowQihao, 110315010);
  EXPECT_EQ(counts.highQihao, 120101001);
  EXPECT_EQ(scan(QString()).lowQihao, 0);
}

TEST_F(PageText, ADrawThatTheTableRefusesEndsNeitherTheScanNorTheOthers) {
  data.store().execute("test",
                       "CREATE TRIGGER refuse BEFORE INSERT ON 历史记录 WHEN NEW.期号 = 110315012"
                       " BEGIN SELECT RAISE(ABORT, 'refused'); END");
  const PageCounts counts =
      scan(u"11031511 01 02 03 04 05 17:50:00\n11031512 01 02 03 04 06 17:50:00\n11031513 01 02 03 04 07 17:50:00"_s);
  EXPECT_EQ(counts.qualified, 3);
  EXPECT_EQ(counts.rowsDone, 2);
  EXPECT_EQ(counts.fault, u"保存开奖记录失败：数值超出允许的范围。"_s);
  EXPECT_EQ(draws(), (QStringList{u"110315011 1 2 3 4 5"_s, u"110315013 1 2 3 4 7"_s}));
}

TEST_F(PageText, AFullDiskTakesNoneOfTheDrawsBeforeItAlong) {
  QString text;
  for (int i = 0; i < 4000; ++i)
    text += u"%1 01 02 03 04 05 17:50:00\n"_s.arg(11010100 + i);
  limitGrowth(data.store(), 8);
  const PageCounts counts = scan(text);
  EXPECT_FALSE(counts.fault.isEmpty());
  EXPECT_GT(counts.rowsDone, 0);
  EXPECT_LT(counts.rowsDone, 4000);
  EXPECT_EQ(data.store().value("test", "SELECT COUNT(*) FROM 历史记录"), counts.rowsDone);
  EXPECT_EQ(data.store().value("test", "SELECT MAX(期号) FROM 历史记录"), counts.highQihao);
}

TEST_F(PageText, AStopIsAskedForBeforeEachLine) {
  int asked = 0;
  const PageCounts counts =
      scanPage(data.store(), u"11031510 01 02 03 04 05 17:50:00\nnothing\n11031511 01 02 03 04 06 17:50:00"_s, today, 0,
               ports, {}, [&asked] { return ++asked == 3; });
  EXPECT_EQ(asked, 3);
  EXPECT_EQ(counts.lines, 3);
  EXPECT_EQ(draws(), QStringList{u"110315010 1 2 3 4 5"_s});
}

TEST_F(PageText, AFaultOfTheFirstDerivationDoesNotKeepTheSecondFromRunning) {
  PageCounts counts = scan(u"11031512 01 02 03 04 06 17:50:00\n11031511 01 02 03 04 05 17:40:00"_s);
  data.store().execute("test",
                       "CREATE TRIGGER refuse BEFORE UPDATE ON 历史记录 WHEN NEW.期号 = 110315012"
                       " BEGIN SELECT RAISE(ABORT, 'refused'); END");
  deriveScanned(data.store(), counts, nullptr, ports, nullptr);
  EXPECT_FALSE(counts.fault.isEmpty());
  EXPECT_EQ(data.rows("SELECT 期号 FROM 历史记录 WHERE 和值 = 15"), QStringList{u"110315011"_s});
}

TEST_F(PageText, AFaultOfTheDerivationDoesNotTakeThePlaceOfTheScans) {
  data.store().execute("test",
                       "CREATE TRIGGER refuse BEFORE INSERT ON 历史记录 WHEN NEW.期号 = 110315012"
                       " BEGIN SELECT RAISE(ABORT, 'refused'); END");
  PageCounts counts = scan(u"11031512 01 02 03 04 06 17:50:00\n11031511 01 02 03 04 05 17:40:00"_s);
  const QString first = counts.fault;
  ASSERT_FALSE(first.isEmpty());
  data.store().execute("test", "DROP TABLE 历史记录");
  deriveScanned(data.store(), counts, nullptr, ports, nullptr);
  EXPECT_EQ(counts.fault, first);
}

TEST_F(PageText, EveryLineWithTheFormIsToldAndCanEndTheScan) {
  QList<Qihao> told;
  const PageCounts counts = scanPage(
      data.store(),
      u"11031510 01 02 03 04 05 17:50:00\n11031511 01 01 03 04 05 17:50:00\n11031512 01 02 03 04 05 17:50:00"_s, today,
      0, ports, [&](Qihao period) {
        told << period;
        return told.size() < 2;
      });
  EXPECT_EQ(told, (QList<Qihao>{110315010, 110315011}));
  EXPECT_EQ(counts.lines, 3);
  EXPECT_EQ(counts.rowsDone, 1);
  EXPECT_EQ(draws(), QStringList{u"110315010 1 2 3 4 5"_s});
}

TEST_F(PageText, EventsRunAfterEachLine) {
  scan(u"a\nb\nc"_s);
  EXPECT_EQ(ports.yields, 3);
}

TEST_F(PageText, TheRangeIsDerivedWholeAndItsOldestDrawOnceMoreAlone) {
  // Sums 15, 18, 20; against the draw before, overlaps 0, 4 and 3.
  PageCounts counts =
      scan(u"11031503 02 03 04 05 06 17:50:00\n11031502 01 02 03 04 08 17:40:00\n11031501 01 02 03 04 05 17:30:00"_s);
  deriveScanned(data.store(), counts, nullptr, ports, nullptr);
  EXPECT_EQ(data.rows("SELECT 期号, 和值, 重叠号 FROM 历史记录 ORDER BY 期号"),
            (QStringList{u"110315001 15 0"_s, u"110315002 18 4"_s, u"110315003 20 3"_s}));
}

TEST_F(PageText, ASingleDrawIsDerivedAgainstTheOneBeforeIt) {
  data.addDraws(u"110315001 01 02 03 04 05"_s);
  PageCounts counts = scan(u"11031502 01 02 03 04 08 17:40:00"_s);
  deriveScanned(data.store(), counts, nullptr, ports, nullptr);
  EXPECT_EQ(data.rows("SELECT 期号, 和值, 重叠号 FROM 历史记录 ORDER BY 期号").last(), u"110315002 18 4"_s);
}

TEST_F(PageText, WithoutARecordNothingIsDerived) {
  data.addDraws(u"110315001 01 02 03 04 05"_s);
  PageCounts counts = scan(u"nothing"_s, 110315001);
  deriveScanned(data.store(), counts, nullptr, ports, nullptr);
  EXPECT_EQ(counts.underivable, QString());
  EXPECT_EQ(data.rows("SELECT 和值 FROM 历史记录"), QStringList{u"-"_s});
}

TEST_F(PageText, ADrawOutOfRangeInTheTableEndsTheDerivationAndIsNamed) {
  data.addDraws(u"110315001 01 02 03 04 05\n110315002 01 02 03 04 00\n110315004 01 02 03 04 05"_s);
  PageCounts counts = scan(u"11031501 01 02 03 04 06 17:40:00"_s, 110315004);
  deriveScanned(data.store(), counts, nullptr, ports, nullptr);
  EXPECT_EQ(counts.underivable,
            u"第 110315002 期的号码 00 不在 01 到 11 之间，统计到此为止。请更正或删除这一期后再统计。"_s);
  EXPECT_EQ(draws().first(), u"110315001 1 2 3 4 6"_s);
  EXPECT_EQ(data.rows("SELECT 和值 FROM 历史记录 ORDER BY 期号"), (QStringList{u"16"_s, u"-"_s, u"-"_s}));
}

TEST(DecodePage, NoBytesAreNoText) {
  EXPECT_EQ(decodePage({}), QString());
}

TEST(DecodePage, AByteOrderMarkIsNoPartOfTheText) {
  EXPECT_EQ(decodePage("\xEF\xBB\xBF"_ba + u"广东11选5"_s.toUtf8()), u"广东11选5"_s);
}

TEST(DecodePage, AMarkInGb18030CountsAlthoughItIsSoundUtf8) {
  EXPECT_EQ(decodePage("11\xD1\xA1"
                       "5"_ba),
            u"11选5"_s);
}

TEST(DecodePage, OfTwoReadingsWithTheMarkUtf8Counts) {
  EXPECT_EQ(decodePage(u"11选5 11"_s.toUtf8() + "\xD1\xA1"
                                                "5"_ba),
            u"11选5 11\u0461"_s + u"5"_s);
}

TEST(DecodePage, ACutCharacterCostsNoMoreThanItself) {
  const QByteArray line = "\n11031501 01 02 03 04 05 03-15 17:50\n"_ba;
  EXPECT_TRUE(decodePage("11\xD1\xA1"
                         "5"_ba +
                         line + "\xB9")
                  .startsWith(u"11选5"_s + QString::fromLatin1(line)));
  EXPECT_TRUE(decodePage(u"11选5"_s.toUtf8() + line + "\xE5\xB9").startsWith(u"11选5"_s + QString::fromLatin1(line)));
}

TEST(DecodePage, WithoutTheMarkItIsReadAsAnyText) {
  EXPECT_EQ(decodePage("\xB9\xE3\xB6\xAB"_ba), u"广东"_s);
  EXPECT_EQ(decodePage(u"广东"_s.toUtf8()), u"广东"_s);
}

TEST_F(PageText, AnUpdateCountsFromTheSecondPeriodBelowTheNewest) {
  EXPECT_EQ(lastQihaoForUpdate(data.store()), 2003001);
  data.addDraws(u"110315001 01 02 03 04 05"_s);
  EXPECT_EQ(lastQihaoForUpdate(data.store()), 2003001);
  data.addDraws(u"110315002 01 02 03 04 05"_s);
  EXPECT_EQ(lastQihaoForUpdate(data.store()), 110315001);
  data.addDraws(u"110315003 01 02 03 04 05\n110315004 01 02 03 04 05"_s);
  EXPECT_EQ(lastQihaoForUpdate(data.store()), 110315002);
}

TEST_F(PageText, AHundredThousandLinesAreScannedAtOnce) {
  QString page = u"11选5\n"_s;
  for (int i = 0; i < 100'000; ++i)
    page += u"2011-03-15 那天的新闻第 %1 条\n"_s.arg(i);
  page += u"11031510 01 02 03 04 05 17:50:00"_s;
  const PageCounts counts = scan(page);
  EXPECT_EQ(counts.lines, 100'002);
  EXPECT_EQ(counts.rowsDone, 1);
}

TEST_F(PageText, TheScanSeesTheLinesOfTheLineHelpers) {
  EXPECT_TRUE(rc::check("the scan tells the draws that ReadStringLine gives line by line", [this] {
    const std::vector<QString> lines{u"11031501 01 02 03 04 05 03-15 17:50"_s,
                                     u"11031502 05 06 07 08 09 03-15 17:40"_s,
                                     u"11031503 01 02 03 04 05 17"_s,
                                     u"a"_s,
                                     QString(),
                                     u"\r"_s};
    QString page;
    for (const QString& line : *rc::gen::container<std::vector<QString>>(rc::gen::elementOf(lines)))
      page += line + *rc::gen::elementOf(std::vector<QString>{u"\n"_s, u"\r\n"_s});
    page.chop(*rc::gen::inRange(0, 3));  // the last line may lack its end
    const QString text = scanText(page);
    std::vector<Qihao> expected;
    for (int n = 1; n <= CountStringLine(text); ++n)
      if (const std::optional<PageLine> line = readPageLine(ReadStringLine(text, n)))
        expected.push_back(line->qihao);
    std::vector<Qihao> told;
    const PageCounts counts = scanPage(data.store(), page, today, 2003001, ports, [&told](Qihao qihao) {
      told.push_back(qihao);
      return true;
    });
    RC_ASSERT(told == expected);
    RC_ASSERT(counts.qualified == static_cast<int>(expected.size()));
    RC_ASSERT(counts.lines == CountStringLine(text));
  }));
}

TEST_F(PageText, ALinePutTogetherFromADrawGivesTheDrawBack) {
  EXPECT_TRUE(rc::check("any order of five numbers, any separators", [] {
    auto numbers = *rc::gen::unique<std::vector<int>>(5, rc::gen::inRange(1, 12));
    const QString separator = *rc::gen::elementOf(std::vector<QString>{u" "_s, u"-"_s, u"  "_s, u":"_s});
    const int period = *rc::gen::inRange(1, 100);
    QString line = u"110315%1"_s.arg(period, 2, 10, QChar(u'0'));
    for (const int number : numbers)
      line += separator + twoDigits(number);
    line += u" 03-15 17:50"_s;
    std::sort(numbers.begin(), numbers.end());
    const std::optional<PageLine> read = readPageLine(line);
    RC_ASSERT(read.has_value());
    RC_ASSERT(read->qihao == 110315000 + period);
    RC_ASSERT(std::equal(numbers.begin(), numbers.end(), read->numbers->begin()));
  }));
}

TEST(GetDigits, KeepsOnlyTheTenDigits) {
  EXPECT_EQ(getDigits(u"第11-03，１５ 10:2x"), u"1103102"_s);
  EXPECT_EQ(getDigits({}), QString());
}

}  // namespace
}  // namespace elevenfive
