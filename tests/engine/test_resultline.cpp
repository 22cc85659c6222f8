#include "engine/resultline.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "tests/support/testworkspace.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr Qihao qihao = 11031510;
const Draw draw{1, 2, 3, 10, 11};

ExportSettings fields(bool xuhao, bool period, bool haoma, const QString& separator = u","_s) {
  ExportSettings settings;
  settings.xuhao = xuhao;
  settings.qihao = period;
  settings.haoma = haoma;
  settings.separator = separator;
  return settings;
}

std::optional<Draw> plain(const QString& line) {
  return importedNumbers(line, ImportFormat::haoma);
}

}  // namespace

TEST(ExportLine, HoldsTheNumbersAloneAtFirst) {
  EXPECT_EQ(exportLine(ExportSettings(), 7, qihao, draw), u"01,02,03,10,11"_s);
}

TEST(ExportLine, FillsXuhaoUpToFour) {
  EXPECT_EQ(exportLine(fields(true, false, true), 7, qihao, draw), u"7   01,02,03,10,11"_s);
  EXPECT_EQ(exportLine(fields(true, false, true), 462, qihao, draw), u"462 01,02,03,10,11"_s);
  EXPECT_EQ(exportLine(fields(true, false, true), 65535, qihao, draw), u"6553501,02,03,10,11"_s);
}

TEST(ExportLine, PutsOneBlankBehindThePeriod) {
  EXPECT_EQ(exportLine(fields(false, true, true), 7, qihao, draw), u"11031510 01,02,03,10,11"_s);
  EXPECT_EQ(exportLine(fields(true, true, true), 7, qihao, draw), u"7   11031510 01,02,03,10,11"_s);
}

TEST(ExportLine, CutsBlanksAtItsEnd) {
  EXPECT_EQ(exportLine(fields(true, true, false), 7, qihao, draw), u"7   11031510"_s);
  EXPECT_EQ(exportLine(fields(true, false, false), 7, qihao, draw), u"7"_s);
  EXPECT_EQ(exportLine(fields(false, false, false), 7, qihao, draw), QString());
}

TEST(ExportLine, TakesAnySeparatorBetweenTheNumbersOnly) {
  EXPECT_EQ(exportLine(fields(true, true, true, u" "_s), 7, qihao, draw), u"7   11031510 01 02 03 10 11"_s);
  EXPECT_EQ(exportLine(fields(true, true, true, QString()), 7, qihao, draw), u"7   11031510 0102031011"_s);
  EXPECT_EQ(exportLine(fields(false, true, true, u" | "_s), 7, qihao, draw), u"11031510 01 | 02 | 03 | 10 | 11"_s);
}

TEST(ExportLine, ASeparatorWithAHashComesOutWithBlanks) {
  EXPECT_EQ(exportLine(fields(false, false, true, u"#"_s), 7, qihao, draw), u"01 02 03 10 11"_s);
}

TEST(ImportedNumbers, TakeHyphensBlanksCommasAndFullWidthSeparators) {
  const Draw numbers{1, 2, 3, 4, 5};
  for (const QString& line :
       {u"01-02-03-04-05"_s, u"01 02 03 04 05"_s, u"01,02,03,04,05"_s, u"01+02+03+04+05"_s, u"01，02，03，04，05"_s,
        u"01\u300002\u300003\u300004\u300005"_s, u"01\t02\t03\t04\t05"_s})
    EXPECT_EQ(plain(line), numbers) << line.toStdString();
}

TEST(ImportedNumbers, KeepTheOrderOfTheLine) {
  EXPECT_EQ(plain(u"11 03 07 01 05"_s), (Draw{11, 3, 7, 1, 5}));
}

TEST(ImportedNumbers, RunsOfSeparatorsHoldNoEmptyField) {
  EXPECT_EQ(plain(u",, 01  02,,03 - 04  05"_s), (Draw{1, 2, 3, 4, 5}));
}

TEST(ImportedNumbers, ALineOfFewerThanElevenCharactersIsPassedOver) {
  EXPECT_FALSE(plain(u"1,2,3,4,5"_s));
  EXPECT_FALSE(plain(u"1 2 3 4 10"_s));      // 10 characters
  EXPECT_TRUE(plain(u"1 2 3 10 11"_s));      // 11
  EXPECT_FALSE(plain(u"  1 2 3 4 10  "_s));  // blanks around do not count
}

TEST(ImportedNumbers, SeparatorsAroundALineCountForItsLengthButBlanksDoNot) {
  const Draw numbers{1, 2, 3, 4, 10};
  EXPECT_EQ(plain(u"1 2 3 4 10\u3000"_s), numbers);  // 10 characters and one
  EXPECT_EQ(plain(u"\u30001 2 3 4 10"_s), numbers);
  EXPECT_EQ(plain(u"1 2 3 4 10\t"_s), numbers);
  EXPECT_FALSE(plain(u" 1 2 3 4 10    "_s));
  EXPECT_EQ(plain(u"  1 2 3 4 10\u3000  "_s), numbers);
}

