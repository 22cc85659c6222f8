#include "history/historyline.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "model/texts.h"
#include "tests/history/slowhistory.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

/// "period: numbers", or "-" for a line that is passed over.
QString shown(const std::optional<HistoryLine>& line) {
  return line ? u"%1: %2"_s.arg(line->qihao).arg(drawText(line->numbers, u" "_s)) : u"-"_s;
}

QString readAlone(const QString& line) {
  return shown(HistoryLineReader().read(line));
}

TEST(HistoryLine, AllSeparatorsInAnyMixGiveTheSameDraw) {
  for (const QString& line :
       {u"11031510 01 02 03 04 05"_s, u"11031510,01,02,03,04,05"_s, u"11031510-01-02-03-04-05"_s,
        u"11031510+01+02+03+04+05"_s, u"11031510，01，02，03，04，05"_s, u"11031510　01　02　03　04　05"_s,
        u"11031510 1 2 3 4 5"_s, u"11031510,1,2,3,4,5"_s, u"11031510 - 01, 02+03　 4，5"_s,
        u"  11031510 01 02 03 04 05  "_s, u"11031510\t01\t02\t03\t04\t05"_s, u"11031510\t1\t2\t3\t4\t5"_s})
    EXPECT_EQ(readAlone(line), u"11031510: 01 02 03 04 05"_s) << line.toStdString();
}

TEST(HistoryLine, NumbersOutOfOrderComeOutAscending) {
  EXPECT_EQ(readAlone(u"11031510 11 02 10 05 04"_s), u"11031510: 02 04 05 10 11"_s);
}

TEST(HistoryLine, NumbersWithoutSeparatorsAreReadByTwo) {
  EXPECT_EQ(readAlone(u"11031510 0102030405"_s), u"11031510: 01 02 03 04 05"_s);
}

TEST(HistoryLine, OneOfTenCharactersIsPassedOver) {
  EXPECT_EQ(readAlone(u"1 1 2 3 4 "_s), u"-"_s);
  EXPECT_EQ(readAlone(u"1 1 2 3 4 5"_s), u"1: 01 02 03 04 05"_s);  // eleven
}

TEST(HistoryLine, WhereNumbersAreMissingTheDigitsOfThePeriodAreReadForThem) {
  EXPECT_EQ(readAlone(u"11031509 01 02 03 04"_s), u"11031509: 01 02 03 04 09"_s);
  EXPECT_EQ(readAlone(u"9 1 2 3 4  "_s), u"9: 01 02 03 04 09"_s);  // blanks around count into the eleven characters
}

TEST(HistoryLine, WithoutAPeriodInFrontItIsPassedOver) {
  EXPECT_EQ(readAlone(u"x11031510 01 02 03 04 05"_s), u"-"_s);
  EXPECT_EQ(readAlone(u",11031510 01 02 03 04 05"_s), u"-"_s);
  EXPECT_EQ(readAlone(u"00000000 01 02 03 04 05"_s), u"-"_s);
  EXPECT_EQ(readAlone(u"-11031510 01 02 03 04 05"_s), u"-"_s);
}

TEST(HistoryLine, OfTheSeparatorsOnlyBlanksMayStandBeforeThePeriod) {
  EXPECT_EQ(readAlone(u" \t11031510 01 02 03 04 05"_s), u"11031510: 01 02 03 04 05"_s);
  EXPECT_EQ(readAlone(u"　11031510 01 02 03 04 05"_s), u"-"_s);
  EXPECT_EQ(readAlone(u" 　11031510 01 02 03 04 05"_s), u"-"_s);
  EXPECT_EQ(readAlone(u"，11031510 01 02 03 04 05"_s), u"-"_s);
}

TEST(HistoryLine, ASeparatorBehindTheLastNumberTakesItsPlaceInTheField) {
  // the fields from the right are "5" and the separator, "0", "04", "03" and "02"
  EXPECT_EQ(readAlone(u"11031510 01 02 03 04 05　"_s), u"11031510: 02 03 04 05 00"_s);
  EXPECT_EQ(readAlone(u"11031510,01,02,03,04,05,"_s), u"11031510: 02 03 04 05 00"_s);
}

TEST(HistoryLine, APeriodThatTheTableCannotHoldIsPassedOver) {
  EXPECT_EQ(readAlone(u"2147483647 01 02 03 04 05"_s), u"2147483647: 01 02 03 04 05"_s);
  EXPECT_EQ(readAlone(u"2147483648 01 02 03 04 05"_s), u"-"_s);
  EXPECT_EQ(readAlone(u"99999999999999999999999999 01 02 03 04 05"_s), u"-"_s);
}

TEST(HistoryLine, AnotherFieldBetweenPeriodAndNumbersIsPassedOver) {
  EXPECT_EQ(readAlone(u"2014121152  2014-12-11 17:36:39  09,03,05,02,04"_s), u"2014121152: 02 03 04 05 09"_s);
}

TEST(HistoryLine, FiguresBehindTheNumbersAreTakenForThem) {
  // the last five fields of two characters are "19", "25", "31", " 4" and ":2"
  EXPECT_EQ(
      readAlone(
          u"11070223 04,01,02,07,06 1 2 3 4 4 6 7 2 1 1 1 59 1 2 2:3 32 441 56 5 1 2:3 21 282 89 11 3:2 4 31 2519"_s),
      u"-"_s);
}

