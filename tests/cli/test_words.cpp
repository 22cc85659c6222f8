#include "cli/words.h"

#include <gtest/gtest.h>

#include "tests/support/testworkspace.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

TEST(Words, BlanksAndTabsPartThem) {
  EXPECT_EQ(splitWords(u"  pick \t 3  2 "_s), QStringList({u"pick"_s, u"3"_s, u"2"_s}));
}

TEST(Words, QuotationsKeepBlanks) {
  EXPECT_EQ(splitWords(u"sql \"SELECT 1\" 'a  b'"_s), QStringList({u"sql"_s, u"SELECT 1"_s, u"a  b"_s}));
}

TEST(Words, EachQuotationKeepsTheOtherMark) {
  EXPECT_EQ(splitWords(u"\"it's\" 'say \"x\"'"_s), QStringList({u"it's"_s, u"say \"x\""_s}));
}

TEST(Words, QuotedStretchesJoinTheirWord) {
  EXPECT_EQ(splitWords(u"'it'\"'\"'s'"_s), QStringList({u"it's"_s}));
  EXPECT_EQ(splitWords(u"0=\"[20-22] \"x"_s), QStringList({u"0=[20-22] x"_s}));
}

TEST(Words, EmptyQuotationIsAnEmptyWord) {
  EXPECT_EQ(splitWords(u"source set 版本公告 ''"_s), QStringList({u"source"_s, u"set"_s, u"版本公告"_s, QString()}));
}

TEST(Words, BackslashKeepsAMarkInsideDoubleQuotesOnly) {
  EXPECT_EQ(splitWords(uR"("a\"b\\c\d" 'e\' f\ g)"_s), QStringList({uR"(a"b\c\d)"_s, uR"(e\)"_s, uR"(f\)"_s, u"g"_s}));
}

TEST(Words, OpenQuotationGivesNoWords) {
  EXPECT_EQ(splitWords(u"rows \"1"_s), std::nullopt);
  EXPECT_EQ(splitWords(u"rows '1"_s), std::nullopt);
  EXPECT_EQ(splitWords(u"rows \"1\\\""_s), std::nullopt);
}

TEST(Words, CommentsAndBlankLinesSayNothing) {
  EXPECT_TRUE(isPassedOver({}));
  EXPECT_TRUE(isPassedOver(u" \t"_s));
  EXPECT_TRUE(isPassedOver(u"# rows"_s));
  EXPECT_FALSE(isPassedOver(u"rows # 1"_s));
}

}  // namespace elevenfive