TEST(ImportedNumbers, WithAPeriodThirteenCharactersAndALeadingDigitAreNeeded) {
  const auto format = ImportFormat::qihaoHaoma;
  EXPECT_EQ(importedNumbers(u"11031510 01 02 03 04 05"_s, format), (Draw{1, 2, 3, 4, 5}));
  EXPECT_FALSE(importedNumbers(u"110 1 2 3 4 5"_s.left(12), format));
  EXPECT_TRUE(importedNumbers(u"110 1 2 3 4 5"_s, format));  // 13
  EXPECT_FALSE(importedNumbers(u"期11031510 01 02 03 04 05"_s, format));
}

TEST(ImportedNumbers, ALineWithAPeriodMustBeginWithItsDigits) {
  const auto format = ImportFormat::qihaoHaoma;
  for (const QString& line : {u"期号11031510 01 02 03 04 05"_s, u"-11031510 01 02 03 04 05"_s,
                              u"\u300011031510 01 02 03 04 05"_s, u"x1031510 01 02 03 04 05"_s})
    EXPECT_FALSE(importedNumbers(line, format)) << line.toStdString();
  EXPECT_EQ(importedNumbers(u"  11031510 01 02 03 04 05"_s, format), (Draw{1, 2, 3, 4, 5}));
  // One digit makes a period; what stands behind it only separates.
  EXPECT_EQ(importedNumbers(u"1x期 01 02 03 04 05"_s, format), (Draw{1, 2, 3, 4, 5}));
}

TEST(ImportedNumbers, TheFieldInFrontIsTheFirstRunOfDigits) {
  const Draw numbers{1, 2, 3, 4, 5};
  for (const QString& line : {u"11031510期 01 02 03 04 05"_s, u"11031510:01 02 03 04 05"_s,
                              u"11031510\t01\t02\t03\t04\t05"_s, u"7、01 02 03 04 05"_s, u"7. 01 02 03 04 05"_s})
    for (const ImportFormat format : {ImportFormat::qihaoHaoma, ImportFormat::xuhaoHaoma})
      EXPECT_EQ(importedNumbers(line, format), numbers) << line.toStdString();
  EXPECT_EQ(importedNumbers(u"第7注 01 02 03 04 05"_s, ImportFormat::xuhaoHaoma), numbers);
  // A letter separates inside it too, so its second run of digits is the first number.
  EXPECT_EQ(importedNumbers(u"1a2 01 02 03 04 05"_s, ImportFormat::xuhaoHaoma), (Draw{2, 1, 2, 3, 4}));
}

TEST(ImportedNumbers, TheFirstFieldIsDroppedWithPeriodOrXuhao) {
  EXPECT_EQ(importedNumbers(u"7   01,02,03,04,05"_s, ImportFormat::xuhaoHaoma), (Draw{1, 2, 3, 4, 5}));
  EXPECT_EQ(importedNumbers(u"11031510,06,07,08,09,10"_s, ImportFormat::qihaoHaoma), (Draw{6, 7, 8, 9, 10}));
  EXPECT_FALSE(importedNumbers(u"01,02,03,04,05"_s, ImportFormat::xuhaoHaoma));  // four are left
}

TEST(ImportedNumbers, TooFewNumbersMakeNoRowAndFurtherOnesAreLeft) {
  EXPECT_FALSE(plain(u"01 02 03 04 xx"_s));
  EXPECT_EQ(plain(u"01 02 03 04 05 06 07"_s), (Draw{1, 2, 3, 4, 5}));
}

TEST(ImportedNumbers, LettersOnlySeparate) {
  EXPECT_EQ(plain(u"01a02b03c04d05e"_s), (Draw{1, 2, 3, 4, 5}));
  EXPECT_EQ(plain(u"01x 02y 03 04 05"_s), (Draw{1, 2, 3, 4, 5}));
}

TEST(ImportedNumbers, NumbersAboveElevenMakeARowAsTheyStand) {
  EXPECT_EQ(plain(u"00 12 99 255 05"_s), (Draw{0, 12, 99, 255, 5}));
}

TEST(ImportedNumbers, ANumberThatNoRowCanHoldMakesNoRow) {
  EXPECT_FALSE(plain(u"01 02 03 04 256"_s));
  EXPECT_FALSE(plain(u"99999999999999999999 02 03 04 05"_s));
}

TEST(ImportedNumbers, FullWidthDigitsAreNoDigits) {
  EXPECT_FALSE(plain(u"０１ ０２ ０３ ０４ ０５"_s));
}

TEST(ImportedNumbers, ReadBackWhatAnExportWrote) {
  EXPECT_TRUE(rc::check("any row and any separator without digits", [] {
    Draw numbers;
    for (int& number : numbers)
      number = *rc::gen::inRange(0, 256);
    const bool withXuhao = *rc::gen::arbitrary<bool>();
    const QString separator = *rc::gen::element(u","_s, u" "_s, u"-"_s, u" + "_s, u"，"_s, u"#"_s);
    const QString line =
        exportLine(fields(withXuhao, !withXuhao, true, separator), *rc::gen::inRange(1, 1000), qihao, numbers);
    RC_ASSERT(importedNumbers(line, withXuhao ? ImportFormat::xuhaoHaoma : ImportFormat::qihaoHaoma) == numbers);
  }));
}

}  // namespace elevenfive
