#include "conditions/rangegroups.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <QStringList>

#include "tests/conditions/slowranges.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// The groups of a cleaned text as text: "20-39 5".
QString shown(const QString& cleaned) {
  QStringList texts;
  for (const RangeGroup& group : rangeGroups(cleaned))
    texts << (group.last ? u"%1-%2"_s.arg(group.first).arg(*group.last) : QString::number(group.first));
  return texts.join(u' ');
}

TEST(CleanRangeText, SuppliesTheBrackets) {
  EXPECT_EQ(cleanRangeText(u"5"_s), u"[5]"_s);
  EXPECT_EQ(cleanRangeText(u"20-39"_s), u"[20-39]"_s);
  EXPECT_EQ(cleanRangeText(u"5]"_s), u"[5]"_s);
  EXPECT_EQ(cleanRangeText(u"[5"_s), u"[5]"_s);
  EXPECT_EQ(cleanRangeText(QString()), u"[]"_s);
  EXPECT_EQ(cleanRangeText(u"["_s), u"[]"_s);
  EXPECT_EQ(cleanRangeText(u"]"_s), u"[]"_s);
}

TEST(CleanRangeText, DropsCommasBlanksAndEmptyGroups) {
  EXPECT_EQ(cleanRangeText(u"[20-39],[41-44]，[46-60]"_s), u"[20-39][41-44][46-60]"_s);
  EXPECT_EQ(cleanRangeText(u" [20-22] , [25] "_s), u"[20-22][25]"_s);
  EXPECT_EQ(cleanRangeText(u"[1][][2][,]"_s), u"[1][2]"_s);
}

TEST(CleanRangeText, WhiteSpaceOtherThanBlanksStaysAndIsIllegal) {
  for (const char16_t space : u"\t\n\v\f\r\u0085\u00A0\u1680\u2000\u200A\u2028\u2029\u202F\u205F\u3000")
    EXPECT_FALSE(isRangeText(cleanRangeText(u"[1"_s + QChar(space) + u"]"_s))) << static_cast<int>(space);
  EXPECT_TRUE(isRangeText(cleanRangeText(u" [1 - 3 ] "_s)));
}

TEST(CleanRangeText, TurnsWideFormsIntoPlainOnes) {
  EXPECT_EQ(cleanRangeText(u"【1－5】"_s), u"[1-5]"_s);
  EXPECT_EQ(cleanRangeText(u"【1—5】，【7】"_s), u"[1-5][7]"_s);
}

TEST(CleanRangeText, OtherBracketsAndDigitsStayAndAreIllegal) {
  for (const QString& text : {u"[a]"_s, u"５"_s, u"［5］"_s, u"〔5〕"_s, u"(5)"_s, u"{5}"_s, u"٣"_s, u"[1–5]"_s,
                              u"[1~5]"_s, u"[1.5]"_s, u"[+5]"_s, u"\U0001D7D3"_s})
    EXPECT_FALSE(isRangeText(cleanRangeText(text))) << text.toStdString();
  EXPECT_TRUE(isRangeText(cleanRangeText(u"【1－5】，[7]"_s)));
}

TEST(CleanRangeText, OfAllBracketsDashesAndDigitsOnlyTheKnownFormsAreTaken) {
  const QString known = u"[]【】-－—0123456789"_s;
  int seen = 0;
  for (int code = 0; code < 0xD800; ++code) {
    const QChar ch(static_cast<char16_t>(code));
    const QChar::Category category = ch.category();
    const bool bracket = category == QChar::Punctuation_Open || category == QChar::Punctuation_Close ||
                         category == QChar::Punctuation_InitialQuote || category == QChar::Punctuation_FinalQuote;
    if (!bracket && category != QChar::Punctuation_Dash && category != QChar::Number_DecimalDigit)
      continue;
    ++seen;
    const QString text = cleanRangeText(u"[1"_s + ch + u"2]"_s);
    EXPECT_EQ(isRangeText(text), known.contains(ch)) << code;
  }
  EXPECT_GT(seen, 400);
}

TEST(RangeGroups, AreValuesAndRanges) {
  EXPECT_EQ(shown(u"[20-39][5]"_s), u"20-39 5"_s);
  EXPECT_EQ(shown(u"[9-3]"_s), u"9-3"_s);
  EXPECT_EQ(shown(u"[007]"_s), u"7"_s);
}

TEST(RangeGroups, OnlyTheClosingBracketEndsAGroup) {
  EXPECT_EQ(shown(u"[1-3]4]"_s), u"1-3 4"_s);
  EXPECT_EQ(shown(u"[1[2]"_s), u"12"_s);
  EXPECT_EQ(shown(u"[1]2"_s), u"1"_s);
  EXPECT_EQ(shown(QString()), QString());
}

TEST(RangeGroups, EmptyGroupIsZero) {
  EXPECT_EQ(shown(u"[]"_s), u"0"_s);
}

TEST(RangeGroups, FirstDashDivides) {
  EXPECT_EQ(shown(u"[1-5-7]"_s), u"1-5"_s);
  EXPECT_EQ(shown(u"[-5]"_s), u"0-5"_s);
  EXPECT_EQ(shown(u"[5-]"_s), u"5-0"_s);
  EXPECT_EQ(shown(u"[1--5]"_s), u"1-5"_s);
  EXPECT_EQ(shown(u"[1---5]"_s), u"1-0"_s);
}

TEST(RangeGroups, HugeValuesDoNotOverflow) {
  EXPECT_EQ(shown(u'[' + QString(5000, u'9') + u']'), u"1000000000"_s);
  EXPECT_EQ(shown(u'[' + QString(5000, u'9') + u'-' + QString(5000, u'9') + u']'), u"1000000000-1000000000"_s);
}

TEST(ShownRangeText, SeparatesGroupsByCommas) {
  EXPECT_EQ(shownRangeText(u"[20-39][41-44][5]"_s), u"[20-39],[41-44],[5]"_s);
}

QString anyText(const QString& alphabet) {
  QString text;
  for (const int index : *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, static_cast<int>(alphabet.size()))))
    text += alphabet[index];
  return text;
}

TEST(CleanRangeText, AgreesWithASecondReading) {
  EXPECT_TRUE(rc::check("any typed text", [] {
    const QString typed = anyText(u"019[[[]]]--,，【】－— \t　a５"_s);
    RC_ASSERT((cleanRangeText(typed) == slowClean(typed)));
  }));
}

TEST(RangeGroups, AgreeWithASecondReading) {
  EXPECT_TRUE(rc::check("any cleaned text", [] {
    const QString cleaned = cleanRangeText(anyText(u"0123456789[[]]--,，【】－— "_s));
    RC_ASSERT(isRangeText(cleaned));
    RC_ASSERT(rangeGroups(cleaned) == slowGroups(cleaned));
  }));
}

TEST(CleanRangeText, TextThatTheFormShowsCanBeSubmittedAgain) {
  EXPECT_TRUE(rc::check("shown, then cleaned", [] {
    const QString cleaned = cleanRangeText(anyText(u"123[]-"_s));
    const QString again = cleanRangeText(shownRangeText(cleaned));
    // Only empty groups may get lost, as they do in any text.
    RC_PRE(!cleaned.contains(u"[]"_s));
    RC_ASSERT(again == cleaned);
  }));
}

}  // namespace

}  // namespace elevenfive