TEST(HistoryLine, ANumberOverElevenIsPassedOver) {
  HistoryLineReader reader;
  EXPECT_EQ(shown(reader.read(u"11031510 01 02 03 04 05"_s)), u"11031510: 01 02 03 04 05"_s);
  EXPECT_EQ(shown(reader.read(u"11031511 01 02 03 04 12"_s)), u"11031511: 01 02 03 04 05"_s);
  EXPECT_EQ(shown(reader.read(u"11031512 01 02 03 13 12"_s)), u"-"_s);
}

TEST(HistoryLine, ARepeatedNumberLeavesTheFifthOfTheLineBefore) {
  HistoryLineReader reader;
  EXPECT_EQ(shown(reader.read(u"11031510 07 08 09 10 11"_s)), u"11031510: 07 08 09 10 11"_s);
  EXPECT_EQ(shown(reader.read(u"11031511 04 03 02 01 01"_s)), u"11031511: 01 02 03 04 11"_s);
  EXPECT_EQ(shown(reader.read(u"11031512 06 06 05 04 03"_s)), u"11031512: 03 04 05 06 11"_s);
}

TEST(HistoryLine, ARepeatedNumberInTheFirstLineLeavesZero) {
  EXPECT_EQ(readAlone(u"11031510 01 02 03 04 04"_s), u"11031510: 01 02 03 04 00"_s);
}

TEST(HistoryLine, TwoRepeatedNumbersAreTooFew) {
  EXPECT_EQ(readAlone(u"11031510 01 02 03 03 03"_s), u"-"_s);
}

TEST(HistoryLine, ALineThatIsDroppedLeavesItsNumbersToTheNext) {
  HistoryLineReader reader;
  EXPECT_EQ(shown(reader.read(u"x1031510 07 08 09 10 11"_s)), u"-"_s);
  EXPECT_EQ(shown(reader.read(u"11031511 01 02 03 04 04"_s)), u"11031511: 01 02 03 04 11"_s);
}

TEST(HistoryLine, AShortLineLeavesTheNumbersBeforeIt) {
  HistoryLineReader reader;
  EXPECT_EQ(shown(reader.read(u"11031510 07 08 09 10 11"_s)), u"11031510: 07 08 09 10 11"_s);
  EXPECT_EQ(shown(reader.read(u"5 1 2 3 4"_s)), u"-"_s);
  EXPECT_EQ(shown(reader.read(u"11031511 01 02 03 04 04"_s)), u"11031511: 01 02 03 04 11"_s);
}

TEST(HistoryLine, LettersWhereNumbersShouldStandCountForNothing) {
  EXPECT_EQ(readAlone(u"11031510 aa bb cc dd ee"_s), u"-"_s);
  EXPECT_EQ(readAlone(u"11031510 １ ２ ３ ４ ５"_s), u"-"_s);
}

TEST(HistoryLine, NulCharactersAreNoNumbers) {
  EXPECT_EQ(readAlone(QString(20, QChar(u'\0'))), u"-"_s);
  EXPECT_EQ(readAlone(u"11031510"_s + QChar(u'\0') + u"01 02 03 04 05"_s), u"11031510: 01 02 03 04 05"_s);
}

TEST(HistoryLine, AnyDrawWithAnySeparatorsIsReadBack) {
  EXPECT_TRUE(rc::check("a random draw in random order, digits and separators", [] {
    const std::set<int> numbers = anyNumbers();
    std::vector<int> order(numbers.begin(), numbers.end());
    const auto turn = *rc::gen::inRange<std::size_t>(0, order.size());
    std::rotate(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(turn), order.end());
    const Qihao qihao = *rc::gen::inRange(1000000, 2147483647);
    QString line = QString::number(qihao);
    for (const int n : order) {
      line += *rc::gen::element(u" "_s, u","_s, u"-"_s, u"+"_s, u"，"_s, u"　"_s, u"\t"_s, u" , "_s);
      line += *rc::gen::arbitrary<bool>() ? twoDigits(n) : QString::number(n);
    }
    QString expected = QString::number(qihao) + u':';
    for (const int n : numbers)
      expected += u' ' + twoDigits(n);
    RC_ASSERT(readAlone(line).toStdString() == expected.toStdString());
  }));
}

TEST(HistoryLine, AnyTextGivesADrawOrNothing) {
  EXPECT_TRUE(rc::check("random characters", [] {
    const auto characters = *rc::gen::container<std::u16string>(rc::gen::weightedElement<char16_t>(
        {{6, u'0'}, {6, u'1'}, {3, u'7'}, {3, u' '}, {1, u','}, {1, u'\0'}, {1, u'期'}}));
    const auto line = HistoryLineReader().read(QStringView(characters));
    if (!line)
      return;
    RC_ASSERT(line->qihao >= 1);
    RC_ASSERT(characters.size() >= 11U);
    for (std::size_t i = 0; i < 4; ++i)
      RC_ASSERT(isNumber(line->numbers[i]) && (i == 0 || line->numbers[i - 1] < line->numbers[i]));
  }));
}

}  // namespace
}  // namespace elevenfive
