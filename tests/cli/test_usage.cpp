#include "cli/usage.h"

#include <gtest/gtest.h>

#include "tests/support/testworkspace.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

Usage::Match matched(QStringView usage, const QString& words) {
  return Usage(usage).match(words.split(u' ', Qt::SkipEmptyParts));
}

QString faultOf(QStringView usage, const QString& words) {
  return matched(usage, words).fault;
}

}  // namespace

TEST(Usage, WordsComeUnderTheirNames) {
  const auto match = matched(u"source set NAME ADDRESS", u"source set 开奖网站 x"_s);
  EXPECT_EQ(match.fault, QString());
  EXPECT_EQ(match.literals, 2);
  EXPECT_EQ(match.arguments.text(u"NAME"_s), u"开奖网站"_s);
  EXPECT_EQ(match.arguments.text(u"ADDRESS"_s), u"x"_s);
}

TEST(Usage, OptionsStandAnywhereBehindTheCommand) {
  constexpr QStringView usage = u"add QIHAO [--date YYYY-MM-DD] [--plain]";
  for (const QString& words : {u"add 5 --date d --plain"_s, u"add --plain --date d 5"_s, u"add --date d 5 --plain"_s}) {
    const auto match = matched(usage, words);
    EXPECT_EQ(match.fault, QString()) << words.toStdString();
    EXPECT_EQ(match.arguments.text(u"QIHAO"_s), u"5"_s);
    EXPECT_EQ(match.arguments.text(u"--date"_s), u"d"_s);
    EXPECT_TRUE(match.arguments.has(u"--plain"_s));
  }
  EXPECT_FALSE(matched(usage, u"add 5"_s).arguments.has(u"--plain"_s));
}

TEST(Usage, AnOptionWithoutItsWordIsAFault) {
  EXPECT_EQ(faultOf(u"add QIHAO [--date YYYY-MM-DD]", u"add 5 --date"_s), u"选项 --date 后面缺少 YYYY-MM-DD。"_s);
}

TEST(Usage, AnUnknownOrRepeatedOptionIsAFault) {
  EXPECT_EQ(faultOf(u"init [--force]", u"init --fort"_s), u"没有这个选项：--fort。"_s);
  EXPECT_EQ(faultOf(u"init [--force]", u"init --force --force"_s), u"选项 --force 给了两次。"_s);
}

TEST(Usage, AnOptionWithoutBracketsMustBeGiven) {
  constexpr QStringView usage = u"rows import FILE QIHAO --format 0|1|2 [--keep]";
  EXPECT_EQ(faultOf(usage, u"rows import f 1"_s), u"缺少选项 --format。"_s);
  EXPECT_EQ(faultOf(usage, u"rows import f 1 --format 3"_s), u"选项 --format 应为 0|1|2，而不是“3”。"_s);
  EXPECT_EQ(faultOf(usage, u"rows import f 1 --format 2"_s), QString());
  EXPECT_EQ(faultOf(u"count --conditions", u"count"_s), u"缺少选项 --conditions。"_s);
  EXPECT_EQ(faultOf(u"count --conditions", u"count --conditions"_s), QString());
}

TEST(Usage, AnOptionOfAnotherCommandIsMarked) {
  EXPECT_FALSE(matched(u"count", u"count --conditions"_s).knowsOptions);
  EXPECT_TRUE(matched(u"count --conditions", u"count --conditions extra"_s).knowsOptions);
  EXPECT_TRUE(matched(u"count", u"count -- --conditions"_s).knowsOptions);
}

TEST(Usage, MissingAndFurtherWordsAreFaults) {
  EXPECT_EQ(faultOf(u"use CODE VALUE", u"use 1"_s), u"缺少参数 VALUE。"_s);
  EXPECT_EQ(faultOf(u"use CODE VALUE", u"use 1 1 1"_s), u"多余的参数：“1”。"_s);
}

TEST(Usage, AMissingWordOfTheCommandItselfIsMarked) {
  EXPECT_TRUE(matched(u"history add QIHAO", u"history"_s).lacksLiteral);
  EXPECT_TRUE(matched(u"group K clear", u"group 1"_s).lacksLiteral);
  EXPECT_FALSE(matched(u"history add QIHAO", u"history add"_s).lacksLiteral);
  EXPECT_FALSE(matched(u"rows [QIHAO]", u"rows"_s).lacksLiteral);
}

TEST(Usage, AWordInBracketsMayBeLeftOut) {
  EXPECT_EQ(faultOf(u"rows [QIHAO]", u"rows"_s), QString());
  EXPECT_EQ(matched(u"rows [QIHAO]", u"rows 7"_s).arguments.text(u"QIHAO"_s), u"7"_s);
}

TEST(Usage, ChoicesAreTheOnlyWordsTaken) {
  EXPECT_EQ(faultOf(u"distribution click N left|right", u"distribution click 1 right"_s), QString());
  EXPECT_EQ(faultOf(u"distribution click N left|right", u"distribution click 1 up"_s),
            u"参数应为 left|right，而不是“up”。"_s);
}

TEST(Usage, RepeatedWordsAreAllTaken) {
  EXPECT_EQ(matched(u"quick submit ROW=TEXT ...", u"quick submit 0=1 1=2 2=3"_s).arguments.texts(u"ROW=TEXT"_s),
            QStringList({u"0=1"_s, u"1=2"_s, u"2=3"_s}));
  EXPECT_EQ(faultOf(u"quick submit ROW=TEXT ...", u"quick submit"_s), u"缺少参数 ROW=TEXT。"_s);
}

TEST(Usage, AVeryWordBehindAFreeOneIsCompared) {
  EXPECT_TRUE(matched(u"group K members NUMBERS", u"group 1 counts -"_s).contradicts);
  EXPECT_EQ(matched(u"group K members NUMBERS", u"group 1 members -"_s).literals, 2);
}

TEST(Usage, NegativeNumbersAndDashesAreNoOptions) {
  const auto match = matched(u"attr COLUMN NUMBERS", u"attr -1 -"_s);
  EXPECT_EQ(match.fault, QString());
  EXPECT_EQ(match.arguments.text(u"COLUMN"_s), u"-1"_s);
}

TEST(Usage, BehindTwoDashesEveryWordStandsAsItIs) {
  EXPECT_EQ(matched(u"group K name TEXT", u"group 1 name -- --force"_s).arguments.text(u"TEXT"_s), u"--force"_s);
}

}  // namespace elevenfive
