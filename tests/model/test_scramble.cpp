#include "model/scramble.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

TEST(Scramble, EncodingReversesAndRaisesEachCodeByFive) {
  EXPECT_EQ(scrambleText(u"abc"_s, true, u""_s), u"hgf"_s);
}

TEST(Scramble, DecodingWithAKeyOfEightCharactersGivesTheTextBack) {
  EXPECT_EQ(scrambleText(u"hgf"_s, false, u"xxxxxxxx"_s), u"abc"_s);
}

TEST(Scramble, DecodingWithAKeyOfAnyOtherLengthGivesAnEmptyText) {
  for (const int length : {0, 3, 7, 9, 16})
    EXPECT_EQ(scrambleText(u"hgf"_s, false, QString(length, u'x')), QString()) << length;
}

TEST(Scramble, TheKeysContentPlaysNoPart) {
  EXPECT_EQ(scrambleText(u"hgf"_s, false, u"12345678"_s), u"abc"_s);
  EXPECT_EQ(scrambleText(u"hgf"_s, false, u"一二三四五六七八"_s), u"abc"_s);
}

TEST(Scramble, AChineseCharacterShiftsAsOneCode) {
  // 中 is 4E2D, 五 4E94, 数 6570
  EXPECT_EQ(scrambleText(u"a中五"_s, true, {}), u"\u4E99\u4E32f"_s);
  EXPECT_EQ(scrambleText(u"\u6575"_s, false, u"xxxxxxxx"_s), u"数"_s);
}

TEST(Scramble, AnyTextComesBack) {
  EXPECT_TRUE(rc::check("decoding undoes encoding", [](const std::u16string& text) {
    const QString plain = QString::fromStdU16String(text);
    RC_ASSERT(scrambleText(scrambleText(plain, true, {}), false, u"xxxxxxxx"_s) == plain);
  }));
}

}  // namespace
}  // namespace elevenfive
